#pragma once

#include <cstdint>

#include "base/wide_text.h"
#include "cities/city_table.h"

/// The name of a city and the name of its country. A name that fills its field needs no terminator.
WideView CityNameOf(const CityRecord& city) noexcept;
WideView CountryNameOf(const CityRecord& city) noexcept;

/// Finds the first record with this city name and, unless `country` is empty, this country; case is
/// ignored. @return its index; -1 when there is none or `city` is empty. Throws std::bad_alloc.
std::int32_t FindCity(const CityTable& cities, WideView country, WideView city);

/// Finds the first record that is displayed as `text`; case is ignored. A record is displayed as
/// its name, followed by ", " and the country when it has one. @return its index or -1. Throws
/// std::bad_alloc.
std::int32_t FindCityByDisplayName(const CityTable& cities, WideView text);
