#include "clock/city_order.h"

#include <algorithm>

namespace {

constexpr DWORD kIgnored = NORM_IGNORECASE | NORM_IGNORENONSPACE | NORM_IGNORESYMBOLS |
                           NORM_IGNOREWIDTH | NORM_IGNOREKANATYPE;

/// Whether one of `names` contains `wanted`.
/// @param where  FIND_STARTSWITH: only at the start of the name; FIND_FROMSTART: anywhere in it
bool AnyHas(const std::vector<std::wstring>& names, const std::wstring& wanted, DWORD where) {
    return std::ranges::any_of(names, [&](const std::wstring& name) {
        return FindNLSStringEx(LOCALE_NAME_INVARIANT, where | kIgnored, name.c_str(),
                               static_cast<int>(name.size()), wanted.c_str(),
                               static_cast<int>(wanted.size()), nullptr, nullptr, nullptr, 0) >= 0;
    });
}

/// Compares the names that are shown. @return below 0 when `a` comes before `b`
int Compare(const std::vector<std::wstring>& a, const std::vector<std::wstring>& b) {
    return CompareStringEx(LOCALE_NAME_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNORENONSPACE,
                           a[0].c_str(), -1, b[0].c_str(), -1, nullptr, nullptr, 0) -
           CSTR_EQUAL;
}

/// Compares the entries of a column of times. @return below 0 when `a` comes before `b`, 0 when
/// they are equal
std::int32_t CompareTimes(const LocalTime& a, const LocalTime& b, CityColumn column) {
    if (column == CityColumn::Offset) return a.offsetMinutes - b.offsetMinutes;
    if (column == CityColumn::Date) {
        // Compares only the dates, so that cities with the same date are sorted by name, not by
        // time.
        const auto day = [](SYSTEMTIME time) {
            time.wHour = time.wMinute = time.wSecond = time.wMilliseconds = 0;
            return time;
        };
        return MinutesBetween(day(a.time), day(b.time));
    }
    return (a.time.wHour - b.time.wHour) * 60 + a.time.wMinute - b.time.wMinute;
}

}  // namespace

Fit FitOf(const CityRecord& city, const PlaceNames& names, const std::wstring& wanted) {
    if (wanted.empty()) return Fit::NameBegins;
    if (AnyHas(names.city, wanted, FIND_STARTSWITH)) {
        const auto part = static_cast<StandsFor>(city.hostBytes[0]);
        if (part == StandsFor::Zone) return Fit::ZoneBegins;
        return part == StandsFor::ZoneInCountry ? Fit::ZoneInCountryBegins : Fit::NameBegins;
    }
    if (AnyHas(names.city, wanted, FIND_FROMSTART)) return Fit::NameContains;
    return AnyHas(names.country, wanted, FIND_FROMSTART) ? Fit::Country : Fit::None;
}

void SortRows(std::vector<CityRow>& rows, const std::vector<PlaceNames>& names, CityColumn column,
              bool descending) {
    const auto at = [&](const CityRow& row) -> const PlaceNames& {
        return names[static_cast<std::size_t>(row.city)];
    };
    const bool byTime = column != CityColumn::Name && column != CityColumn::Country;
    const auto compare = [&](const CityRow& a, const CityRow& b) -> std::int32_t {
        if (column == CityColumn::Name) return Compare(at(a).city, at(b).city);
        if (column == CityColumn::Country) return Compare(at(a).country, at(b).country);
        return a.hasTime ? CompareTimes(a.local, b.local, column) : 0;
    };
    std::stable_sort(rows.begin(), rows.end(), [&](const CityRow& a, const CityRow& b) {
        if (a.fit != b.fit) return a.fit < b.fit;
        if (byTime && a.hasTime != b.hasTime) return a.hasTime;
        const std::int32_t order = compare(a, b);
        if (order != 0) return descending ? order > 0 : order < 0;
        const int byName = Compare(at(a).city, at(b).city);
        return byName != 0 ? byName < 0 : Compare(at(a).country, at(b).country) < 0;
    });
}
