#pragma once
// Which cities the list shows, and in which order.

#include <cstdint>
#include <string>
#include <vector>

#include "clock/city_times.h"

/// One line of the list.
struct CityRow {
    std::int32_t city;  ///< index in the table
    bool hasTime;       ///< otherwise `local` means nothing
    LocalTime local;
};

enum class CityColumn { Name, Time, Date, Offset };

/// Whether the city's or its country's name contains `wanted`, whatever the case and the accents.
/// Everything contains an empty text.
bool Matches(const CityRecord& city, const std::wstring& wanted);

/// Sorts by a column, cities with the same entry by name in the language's order; those without a
/// time come last in either direction.
void SortRows(std::vector<CityRow>& rows, const std::vector<CityRecord>& cities, CityColumn column,
              bool descending);
