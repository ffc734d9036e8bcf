#pragma once
// Finds the time zone of a city.

#include "cities/city_table.h"
#include "horivo_host.h"

/// The zone of `city`: the one that the host has set. Without one, the record of its `timeZoneId`
/// in `table`, whose address is then written into the city. Null when there is neither.
const _TIME_DYNAMIC_ZONE_INFORMATION* ResolveTimeZone(CityRecord& city,
                                                      TimeZoneTable& table) noexcept;

/// Sets `timeZone` to null again in every city whose zone came from `table`.
void RestoreTimeZones(const CityTable& cities, const TimeZoneTable& table) noexcept;
