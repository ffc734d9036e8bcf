// How the image road and the hit test grow: growth_bench pictures | cities
// One line a size, blank-separated, for the plot. Times are those of the quickest round: other
// programs only ever add to them.
#include <cstdio>
#include <cstring>
#include <string>

#include "bench_picture.h"
#include "cities/city_markers.h"
#include "cities/city_pick.h"
#include "common/pairs.h"
#include "common/spread_cities.h"
#include "heap_meter.h"
#include "image/tile_grid.h"

namespace {

constexpr int kRounds = 9;
constexpr double kMiB = 1024.0 * 1024.0;

struct Road {
    std::vector<double> loadMs, rescaleMs, splitMs, shrinkMs;
    std::size_t peak = 0;  ///< of load, rescale and split
    std::size_t shrinkPeak = 0;
};

void WalkRoad(const PixelBytes& source, int width, int height, Road& road) {
    CGLTexture tiles[8];
    CGLTexture* grid[8];
    for (int i = 0; i < 8; ++i) grid[i] = &tiles[i];
    const HeapMeter meter;
    road.loadMs.push_back(MillisecondsOf([&] { LoadNoise(tiles[0], source, width, height); }));
    road.rescaleMs.push_back(MillisecondsOf([&] { tiles[0].Rescale(width / 2, height / 2); }));
    road.peak = meter.Peak();
    LoadNoise(tiles[0], source, width, height);
    road.splitMs.push_back(MillisecondsOf([&] { SplitIntoGrid(grid, 4, 2); }));
}

void WalkShrinkingRoad(const PixelBytes& source, int width, int height, Road& road) {
    CGLTexture texture;
    const HeapMeter meter;
    road.shrinkMs.push_back(MillisecondsOf([&] {
        texture.Load(std::make_unique<BorrowedPicture>(source, width, height), width / 2,
                     height / 2);
    }));
    road.shrinkPeak = meter.Peak();
}

void PrintPictures() {
    std::puts("# megapixels load_ms rescale_ms split_ms load_shrunk_ms peak_mib shrunk_peak_mib");
    // Powers of two, as a load shrinks to them: all are exactly halved.
    const int heights[] = {512, 1024, 2048, 4096, 8192};
    for (const int height : heights) {
        const int width = 2 * height;
        const PixelBytes source =
            NoiseBytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
        Road road;
        for (int i = 0; i < kRounds; ++i) {
            WalkRoad(source, width, height, road);
            WalkShrinkingRoad(source, width, height, road);
        }
        std::printf("%.3f %.3f %.3f %.3f %.3f %.2f %.2f\n", width * (height / 1e6),
                    Quantile(road.loadMs, 0.0), Quantile(road.rescaleMs, 0.0),
                    Quantile(road.splitMs, 0.0), Quantile(road.shrinkMs, 0.0),
                    static_cast<double>(road.peak) / kMiB,
                    static_cast<double>(road.shrinkPeak) / kMiB);
        std::fflush(stdout);
    }
}

void PrintCities() {
    std::puts("# cities find_ms");
    for (int count = 0; count <= 140000; count += 10000) {
        std::vector<CityRecord> cities = SpreadCities(count);
        PlaceCityMarkers({cities.data(), count}, 3.0);
        CityRecord* out[200];
        std::vector<double> times;
        for (int i = 0; i < 10 * kRounds; ++i) {
            const double angle = 0.1 * i;  // a pointer that moves along a circle of latitude
            std::int32_t near = 0;
            times.push_back(MillisecondsOf([&] {
                FindCitiesNear({cities.data(), count},
                               {2.0 * std::cos(angle), 2.236, 2.0 * std::sin(angle), 1.0}, 0.02,
                               out, 200, near);
            }));
        }
        std::printf("%d %.4f\n", count, Quantile(times, 0.0));
    }
}

}  // namespace

int main(int count, char** arguments) {
    const std::string what = count > 1 ? arguments[1] : "";
    if (what == "pictures") {
        PrintPictures();
    } else if (what == "cities") {
        PrintCities();
    } else {
        std::fputs("usage: growth_bench pictures | cities\n", stderr);
        return 2;
    }
    return 0;
}
