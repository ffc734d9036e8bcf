#pragma once
// The rows of the city list: which cities match a search, and their order.

#include <cstdint>
#include <string>
#include <vector>

#include "clock/city_times.h"
#include "data/city_file.h"

/// How well a city matches a search; the best value is first. Among cities whose names begin with
/// the search text, the city that represents a time zone is better known and comes first: "par"
/// lists Paris before Paramaribo.
enum class Fit {
    ZoneBegins,           ///< the name begins with the text; the city represents its time zone
    ZoneInCountryBegins,  ///< the same, but it represents its zone within its country only
    NameBegins,
    NameContains,
    Country,  ///< no name of the city contains the text, but a name of its country does
    None,
};

/// One row of the list.
struct CityRow {
    std::int32_t city;  ///< index in the city table
    Fit fit;
    bool hasTime;     ///< the local time of the city is known
    LocalTime local;  ///< valid only when `hasTime`
};

/// The columns with the numbers that the settings store; on the screen they have another order.
enum class CityColumn { Name, Time, Date, Offset, Country };
inline constexpr int kCityColumns = 5;

/// How well a city matches the text that the user has typed. Ignores case, accents, spaces,
/// punctuation and the different forms of Japanese letters. Does not use the rules of the user's
/// language, so that all users find the same cities. An empty text gives NameBegins for every city.
Fit FitOf(const CityRecord& city, const PlaceNames& names, const std::wstring& wanted);

/// Sorts by fit, then by a column. Cities with equal values in that column are sorted by name, in
/// the order of the user's language. In a column of times, cities without a time come last, also
/// when `descending` is true.
/// @param names  of all cities of the table, by index
void SortRows(std::vector<CityRow>& rows, const std::vector<PlaceNames>& names, CityColumn column,
              bool descending);
