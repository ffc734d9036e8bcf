#pragma once
// Which time zone a city has.

#include "cities/city_table.h"
#include "horivo_host.h"

/// The zone of `city`: what the host set, else the table's record of its `timeZoneId`, which is
/// written into the city. Null when neither gives one.
const _TIME_DYNAMIC_ZONE_INFORMATION* ResolveTimeZone(CityRecord& city,
                                                      TimeZoneTable& table) noexcept;

/// Puts null back into every city whose zone came from `table`.
void RestoreTimeZones(const CityTable& cities, const TimeZoneTable& table) noexcept;
