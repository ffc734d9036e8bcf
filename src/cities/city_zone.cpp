#include "cities/city_zone.h"

const _TIME_DYNAMIC_ZONE_INFORMATION* ResolveTimeZone(CityRecord& city,
                                                      TimeZoneTable& table) noexcept {
    if (city.timeZone == nullptr) {
        const _TIME_DYNAMIC_ZONE_INFORMATION* found = table.Find(city.timeZoneId);
        if (found != nullptr) city.timeZone = found;
    }
    return city.timeZone;
}

void RestoreTimeZones(const CityTable& cities, const TimeZoneTable& table) noexcept {
    for (CityRecord& city : cities.Records()) {
        if (table.Owns(city.timeZone)) city.timeZone = nullptr;
    }
}
