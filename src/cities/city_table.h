#pragma once

#include <cstdint>
#include <span>

#include "horivo_map.h"

/// The host's city table. The host owns the records; the library writes only their output fields
/// and `timeZone`.
struct CityTable {
    CityRecord* records = nullptr;
    std::int32_t count = 0;

    /// The records; empty when there is no table or the count is negative.
    std::span<CityRecord> Records() const noexcept {
        if (records == nullptr || count <= 0) return {};
        return {records, static_cast<std::size_t>(count)};
    }
};

/// Whether the city has a position.
/// Deliberate: a coordinate of exactly 0 means "no position" (a NaN does not). So a city on the
/// equator or on the prime meridian has no position anywhere in the library.
inline bool HasCoordinates(const CityRecord& city) noexcept {
    return city.latitude != 0.0 && city.longitude != 0.0;
}
