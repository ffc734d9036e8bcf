#pragma once
// Finds the cities near a point of the globe, and the city under the pointer.

#include <cstdint>

#include "cities/city_table.h"
#include "math/vector4.h"

/// Largest distance from a city's marker to a place that counts as near, scene units. The radius of
/// the globe is 3.
inline constexpr double kCityReach = 0.02;
/// Largest number of cities that one search returns or counts.
inline constexpr std::int32_t kMaxCitiesNear = 200;

/// Sets `inRange` of the cities within `radius` of `point` and `nearest` of the nearest city;
/// clears both flags of all other cities.
/// @param point     in the globe's frame (see math/geographic.h), scene units
/// @param radius    scene units
/// @param out       gets the cities in range in table order. When it is null, the function writes
///                  `distanceSq` of every city with a position instead
/// @param capacity  entries in `out`, and the largest value of `count`
/// @param count     out: number of cities in range, also when `out` is null
/// @return index of the nearest city with a position, -1 when none has one
std::int32_t FindCitiesNear(const CityTable& cities, const CVector4& point, double radius,
                            CityRecord** out, std::int32_t capacity, std::int32_t& count) noexcept;

/// The city under the pointer.
struct CityPick {
    std::int32_t index = -1;  ///< nearest city with a position; -1: there is none
    std::int32_t hits = 0;    ///< cities within kCityReach, at most kMaxCitiesNear

    /// Whether `index` is valid in a table of `count` records.
    bool IsIn(std::int32_t count) const noexcept { return index >= 0 && index < count; }
    /// The signed index that is sent to the host: the index when a city is hit, otherwise the
    /// negated index. Meaningless for index -1.
    /// Deliberate: index 0 without a hit looks like a hit, because 0 has no negative.
    std::int32_t SignedIndex() const noexcept { return hits >= 1 ? index : -index; }
};

/// Finds the city under `point`. Also stores in `distanceSq` of every city with a position its
/// squared distance from `point`.
CityPick PickCity(const CityTable& cities, const CVector4& point) noexcept;

/// Whether a signed index refers to a record of a table of `count` records. Computed in 64 bits,
/// because the most negative 32-bit number has no positive counterpart.
constexpr bool IsSignedIndexIn(std::int32_t signedIndex, std::int32_t count) noexcept {
    const std::int64_t wide = signedIndex;
    return (wide < 0 ? -wide : wide) < count;
}
/// The index of the record that a signed index refers to. The signed index must be in the table.
constexpr std::int32_t IndexOfSigned(std::int32_t signedIndex) noexcept {
    return signedIndex < 0 ? -signedIndex : signedIndex;
}
