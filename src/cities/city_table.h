#pragma once

#include <cstdint>
#include <span>

#include "horivo_map.h"

/// The host's cities. The records belong to the host; the library writes only their output fields.
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
/// Deliberate: exactly 0 in either coordinate means "none" (a NaN does not), so a city on the
/// equator or the prime meridian counts as unplaced everywhere in the library.
inline bool HasCoordinates(const CityRecord& city) noexcept {
    return city.latitude != 0.0 && city.longitude != 0.0;
}
