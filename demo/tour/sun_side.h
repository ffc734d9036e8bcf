#pragma once
// Where on Earth it is noon, well enough to choose a view.

#include <vector>

#include "horivo_map.h"
#include "window/host_windows.h"

/// The city nearest to the place where the Sun stands overhead at `utc`, or, with `night`, nearest
/// to the place opposite. @return null for an empty table
const CityRecord* CityUnderSun(const std::vector<CityRecord>& cities, const SYSTEMTIME& utc,
                               bool night);
