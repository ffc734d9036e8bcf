#pragma once
// Finds the time zone of a city.

#include "cities/city_table.h"
#include "horivo_host.h"

/// Returns the time zone of `city`. When the host has set no `timeZone`, looks the city's
/// `timeZoneId` up in `table` and writes the address of the record found there into `timeZone`.
/// Null when there is no such record.
const _TIME_DYNAMIC_ZONE_INFORMATION* ResolveTimeZone(CityRecord& city,
                                                      TimeZoneTable& table) noexcept;

/// Sets `timeZone` to null again in every city whose zone came from `table`.
void RestoreTimeZones(const CityTable& cities, const TimeZoneTable& table) noexcept;
