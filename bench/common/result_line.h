#pragma once
// Prints the figures of a benchmark program: one JSON object per line, which bench/table.py reads.

#include <cstdio>
#include <string>

#include "common/pairs.h"

inline void PrintPairs(const std::string& name, const Pairs& pairs) {
    std::printf(
        "{\"name\": \"%s\", \"baseline_ms\": %.4f, \"measured_ms\": %.4f, \"ratio\": %.4f, "
        "\"low\": %.4f, \"high\": %.4f, \"best_ms\": %.4f}\n",
        name.c_str(), pairs.BaselineMs(), pairs.MeasuredMs(), pairs.TimeRatio(0.5),
        pairs.TimeRatio(0.25), pairs.TimeRatio(0.75), pairs.BestMeasuredMs());
    std::fflush(stdout);
}

/// Prints a figure that has no baseline.
inline void PrintValue(const std::string& name, const std::string& unit, double value) {
    std::printf("{\"name\": \"%s\", \"unit\": \"%s\", \"value\": %.6g}\n", name.c_str(),
                unit.c_str(), value);
    std::fflush(stdout);
}
