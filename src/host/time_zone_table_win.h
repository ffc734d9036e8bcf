#pragma once

#include <array>
#include <cstdint>

#include "base/windows_types.h"
#include "globe/city_table.h"
#include "horivo_map.h"

/// Zones that the public header numbers.
#define HORIVO_COUNT_ZONE(number, key) +1  // NOLINT(bugprone-macro-parentheses): a chain of sums
inline constexpr std::uint32_t kTimeZoneCount = 0 HORIVO_TIME_ZONES(HORIVO_COUNT_ZONE);
#undef HORIVO_COUNT_ZONE

/// The operating system's record of each zone that the public header numbers. Records stay where
/// they are for the life of the table, so that city records may point at them. Window thread.
class TimeZoneTable {
public:
    TimeZoneTable() noexcept = default;
    TimeZoneTable(const TimeZoneTable&) = delete;
    TimeZoneTable& operator=(const TimeZoneTable&) = delete;

    /// Asks the system for all its zones, once; takes some milliseconds. Called before the first
    /// frame it spares that frame the wait.
    void Prepare() noexcept;

    /// The record of zone `id`, after `Prepare`; null for 0, for a number that the header does not
    /// have and for a zone that this system lacks.
    const DYNAMIC_TIME_ZONE_INFORMATION* Find(std::uint32_t id) noexcept;

    /// Whether `zone` is one of this table's records.
    bool Owns(const DYNAMIC_TIME_ZONE_INFORMATION* zone) const noexcept;

private:
    bool prepared_ = false;
    std::array<bool, kTimeZoneCount> known_ = {};
    std::array<DYNAMIC_TIME_ZONE_INFORMATION, kTimeZoneCount> zones_ = {};
};

/// The zone of `city`: what the host set, else the table's record of its `timeZoneId`, which is
/// written into the city. Null when neither gives one.
const DYNAMIC_TIME_ZONE_INFORMATION* ResolveTimeZone(CityRecord& city,
                                                     TimeZoneTable& table) noexcept;

/// Puts null back into every city whose zone came from `table`.
void RestoreTimeZones(const CityTable& cities, const TimeZoneTable& table) noexcept;
