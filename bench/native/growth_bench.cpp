// Measures how the times of the image pipeline and of the hit test grow.
// Usage: growth_bench pictures | cities
// Prints a line of figures for each size, for the plot. A time is that of the fastest round,
// because other programs can only slow a round down.
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

struct Figures {
    std::vector<double> loadMs, rescaleMs, splitMs, shrinkMs;
    std::size_t peak = 0;        ///< bytes; of a load and the rescale after it
    std::size_t shrinkPeak = 0;  ///< bytes; of a load that shrinks
};

void MeasurePipeline(const PixelBytes& source, int width, int height, Figures& figures) {
    CGLTexture tiles[8];
    CGLTexture* grid[8];
    for (int i = 0; i < 8; ++i) grid[i] = &tiles[i];
    const HeapMeter meter;
    figures.loadMs.push_back(MillisecondsOf([&] { LoadNoise(tiles[0], source, width, height); }));
    figures.rescaleMs.push_back(MillisecondsOf([&] { tiles[0].Rescale(width / 2, height / 2); }));
    figures.peak = meter.Peak();
    LoadNoise(tiles[0], source, width, height);
    figures.splitMs.push_back(MillisecondsOf([&] { SplitIntoGrid(grid, 4, 2); }));
}

void MeasureShrinkingLoad(const PixelBytes& source, int width, int height, Figures& figures) {
    CGLTexture texture;
    const HeapMeter meter;
    figures.shrinkMs.push_back(MillisecondsOf([&] {
        texture.Load(std::make_unique<BorrowedPicture>(source, width, height), width / 2,
                     height / 2);
    }));
    figures.shrinkPeak = meter.Peak();
}

void PrintPictures() {
    std::puts("# megapixels load_ms rescale_ms split_ms load_shrunk_ms peak_mib shrunk_peak_mib");
    // Powers of two, because a load shrinks to those: each picture is halved exactly.
    const int heights[] = {512, 1024, 2048, 4096, 8192};
    for (const int height : heights) {
        const int width = 2 * height;
        const PixelBytes source =
            NoiseBytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
        Figures figures;
        for (int i = 0; i < kRounds; ++i) {
            MeasurePipeline(source, width, height, figures);
            MeasureShrinkingLoad(source, width, height, figures);
        }
        std::printf("%.3f %.3f %.3f %.3f %.3f %.2f %.2f\n", width * (height / 1e6),
                    Quantile(figures.loadMs, 0.0), Quantile(figures.rescaleMs, 0.0),
                    Quantile(figures.splitMs, 0.0), Quantile(figures.shrinkMs, 0.0),
                    static_cast<double>(figures.peak) / kMiB,
                    static_cast<double>(figures.shrinkPeak) / kMiB);
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
