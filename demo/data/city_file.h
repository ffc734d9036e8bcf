#pragma once
// Reads the file of the city table and the file of the names. Tabs separate the fields of a line;
// lines that begin with '#' are comments.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "horivo_map.h"

/// What a city stands for: only itself, its time zone in its country, or its whole time zone.
/// CityRecord::hostBytes[0] stores this value.
enum class StandsFor : unsigned char { Itself, ZoneInCountry, Zone };

/// Parses the text of a city file. The fields of a line are name, country, latitude, longitude,
/// time zone (its key name in the registry), a field that is not read, and what the city stands for
/// ("zone", "country" or empty).
/// @return a record for each line that has a name and a valid position; other lines are skipped.
///         Names are truncated to 63 characters. An unknown or missing time zone becomes 0.
std::vector<CityRecord> ReadCities(std::wstring_view text);

/// The number of the zone with this key name in HORIVO_TIME_ZONES; 0 when there is none.
std::uint32_t ZoneNumber(std::wstring_view keyName);

/// The names of a city and of its country. The first name of each list is shown; a search looks for
/// all names.
struct PlaceNames {
    std::vector<std::wstring> city;
    std::vector<std::wstring> country;
};

/// Parses the text of a names file. The first two fields of a line are the city and the country as
/// in the city file; an empty city means the country itself. The first line of the file is a
/// comment that says what the other fields are: a language code means the name in that language,
/// "others" means more names to search for, separated by ", ".
/// @param language  ISO 639 code; a place without a name in this language is shown with its name
///                  from the city file
/// @return an entry for each of `cities`
std::vector<PlaceNames> ReadCityNames(std::wstring_view text, const std::vector<CityRecord>& cities,
                                      std::wstring_view language);
