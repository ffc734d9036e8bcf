// The pointer's hit test in the host's city table. Baseline: reading the whole table once.
#include <cstring>
#include <vector>

#include "cities/city_markers.h"
#include "cities/city_pick.h"
#include "common/spread_cities.h"
#include "paired_benchmark.h"

namespace {

constexpr double kRadius = 3.0;  // scene units; radius of the globe

/// Reads every byte of the table: adds up its 64-bit words.
std::uint64_t ReadAll(const std::vector<CityRecord>& cities) {
    const auto* const words = reinterpret_cast<const std::uint64_t*>(cities.data());
    const std::size_t count = cities.size() * sizeof(CityRecord) / sizeof(std::uint64_t);
    std::uint64_t sums[4] = {};
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        for (std::size_t lane = 0; lane < 4; ++lane) sums[lane] += words[i + lane];
    }
    for (; i < count; ++i) sums[0] += words[i];
    return sums[0] + sums[1] + sums[2] + sums[3];
}

/// Measures FindCitiesNear. The point moves from city to city, like the pointer of a user, so that
/// the flags in the records change with every call.
void FindNear(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    std::vector<CityRecord> cities = SpreadCities(count);
    PlaceCityMarkers({cities.data(), count}, kRadius);
    const CityTable table{cities.data(), count};
    CityRecord* out[kMaxCitiesNear];
    // A small table takes microseconds, too short for the clock, so it is searched repeatedly.
    const int rounds = std::max(1, 200000 / count);
    int at = 0;
    RunPairs(
        state,
        [&] {
            return MillisecondsOf([&] {
                for (int i = 0; i < rounds; ++i) benchmark::DoNotOptimize(ReadAll(cities));
            });
        },
        [&] {
            return MillisecondsOf([&] {
                for (int i = 0; i < rounds; ++i) {
                    at = (at + 7919) % count;
                    const double* m = cities[static_cast<std::size_t>(at)].markerPoint;
                    std::int32_t near = 0;
                    benchmark::DoNotOptimize(FindCitiesNear(table, {m[0], m[1], m[2], 1.0},
                                                            kCityReach, out, kMaxCitiesNear, near));
                }
            });
        });
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::RegisterBenchmark("find_cities", FindNear)
        ->Arg(1000)
        ->Arg(10000)
        ->Arg(50000)
        ->Arg(140000)
        ->UseManualTime()
        ->Iterations(benchmark::IterationCount{2} * kBenchPairs)
        ->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
