#pragma once
// What all windows of the program show and remember.

#include <vector>

#include "clock/city_times.h"
#include "data/settings.h"
#include "horivo_map.h"

/// The main thread's alone.
struct ProgramData {
    std::vector<CityRecord> cities;  ///< the map keeps their address
    CityTimes times;
    HostSettings settings;
};
