#pragma once
// The data that all windows of the program share.

#include <vector>

#include "clock/city_times.h"
#include "data/city_file.h"
#include "data/settings.h"
#include "horivo_map.h"

/// Only the main thread uses this data.
struct ProgramData {
    std::vector<CityRecord> cities;  ///< not resized after InitMap: the map keeps their address
    std::vector<PlaceNames> names;   ///< of each city, in the language of the texts
    CityTimes times;
    HostSettings settings;
};
