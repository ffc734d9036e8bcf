#pragma once
// Runs of Google Benchmark that measure an operation together with its baseline.

#include <benchmark/benchmark.h>

#include "common/pairs.h"

/// One iteration is one pair: `baseline()` and `operation()` do their own preparation and
/// return the milliseconds of the measured part. The counters have medians and quartiles.
template <class Baseline, class Operation>
void RunPairs(benchmark::State& state, Baseline&& baseline, Operation&& operation) {
    baseline();
    operation();  // before the first pair, so that both have touched their memory
    Pairs pairs;
    bool operationFirst = false;
    for (auto _ : state) {
        double measuredMs = operationFirst ? operation() : 0.0;
        const double baselineMs = baseline();
        if (!operationFirst) measuredMs = operation();
        operationFirst = !operationFirst;
        pairs.Add(baselineMs, measuredMs);
        state.SetIterationTime(measuredMs / 1000.0);
    }
    state.counters["baseline_ms"] = pairs.BaselineMs();
    state.counters["measured_ms"] = pairs.MeasuredMs();
    state.counters["ratio"] = pairs.TimeRatio(0.5);
    state.counters["low"] = pairs.TimeRatio(0.25);
    state.counters["high"] = pairs.TimeRatio(0.75);
}
