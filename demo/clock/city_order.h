#pragma once
// The rows of the city list: which cities match a search, and their order.

#include <cstdint>
#include <string>
#include <vector>

#include "clock/city_times.h"
#include "data/city_file.h"

/// Why a city is among the hits of a search, the best first. Of the cities whose names begin alike,
/// those that stand for a time zone are the better known: "par" is Paris before Paramaribo.
enum class Fit { ZoneBegins, ZoneInCountryBegins, NameBegins, NameContains, Country, None };

/// One row of the list.
struct CityRow {
    std::int32_t city;  ///< index in the city table
    Fit fit;
    bool hasTime;     ///< the local time of the city is known
    LocalTime local;  ///< valid only when `hasTime`
};

/// The columns by the numbers that the settings keep; they stand in another order on the screen.
enum class CityColumn { Name, Time, Date, Offset, Country };
inline constexpr int kCityColumns = 5;

/// How a city fits to what the user has typed. Case, accents, blanks and signs do not matter, nor
/// do the forms of Japanese letters. The rules of no language apply, so that all users find the
/// same. Without a search all fit alike.
Fit FitOf(const CityRecord& city, const PlaceNames& names, const std::wstring& wanted);

/// Sorts by fit, then by a column. Cities with the same entry are sorted by name, in the order of
/// the user's language. Cities without a time come last in the columns of times, whether
/// `descending` or not.
/// @param names  of all cities
void SortRows(std::vector<CityRow>& rows, const std::vector<PlaceNames>& names, CityColumn column,
              bool descending);
