#include "globe/lat_long_text.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::int32_t kMinutesPerDegree = 60;
constexpr std::int32_t kTurn = 360 * kMinutesPerDegree;  // minutes of arc, like all angles below
constexpr std::int32_t kHalfTurn = kTurn / 2;
constexpr std::int32_t kQuarterTurn = kTurn / 4;

/// Converts degrees to minutes of arc, truncated towards zero. Removes whole turns and keeps the
/// sign of `degrees`. The turns are removed before the conversion to an integer, because large
/// angles would not fit into the integer.
std::int32_t WholeMinutes(double degrees) {
    const double minutes = std::trunc(degrees * kMinutesPerDegree);
    if (!std::isfinite(minutes)) return 0;
    return static_cast<std::int32_t>(std::fmod(minutes, kTurn));
}

}  // namespace

void FormatLatLong(char (&buffer)[kLatLongTextSize], double latitudeDeg,
                   double longitudeDeg) noexcept {
    std::int32_t latitude = (WholeMinutes(latitudeDeg) + kTurn) % kTurn;
    std::int32_t longitude = WholeMinutes(longitudeDeg);
    // Deliberate: latitude 90 counts as a point beyond the North Pole, so its longitude is turned
    // by 180 degrees. Latitude -90 does not count as a point beyond the South Pole.
    const std::int32_t quarter = latitude / kQuarterTurn;
    if (quarter == 1 || quarter == 2) {
        longitude += kHalfTurn;
        latitude = kHalfTurn - latitude;
    } else if (quarter == 3) {
        latitude -= kTurn;
    }
    longitude = (longitude + kTurn) % kTurn;
    if (longitude > kHalfTurn) longitude -= kTurn;

    std::snprintf(buffer, sizeof buffer, "Lat %2d\xB0%2.2d'%c  Long %3d\xB0%2.2d'%c",
                  std::abs(latitude / kMinutesPerDegree), std::abs(latitude % kMinutesPerDegree),
                  latitude < 0 ? 'S' : 'N', std::abs(longitude / kMinutesPerDegree),
                  std::abs(longitude % kMinutesPerDegree), longitude < 0 ? 'W' : 'E');
}
