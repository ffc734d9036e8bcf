#include "clock/start_city.h"

#include <algorithm>

#include "data/city_file.h"
#include "windows_api.h"

namespace {

/// Index of the city at `found`; -1 when `found` is the end of `cities`.
std::int32_t IndexOf(const std::vector<CityRecord>& cities,
                     std::vector<CityRecord>::const_iterator found) {
    return found != cities.end() ? static_cast<std::int32_t>(found - cities.begin()) : -1;
}

}  // namespace

std::int32_t FindCity(const std::vector<CityRecord>& cities, std::wstring_view name,
                      std::wstring_view country) {
    return IndexOf(cities, std::ranges::find_if(cities, [&](const CityRecord& city) {
                       return name == city.cityName && country == city.countryName;
                   }));
}

std::int32_t FindCityOfZone(const std::vector<CityRecord>& cities, std::uint32_t zone,
                            std::wstring_view country) {
    const auto rank = [&](const CityRecord& city) {
        if (zone == 0 || city.timeZoneId != zone) return 0;
        const auto part = static_cast<StandsFor>(city.hostBytes[0]);
        if (part != StandsFor::Itself && country == city.countryName) return 3;
        return part == StandsFor::Zone ? 2 : 1;
    };
    const auto best = std::ranges::max_element(cities, {}, rank);
    return best != cities.end() && rank(*best) > 0 ? IndexOf(cities, best) : -1;
}

std::int32_t FindCityHere(const std::vector<CityRecord>& cities) {
    DYNAMIC_TIME_ZONE_INFORMATION zone{};
    GetDynamicTimeZoneInformation(&zone);
    wchar_t country[64] = {};
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SENGLISHCOUNTRYNAME, country, 64);
    return FindCityOfZone(cities, ZoneNumber(zone.TimeZoneKeyName), country);
}
