#pragma once
// The city table's file: UTF-8 lines of name, country, latitude, longitude and the registry name
// of the time zone, with a tab between; lines that begin with '#' are remarks.

#include <string_view>
#include <vector>

#include "horivo_map.h"

/// Reads a whole city file.
/// @return one record for each complete line; a line without name or with a position that is no
///         number is left out, names are cut at 63 characters, an unknown time zone becomes 0
std::vector<CityRecord> ReadCities(std::string_view text);
