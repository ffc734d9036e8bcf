#pragma once

#include <cstdint>

#include "globe/city_markers.h"

/// How near a city's marker must be to the pointed place, globe units.
inline constexpr double kCityReach = 0.02;
/// Cities taken at a time.
inline constexpr std::int32_t kMostCitiesNear = 200;

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
constexpr std::int32_t PlaceOf(std::int32_t signedIndex) noexcept {
    return signedIndex < 0 ? -signedIndex : signedIndex;
}
