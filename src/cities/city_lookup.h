#pragma once

#include <cstdint>

#include "base/wide_text.h"
#include "cities/city_table.h"

/// The names of a record, also where the host left out the terminator.
WideView CityNameOf(const CityRecord& city) noexcept;
WideView CountryNameOf(const CityRecord& city) noexcept;

/// The first record with this name, ignoring case, and, when `country` is not empty, with this
/// country. @return its index; -1 when there is none or `city` is empty. Throws std::bad_alloc.
std::int32_t FindCity(const CityTable& cities, WideView country, WideView city);

/// The first record that is displayed as `text`, ignoring case: its name, followed by ", " and the
/// country when it has one. @return its index or -1. Throws std::bad_alloc.
std::int32_t FindCityByDisplayName(const CityTable& cities, WideView text);
