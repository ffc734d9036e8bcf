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

constexpr double kTwoPi = 6.283185307;  // to the digits of the theory's other constants
constexpr double kArcSecondsPerTurn = 1.296e6;
constexpr double kSinObliquity = 0.39778;  // of the ecliptic at J2000: 23.439 degrees
constexpr double kCosObliquity = 0.91748;

double CenturiesSinceJ2000(double mjd) noexcept { return (mjd - kMjdJ2000) / kDaysPerCentury; }

/// Ecliptic longitude of the Sun, radians: mean longitude (its annual excess over the mean anomaly
/// is the second term) plus an equation of centre of two terms, both in arc-seconds.
double SunEclipticLongitude(double T) noexcept {
    const double anomaly = kTwoPi * Frac(0.993133 + 99.997361 * T);
    const double centre = 6893.0 * std::sin(anomaly) + 72.0 * std::sin(2.0 * anomaly);
    return kTwoPi * Frac(0.7859453 + anomaly / kTwoPi + (6191.2 * T + centre) / kArcSecondsPerTurn);
}

}  // namespace

std::int32_t JulianDayNumber(std::int32_t year, std::int32_t month, std::int32_t day) noexcept {
    // January and February count to the year before; all divisions drop their rest.
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
        6.697374558 + 1.0027379093 * hours +
        (8640184.812866 + (0.093104 - 6.2e-6 * T0) * T0) * T0 / kSecondsPerHour;
    return kHoursPerDay * Frac((greenwich - longitude / kDegreesPerHour) / kHoursPerDay);
}

void MiniSun(double T, double& ra, double& dec) noexcept {
    const double longitude = SunEclipticLongitude(T);
    const double sinLongitude = std::sin(longitude);
    const double z = kSinObliquity * sinLongitude;
    const double rho = std::sqrt(1.0 - z * z);
    dec = 360.0 / kTwoPi * std::atan(z / rho);
    // Half the angle by its tangent keeps the quadrant: atan gives half of -12 to 12 hours.
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
