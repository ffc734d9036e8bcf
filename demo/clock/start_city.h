#pragma once
// The city that the clock shows at its start.

#include <cstdint>
#include <string_view>
#include <vector>

#include "horivo_map.h"

/// Index of the city with these English names; -1 when there is none.
std::int32_t FindCity(const std::vector<CityRecord>& cities, std::wstring_view name,
                      std::wstring_view country);

/// Index of a city of a time zone: the city that stands for the zone in `country`, else the city
/// that stands for the whole zone, else the first city of the zone in the table; -1 when the zone
/// has no city.
/// @param zone  number of the zone in HORIVO_TIME_ZONES; 0 gives -1
/// @param country  name of the country in English
std::int32_t FindCityOfZone(const std::vector<CityRecord>& cities, std::uint32_t zone,
                            std::wstring_view country);

/// Index of a city for this computer: FindCityOfZone with the zone and the country in the settings
/// of Windows.
std::int32_t FindCityHere(const std::vector<CityRecord>& cities);
