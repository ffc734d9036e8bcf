#pragma once

#include <cmath>
#include <vector>

#include "horivo_map.h"

/// Cities spread evenly over the globe, on a spiral from pole to pole.
inline std::vector<CityRecord> SpreadCities(int count) {
    std::vector<CityRecord> cities(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        CityRecord& city = cities[static_cast<std::size_t>(i)];
        city.cityName[0] = u'C';
        city.latitude = std::asin(1.0 - (2.0 * i + 1.0) / count) * 57.29577951;
        city.longitude = std::fmod(i * 137.50776405, 360.0) - 180.0;
        city.timeZoneId = 122;  // UTC
    }
    return cities;
}
