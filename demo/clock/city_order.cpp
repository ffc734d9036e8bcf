#include "clock/city_order.h"

#include <algorithm>

namespace {

constexpr DWORD kIgnoreCaseAndAccents = LINGUISTIC_IGNORECASE | LINGUISTIC_IGNOREDIACRITIC;

bool Contains(const wchar_t* text, const std::wstring& wanted) {
    return FindNLSStringEx(LOCALE_NAME_USER_DEFAULT, FIND_FROMSTART | kIgnoreCaseAndAccents, text,
                           -1, wanted.c_str(), static_cast<int>(wanted.size()), nullptr, nullptr,
                           nullptr, 0) >= 0;
}

int CompareNames(const CityRecord& a, const CityRecord& b) {
    const auto compare = [](const wchar_t* x, const wchar_t* y) {
        return CompareStringEx(LOCALE_NAME_USER_DEFAULT, kIgnoreCaseAndAccents, x, -1, y, -1,
                               nullptr, nullptr, 0) -
               CSTR_EQUAL;
    };
    const int byCity = compare(a.cityName, b.cityName);
    return byCity != 0 ? byCity : compare(a.countryName, b.countryName);
}

/// Compares the entries of a column that is not Name. @return below 0 when `a` comes before `b`, 0
/// when they are equal
std::int32_t CompareTimes(const LocalTime& a, const LocalTime& b, CityColumn column) {
    if (column == CityColumn::Offset) return a.offsetMinutes - b.offsetMinutes;
    if (column == CityColumn::Date) {
        // Only the date: cities with the same date are then sorted by name, not by time.
        const auto day = [](SYSTEMTIME time) {
            time.wHour = time.wMinute = time.wSecond = time.wMilliseconds = 0;
            return time;
        };
        return MinutesBetween(day(a.time), day(b.time));
    }
    return (a.time.wHour - b.time.wHour) * 60 + a.time.wMinute - b.time.wMinute;
}

}  // namespace

bool Matches(const CityRecord& city, const std::wstring& wanted) {
    return wanted.empty() || Contains(city.cityName, wanted) || Contains(city.countryName, wanted);
}

void SortRows(std::vector<CityRow>& rows, const std::vector<CityRecord>& cities, CityColumn column,
              bool descending) {
    const auto at = [&](const CityRow& row) -> const CityRecord& {
        return cities[static_cast<std::size_t>(row.city)];
    };
    std::stable_sort(rows.begin(), rows.end(), [&](const CityRow& a, const CityRow& b) {
        if (column == CityColumn::Name) {
            const int order = CompareNames(at(a), at(b));
            return descending ? order > 0 : order < 0;
        }
        if (a.hasTime != b.hasTime) return a.hasTime;
        const std::int32_t order = a.hasTime ? CompareTimes(a.local, b.local, column) : 0;
        if (order != 0) return descending ? order > 0 : order < 0;
        return CompareNames(at(a), at(b)) < 0;
    });
}
