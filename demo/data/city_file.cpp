#include "data/city_file.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cwchar>
#include <map>
#include <optional>
#include <utility>

#include "windows_api.h"

namespace {

constexpr std::size_t kNameSize = sizeof CityRecord{}.cityName / sizeof(HorivoWideChar);

struct Zone {
    std::uint32_t number;
    std::wstring_view keyName;
};

#define ZONE(number, keyName) {number, L##keyName},
constexpr Zone kZones[] = {HORIVO_TIME_ZONES(ZONE)};
#undef ZONE

using Fields = std::vector<std::wstring_view>;

/// Splits `text` at each `separator`.
Fields Split(std::wstring_view text, std::wstring_view separator) {
    Fields fields;
    for (;;) {
        const std::size_t end = text.find(separator);
        fields.push_back(text.substr(0, end));
        if (end == std::wstring_view::npos) return fields;
        text.remove_prefix(end + separator.size());
    }
}

std::vector<Fields> ReadLines(std::wstring_view text) {
    std::vector<Fields> lines;
    for (std::wstring_view line : Split(text, L"\n")) {
        if (line.ends_with(L'\r')) line.remove_suffix(1);
        lines.push_back(Split(line, L"\t"));
    }
    return lines;
}

bool IsComment(const Fields& line) { return line[0].starts_with(L'#'); }

std::wstring_view Field(const Fields& line, std::size_t index) {
    return index < line.size() ? line[index] : std::wstring_view();
}

/// Copies a name, truncated to the length of the field, but not inside a surrogate pair.
void StoreName(std::wstring_view name, HorivoWideChar (&field)[kNameSize]) {
    const std::size_t length = name.copy(field, kNameSize - 1);
    if (length > 0 && IS_HIGH_SURROGATE(field[length - 1])) field[length - 1] = L'\0';
}

/// Parses degrees from -limit to limit; empty when the text is not exactly such a number.
std::optional<double> ParseDegrees(std::wstring_view text, double limit) {
    const std::wstring number(text);
    wchar_t* end = nullptr;
    const double degrees = std::wcstod(number.c_str(), &end);
    const bool whole = !number.empty() && end == number.c_str() + number.size();
    if (!whole || !(std::fabs(degrees) <= limit)) return std::nullopt;
    return degrees;
}

StandsFor ParseStandsFor(std::wstring_view text) {
    if (text == L"zone") return StandsFor::Zone;
    return text == L"country" ? StandsFor::ZoneInCountry : StandsFor::Itself;
}

std::optional<CityRecord> ReadCity(const Fields& line) {
    const std::optional<double> latitude = ParseDegrees(Field(line, 2), 90.0);
    const std::optional<double> longitude = ParseDegrees(Field(line, 3), 180.0);
    if (!latitude || !longitude) return std::nullopt;
    CityRecord city{};
    StoreName(line[0], city.cityName);
    if (city.cityName[0] == 0) return std::nullopt;
    StoreName(Field(line, 1), city.countryName);
    city.latitude = *latitude;
    city.longitude = *longitude;
    city.timeZoneId = ZoneNumber(Field(line, 4));
    city.hostBytes[0] = static_cast<unsigned char>(ParseStandsFor(Field(line, 6)));
    return city;
}

/// Indices of the columns of a names file that the program reads; 0: there is no such column.
struct NameColumns {
    std::size_t language = 0;  ///< names in the language that the user has chosen
    std::size_t others = 0;    ///< more names to search for

    void Read(const Fields& heads, std::wstring_view code) {
        for (std::size_t i = 2; i < heads.size(); ++i) {
            if (heads[i] == code) language = i;
            if (heads[i] == L"others") others = i;
        }
    }
};

/// All names of a place, the name to show first.
/// @param line  of the names file; empty when the file has no line for the place
std::vector<std::wstring> NamesOf(std::wstring_view english, const Fields& line,
                                  const NameColumns& columns) {
    std::vector<std::wstring> names{std::wstring(english)};
    if (columns.language != 0 && !Field(line, columns.language).empty()) {
        names.emplace(names.begin(), line[columns.language]);
    }
    if (columns.others == 0) return names;
    for (const std::wstring_view name : Split(Field(line, columns.others), L", ")) {
        if (!name.empty()) names.emplace_back(name);
    }
    return names;
}

}  // namespace

std::uint32_t ZoneNumber(std::wstring_view keyName) {
    const Zone* const zone = std::ranges::find(kZones, keyName, &Zone::keyName);
    return zone != std::end(kZones) ? zone->number : 0;
}

std::vector<CityRecord> ReadCities(std::wstring_view text) {
    std::vector<CityRecord> cities;
    for (const Fields& line : ReadLines(text)) {
        if (IsComment(line)) continue;
        if (const std::optional<CityRecord> city = ReadCity(line)) cities.push_back(*city);
    }
    return cities;
}

std::vector<PlaceNames> ReadCityNames(std::wstring_view text, const std::vector<CityRecord>& cities,
                                      std::wstring_view language) {
    std::map<std::pair<std::wstring_view, std::wstring_view>, Fields> lines;
    NameColumns columns;
    for (Fields& line : ReadLines(text)) {
        if (IsComment(line)) {
            columns.Read(line, language);
        } else {
            lines[{line[0], Field(line, 1)}] = std::move(line);
        }
    }
    std::vector<PlaceNames> names;
    names.reserve(cities.size());
    for (const CityRecord& city : cities) {
        names.push_back({NamesOf(city.cityName, lines[{city.cityName, city.countryName}], columns),
                         NamesOf(city.countryName, lines[{L"", city.countryName}], columns)});
    }
    return names;
}
