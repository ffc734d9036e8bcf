#pragma once
// The data that all windows of the program share.

#include <vector>

#include "clock/city_times.h"
#include "data/settings.h"
#include "horivo_map.h"

/// Only the main thread uses it.
struct ProgramData {
    std::vector<CityRecord> cities;  ///< not resized while the map lives: it keeps their address
    CityTimes times;
    HostSettings settings;
};
