#pragma once
// Which cities are near a point of the globe, and which one is under the pointer.

#include <cstdint>

#include "cities/city_table.h"
#include "math/vector4.h"

/// How near a city's marker must be to the pointed place, globe units.
inline constexpr double kCityReach = 0.02;
/// Cities taken at a time.
inline constexpr std::int32_t kMostCitiesNear = 200;

/// Flags the cities within `radius` of `point` (`inRange`) and the nearest one (`nearest`); clears
/// both flags on all others.
/// @param point     in the globe's frame
/// @param radius    globe units
/// @param out       gets the cities in range in table order; null: `distanceSq` is stored instead
/// @param capacity  entries in `out`; `count` never passes it
/// @param count     out: cities in range, also counted when `out` is null
/// @return index of the nearest city with a position, -1 when none has one
std::int32_t FindCitiesNear(const CityTable& cities, const CVector4& point, double radius,
                            CityRecord** out, std::int32_t capacity, std::int32_t& count) noexcept;

/// The city under the pointer.
struct CityPick {
    std::int32_t index = -1;  ///< nearest city with a position; -1: the table has none
    std::int32_t hits = 0;    ///< cities within reach, at most kMostCitiesNear

    /// Whether `index` is a place in a table of `count` records.
    bool IsIn(std::int32_t count) const noexcept { return index >= 0 && index < count; }
    /// How the host is told: the index where a city is hit, else its negation.
    std::int32_t SignedIndex() const noexcept { return hits >= 1 ? index : -index; }
};

/// Finds the city under `point` and makes every record's squared distance to it current.
CityPick PickCity(const CityTable& cities, const CVector4& point) noexcept;

/// Whether a signed index means a record of a table of `count` records; in 64 bits, since the most
/// negative number has no positive.
constexpr bool IsSignedIndexIn(std::int32_t signedIndex, std::int32_t count) noexcept {
    const std::int64_t wide = signedIndex;
    return (wide < 0 ? -wide : wide) < count;
}
/// The record that a signed index means; it must be in the table.
constexpr std::int32_t IndexOfSigned(std::int32_t signedIndex) noexcept {
    return signedIndex < 0 ? -signedIndex : signedIndex;
}
