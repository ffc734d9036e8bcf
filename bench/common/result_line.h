#pragma once
// How a benchmark program hands its figures on: one JSON object a line, which bench/table.py reads.

#include <cstdio>
#include <string>

#include "common/pairs.h"

inline void PrintPairs(const std::string& road, const Pairs& pairs) {
    std::printf(
        "{\"road\": \"%s\", \"floor_ms\": %.4f, \"road_ms\": %.4f, \"ratio\": %.4f, "
        "\"low\": %.4f, \"high\": %.4f, \"best_ms\": %.4f}\n",
        road.c_str(), pairs.FloorMs(), pairs.RoadMs(), pairs.TimeRatio(0.5), pairs.TimeRatio(0.25),
        pairs.TimeRatio(0.75), pairs.BestRoadMs());
    std::fflush(stdout);
}

/// A figure without a floor of its own.
inline void PrintValue(const std::string& road, const std::string& unit, double value) {
    std::printf("{\"road\": \"%s\", \"unit\": \"%s\", \"value\": %.6g}\n", road.c_str(),
                unit.c_str(), value);
    std::fflush(stdout);
}
