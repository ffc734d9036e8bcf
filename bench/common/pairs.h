#pragma once
// Compares a road with its floor: both run in turns, so that whatever else the machine does meets
// both alike, and the figures are medians over the pairs.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <vector>

/// Pairs that a figure of the table rests on.
inline constexpr int kBenchPairs = 15;

/// Runs `work` once. @return ms
template <class Work>
double MillisecondsOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

/// The value that a share of the values lies below; 0.5 is the median. `values` not empty.
inline double Quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const auto last = static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(std::lround(share * last))];
}

/// How long a comparison may take: short roads get more pairs, as many as fit into the time.
struct PairBudget {
    int leastPairs = kBenchPairs;
    double ms = 3000.0;
};
inline constexpr int kMostPairs = 300;

/// Times of a road and of its floor, pair by pair.
class Pairs {
public:
    void Add(double floorMs, double roadMs) {
        floors_.push_back(floorMs);
        roads_.push_back(roadMs);
    }
    double FloorMs() const { return Quantile(floors_, 0.5); }
    double RoadMs() const { return Quantile(roads_, 0.5); }
    /// Of the quickest round.
    double BestFloorMs() const { return Quantile(floors_, 0.0); }
    double BestRoadMs() const { return Quantile(roads_, 0.0); }
    /// The road's time in units of the floor's, within pairs; `share` as for Quantile.
    double TimeRatio(double share) const {
        std::vector<double> ratios(roads_.size());
        std::transform(roads_.begin(), roads_.end(), floors_.begin(), ratios.begin(),
                       [](double road, double floor) { return road / floor; });
        return Quantile(std::move(ratios), share);
    }

private:
    std::vector<double> floors_;
    std::vector<double> roads_;
};

/// Pairs of `floor()` and `road()`, each giving the milliseconds of the part that counts. A pair is
/// floor, road, road, floor: what one finds as the other left it, memory above all, meets both.
template <class Floor, class Road>
Pairs MeasurePairs(Floor&& floor, Road&& road, PairBudget budget = {}) {
    floor();
    road();  // both have touched their memory before the first pair counts
    Pairs pairs;
    double spentMs = 0.0;
    for (int i = 0; i < budget.leastPairs || (spentMs < budget.ms && i < kMostPairs); ++i) {
        double floorMs = floor();
        double roadMs = road();
        roadMs += road();
        floorMs += floor();
        pairs.Add(floorMs / 2.0, roadMs / 2.0);
        spentMs += floorMs + roadMs;
    }
    return pairs;
}
