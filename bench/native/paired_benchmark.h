#pragma once
// Google Benchmark runs that time a road together with its floor.

#include <benchmark/benchmark.h>

#include "common/pairs.h"

/// One iteration is one pair: `floor()` and `road()` each do their own preparation and give the
/// milliseconds of the part that counts. The counters carry medians and quartiles.
template <class Floor, class Road>
void RunPairs(benchmark::State& state, Floor&& floor, Road&& road) {
    floor();
    road();  // both have touched their memory before the first pair counts
    Pairs pairs;
    bool roadFirst = false;
    for (auto _ : state) {
        double roadMs = roadFirst ? road() : 0.0;
        const double floorMs = floor();
        if (!roadFirst) roadMs = road();
        roadFirst = !roadFirst;
        pairs.Add(floorMs, roadMs);
        state.SetIterationTime(roadMs / 1000.0);
    }
    state.counters["floor_ms"] = pairs.FloorMs();
    state.counters["road_ms"] = pairs.RoadMs();
    state.counters["ratio"] = pairs.TimeRatio(0.5);
    state.counters["low"] = pairs.TimeRatio(0.25);
    state.counters["high"] = pairs.TimeRatio(0.75);
}
