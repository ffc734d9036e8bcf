#pragma once
// Compares an operation with its baseline, the least work that the task needs. Both run in turns,
// so that other load on the machine affects both; the figures are medians over the pairs.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <vector>

/// Number of pairs that are measured for a figure of the table that bench/table.py prints.
inline constexpr int kBenchPairs = 15;

/// Runs `work` once. @return ms
template <class Work>
double MillisecondsOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

/// The value below which this share of the values lies; 0.5 gives the median. `values` is not
/// empty.
inline double Quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const auto last = static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(std::lround(share * last))];
}

/// Limits of a comparison: at least `minPairs` pairs, and more as long as `ms` has not passed.
struct PairBudget {
    int minPairs = kBenchPairs;
    double ms = 3000.0;
};
inline constexpr int kMaxPairs = 300;

/// Times of an operation and of its baseline, pair by pair.
class Pairs {
public:
    void Add(double baselineMs, double measuredMs) {
        baselines_.push_back(baselineMs);
        measured_.push_back(measuredMs);
    }
    double BaselineMs() const { return Quantile(baselines_, 0.5); }
    double MeasuredMs() const { return Quantile(measured_, 0.5); }
    /// Shortest time of each; the two may come from different pairs.
    double BestBaselineMs() const { return Quantile(baselines_, 0.0); }
    double BestMeasuredMs() const { return Quantile(measured_, 0.0); }
    /// Divides, in each pair, the time of the operation by that of its baseline. Returns the
    /// Quantile `share` of these ratios.
    double TimeRatio(double share) const {
        std::vector<double> ratios(measured_.size());
        std::transform(measured_.begin(), measured_.end(), baselines_.begin(), ratios.begin(),
                       [](double measured, double baseline) { return measured / baseline; });
        return Quantile(std::move(ratios), share);
    }

private:
    std::vector<double> baselines_;
    std::vector<double> measured_;
};

/// Measures pairs of `baseline()` and `operation()`, which return the milliseconds of the
/// measured part. A pair is baseline, operation, operation, baseline, so that the state of memory
/// that one leaves affects both.
template <class Baseline, class Operation>
Pairs MeasurePairs(Baseline&& baseline, Operation&& operation, PairBudget budget = {}) {
    baseline();
    operation();  // before the first pair, so that both have touched their memory
    Pairs pairs;
    double spentMs = 0.0;
    for (int i = 0; i < budget.minPairs || (spentMs < budget.ms && i < kMaxPairs); ++i) {
        double baselineMs = baseline();
        double measuredMs = operation();
        measuredMs += operation();
        baselineMs += baseline();
        pairs.Add(baselineMs / 2.0, measuredMs / 2.0);
        spentMs += baselineMs + measuredMs;
    }
    return pairs;
}
