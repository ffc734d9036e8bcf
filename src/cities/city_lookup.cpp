#include "cities/city_lookup.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>

namespace {

constexpr std::size_t kNameCapacity = std::extent_v<decltype(CityRecord::cityName)>;

WideView BoundedName(const HorivoWideChar (&name)[kNameCapacity]) noexcept {
    const auto* end = std::find(std::begin(name), std::end(name), HorivoWideChar{0});
    return {name, static_cast<std::size_t>(end - name)};
}

/// Whether a name of the table is equal to `text` when case is ignored. Allocates no memory,
/// because a search may call this function for 100,000 records.
bool IsNamed(WideView name, const WideString& text) noexcept {
    std::array<HorivoWideChar, kNameCapacity + 1> terminated;
    terminated[name.copy(terminated.data(), kNameCapacity)] = 0;
    return EqualIgnoringCase(terminated.data(), text.c_str());
}

/// Index of the first record for which `matches` returns true, or -1.
template <class Predicate>
std::int32_t FindRecord(const CityTable& cities, Predicate matches) {
    const auto records = cities.Records();
    const auto found = std::find_if(records.begin(), records.end(), matches);
    return found == records.end() ? -1 : static_cast<std::int32_t>(found - records.begin());
}

}  // namespace

WideView CityNameOf(const CityRecord& city) noexcept { return BoundedName(city.cityName); }
WideView CountryNameOf(const CityRecord& city) noexcept { return BoundedName(city.countryName); }

std::int32_t FindCity(const CityTable& cities, WideView country, WideView city) {
    if (city.empty()) return -1;
    const WideString wantedCity(city);
    const WideString wantedCountry(country);
    return FindRecord(cities, [&](const CityRecord& record) {
        return IsNamed(CityNameOf(record), wantedCity) &&
               (wantedCountry.empty() || IsNamed(CountryNameOf(record), wantedCountry));
    });
}

std::int32_t FindCityByDisplayName(const CityTable& cities, WideView text) {
    const WideString wanted(text);
    WideString displayed;
    return FindRecord(cities, [&](const CityRecord& record) {
        displayed = CityNameOf(record);
        const WideView country = CountryNameOf(record);
        if (!country.empty()) displayed.append(WidenAscii(", ")).append(country);
        return EqualIgnoringCase(displayed.c_str(), wanted.c_str());
    });
}
