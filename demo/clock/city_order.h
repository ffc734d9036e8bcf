#pragma once
// The rows of the city list: which cities match a search, and their order.

#include <cstdint>
#include <string>
#include <vector>

#include "clock/city_times.h"

/// One row of the list.
struct CityRow {
    std::int32_t city;  ///< index in the city table
    bool hasTime;       ///< the local time of the city is known
    LocalTime local;    ///< valid only when `hasTime`
};

enum class CityColumn { Name, Time, Date, Offset };

/// Whether the name of the city or of its country contains `wanted`; case and accents do not
/// matter. True for an empty `wanted`.
bool Matches(const CityRecord& city, const std::wstring& wanted);

/// Sorts by a column. Cities with the same entry are sorted by name, in the order of the user's
/// language. Cities without a time come last, whether `descending` or not, unless the column is
/// Name.
void SortRows(std::vector<CityRow>& rows, const std::vector<CityRecord>& cities, CityColumn column,
              bool descending);
