#pragma once
// Reads the file of the city table. It is UTF-8; each line has the fields name, country, latitude,
// longitude and time zone (its key name in the registry), separated by tabs. Lines that begin with
// '#' are comments.

#include <string_view>
#include <vector>

#include "horivo_map.h"

/// Parses the text of a city file.
/// @return a record for each line that has a name and a valid position; other lines are skipped.
///         Names are cut to 63 characters. An unknown or missing time zone becomes 0.
std::vector<CityRecord> ReadCities(std::string_view text);
