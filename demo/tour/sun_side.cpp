#include "tour/sun_side.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kObliquityDeg = 23.44;
constexpr double kDaysOfYear = 365.25;
constexpr double kSolsticeBeforeNewYear = 10.0;  // days
constexpr double kDegreesOfHour = 15.0;
constexpr double kMonthDays = kDaysOfYear / 12.0;

double Radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

struct Place {
    double latitude;   // degrees
    double longitude;  // degrees
};

/// Mean Sun: right within about a degree in latitude and four in longitude.
Place PlaceUnderSun(const SYSTEMTIME& utc) {
    const double day = (utc.wMonth - 1) * kMonthDays + utc.wDay;
    const double yearAngle = 2.0 * std::numbers::pi * (day + kSolsticeBeforeNewYear) / kDaysOfYear;
    const double hour = utc.wHour + utc.wMinute / 60.0;
    return {-kObliquityDeg * std::cos(yearAngle), (12.0 - hour) * kDegreesOfHour};
}

/// Cosine of the angle between two places, seen from the Earth's centre.
double Closeness(const Place& a, const Place& b) {
    const double lat1 = Radians(a.latitude);
    const double lat2 = Radians(b.latitude);
    return std::sin(lat1) * std::sin(lat2) +
           std::cos(lat1) * std::cos(lat2) * std::cos(Radians(a.longitude - b.longitude));
}

}  // namespace

const CityRecord* CityUnderSun(const std::vector<CityRecord>& cities, const SYSTEMTIME& utc,
                               bool night) {
    Place wanted = PlaceUnderSun(utc);
    if (night) wanted = {-wanted.latitude, wanted.longitude + 180.0};
    const CityRecord* best = nullptr;
    double closest = -2.0;  // less than any cosine
    for (const CityRecord& city : cities) {
        const double closeness = Closeness(wanted, {city.latitude, city.longitude});
        if (closeness > closest) {
            closest = closeness;
            best = &city;
        }
    }
    return best;
}
