#include "globe/sun_position.h"

#include <cmath>

#include "math/trigonometry.h"

namespace {

constexpr double kMjdEpoch = 2400000.5;  // Julian date of MJD 0
constexpr double kMjdJ2000 = 51544.5;    // 2000 January 1, 12:00
constexpr double kDaysPerCentury = 36525.0;
constexpr double kHoursPerDay = 24.0;
constexpr double kMinutesPerDay = 1440.0;
constexpr double kSecondsPerDay = 86400.0;
constexpr double kSecondsPerHour = 3600.0;
constexpr double kDegreesPerHour = 15.0;

constexpr double kTwoPi = 6.283185307;  // rounded: the error is far below an arc-minute
constexpr double kArcSecondsPerTurn = 1.296e6;
constexpr double kSinObliquity = 0.39778;  // obliquity of the ecliptic at J2000: 23.439 degrees
constexpr double kCosObliquity = 0.91748;

// Mean elements of the Sun at J2000 and their change in a Julian century.
constexpr double kMeanAnomaly = 0.993133;         // turns: 357.528 degrees
constexpr double kMeanAnomalyRate = 99.997361;    // turns per century: 0.9856003 degrees a day
constexpr double kPerigeeLongitude = 0.7859453;   // turns: 282.940 degrees
constexpr double kPerigeeLongitudeRate = 6191.2;  // arc-seconds per century

// Amplitudes of the equation of centre, arc-seconds: 2 e - e^3 / 4 and 5 e^2 / 4 for the
// eccentricity e = 0.01671.
constexpr double kCentreSine = 6893.0;
constexpr double kCentreSineOfDouble = 72.0;

// Greenwich mean sidereal time at 0 h UT, a polynomial in Julian centuries since J2000, and its
// increase after 0 h for each hour of UT.
constexpr double kSiderealTimeAtJ2000 = 6.697374558;  // hours
constexpr double kSiderealRate = 8640184.812866;      // seconds per century
constexpr double kSiderealSquare = 0.093104;          // seconds per century squared
constexpr double kSiderealCube = 6.2e-6;              // seconds per century cubed, subtracted
constexpr double kSiderealHoursPerHour = 1.0027379093;

double CenturiesSinceJ2000(double mjd) noexcept { return (mjd - kMjdJ2000) / kDaysPerCentury; }

/// Returns the ecliptic longitude of the Sun, radians: the sum of the longitude of the perigee, the
/// mean anomaly and the equation of centre. @param T  Julian centuries since J2000
double SunEclipticLongitude(double T) noexcept {
    const double anomaly = kTwoPi * Frac(kMeanAnomaly + kMeanAnomalyRate * T);
    const double centre =
        kCentreSine * std::sin(anomaly) + kCentreSineOfDouble * std::sin(2.0 * anomaly);
    return kTwoPi * Frac(kPerigeeLongitude + anomaly / kTwoPi +
                         (kPerigeeLongitudeRate * T + centre) / kArcSecondsPerTurn);
}

}  // namespace

std::int32_t JulianDayNumber(std::int32_t year, std::int32_t month, std::int32_t day) noexcept {
    // The formula of Fliegel and Van Flandern. January and February count as months of the year
    // before. All divisions truncate.
    const std::int32_t a = (month - 14) / 12;
    const std::int32_t y = year + a;
    return (1461 * (y + 4800)) / 4 + (367 * (month - 2 - 12 * a)) / 12 -
           (3 * ((y + 4900) / 100)) / 4 + day - 32075;
}

double JulianDate(int year, int month, int day, int hour, int minute, int second) noexcept {
    return (hour - 12) / kHoursPerDay + minute / kMinutesPerDay + second / kSecondsPerDay +
           JulianDayNumber(year, month, day);
}

double ModifiedJulianDate(int year, int month, int day, int hour, int minute, int second) noexcept {
    return JulianDate(year, month, day, hour, minute, second) - kMjdEpoch;
}

double SiderealTime(double mjd, double longitude) noexcept {
    double midnight = 0.0;
    const double hours = kHoursPerDay * std::modf(mjd, &midnight);
    const double T0 = CenturiesSinceJ2000(midnight);
    const double greenwich =
        kSiderealTimeAtJ2000 + kSiderealHoursPerHour * hours +
        (kSiderealRate + (kSiderealSquare - kSiderealCube * T0) * T0) * T0 / kSecondsPerHour;
    return kHoursPerDay * Frac((greenwich - longitude / kDegreesPerHour) / kHoursPerDay);
}

void MiniSun(double T, double& ra, double& dec) noexcept {
    const double longitude = SunEclipticLongitude(T);
    const double sinLongitude = std::sin(longitude);
    const double z = kSinObliquity * sinLongitude;
    const double rho = std::sqrt(1.0 - z * z);
    dec = 360.0 / kTwoPi * std::atan(z / rho);
    // Compute half the right ascension from its tangent, because this keeps the quadrant of the
    // right ascension. The factor of 48 hours (not 24) per turn doubles the half.
    ra = 48.0 / kTwoPi * std::atan(kCosObliquity * sinLongitude / (std::cos(longitude) + rho));
    if (ra < 0.0) ra += kHoursPerDay;
}

void SunPosition(const SYSTEMTIME& utc, double* hourAngle, double* declination) noexcept {
    const double mjd =
        ModifiedJulianDate(utc.wYear, utc.wMonth, utc.wDay, utc.wHour, utc.wMinute, utc.wSecond);
    double rightAscension = 0.0;
    MiniSun(CenturiesSinceJ2000(mjd), rightAscension, *declination);
    *hourAngle = kDegreesPerHour * (SiderealTime(mjd, 0.0) - rightAscension);
}
