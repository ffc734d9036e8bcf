#pragma once
// Reads the files of the city table and of the names. Each line has fields with tabs between; lines
// that begin with '#' are comments.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "horivo_map.h"

/// What a city stands for besides itself; the first of CityRecord::hostBytes.
enum class StandsFor : unsigned char { Itself, ZoneInCountry, Zone };

/// Parses the text of a city file. Its fields are name, country, latitude, longitude, time zone
/// (its key name in the registry), one that is not read, and what the city stands for ("zone",
/// "country", nothing).
/// @return a record for each line that has a name and a valid position; other lines are skipped.
///         Names are cut to 63 characters. An unknown or missing time zone becomes 0.
std::vector<CityRecord> ReadCities(std::wstring_view text);

/// The number of HORIVO_TIME_ZONES of a zone; 0 when there is none of this name.
std::uint32_t ZoneNumber(std::wstring_view keyName);

/// The names of a city and of its country: the one to show, then all others by which to find it.
struct PlaceNames {
    std::vector<std::wstring> city;
    std::vector<std::wstring> country;
};

/// Parses the text of a names file. Its fields are city (empty: the country itself) and country as
/// in the city file, then the names in each language whose code the first line has there; "others"
/// there heads the names that belong to no language, with ", " between.
/// @param language  code; the names of the city file are shown where the file has none in it
/// @return an entry for each of `cities`
std::vector<PlaceNames> ReadCityNames(std::wstring_view text, const std::vector<CityRecord>& cities,
                                      std::wstring_view language);
