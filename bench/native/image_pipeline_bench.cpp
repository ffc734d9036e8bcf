// The image pipeline without its decoder. Baseline: plain copies of the same pixels.
#include <cstdlib>
#include <cstring>
#include <string>

#include "bench_picture.h"
#include "heap_meter.h"
#include "image/tile_grid.h"
#include "paired_benchmark.h"
#include "support/plain_shrink.h"

namespace {

struct Size {
    int width, height;
    std::size_t Bytes() const {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3;
    }
};

constexpr Size kLarge = {8192, 4096};
constexpr Size kHuge = {16384, 8192};
constexpr Size kOdd = {10800, 5400};  // shrinks to kLarge by 1.318
constexpr int kPlainRuns = 3;         // pairs with PlainShrink, which takes seconds

/// Time of memcpy between two blocks that are in memory already.
double CopyTouchedMs(const PixelBytes& source, PixelBytes& target) {
    return MillisecondsOf([&] { std::memcpy(target.data(), source.data(), source.size()); });
}

/// Time of memcpy into a newly allocated block.
double CopyIntoNewMs(const PixelBytes& source) {
    void* block = nullptr;
    const double ms = MillisecondsOf([&] {
        block = std::malloc(source.size());
        std::memcpy(block, source.data(), source.size());
        benchmark::DoNotOptimize(block);
        benchmark::ClobberMemory();
    });
    std::free(block);
    return ms;
}

void Rescale(benchmark::State& state, Size from, Size to) {
    const PixelBytes source = NoiseBytes(from.Bytes());
    PixelBytes copy(source.size());
    std::size_t extra = 0;
    RunPairs(
        state, [&] { return CopyTouchedMs(source, copy); },
        [&] {
            CGLTexture texture;
            LoadNoise(texture, source, from.width, from.height);
            const HeapMeter meter;
            const double ms = MillisecondsOf([&] { texture.Rescale(to.width, to.height); });
            extra = meter.Peak();
            return ms;
        });
    state.counters["extra_bytes"] = static_cast<double>(extra);
    state.counters["extra_bytes_per_column"] = static_cast<double>(extra) / from.width;
}

/// Compares Rescale with PlainShrink, the straightforward implementation, as the baseline.
void RescalePlain(benchmark::State& state, Size from, Size to) {
    const PixelBytes source = NoiseBytes(from.Bytes());
    RunPairs(
        state,
        [&] {
            PixelBytes block = source;
            return MillisecondsOf([&] {
                block = PlainShrink(std::move(block), from.width, from.height, to.width, to.height);
            });
        },
        [&] {
            CGLTexture texture;
            LoadNoise(texture, source, from.width, from.height);
            return MillisecondsOf([&] { texture.Rescale(to.width, to.height); });
        });
}

/// @param limit  largest sides of the texture; 0 for none
void Load(benchmark::State& state, Size size, Size limit) {
    const PixelBytes source = NoiseBytes(size.Bytes());
    std::size_t peak = 0;
    std::size_t result = 0;
    RunPairs(
        state, [&] { return CopyIntoNewMs(source); },
        [&] {
            CGLTexture texture;
            const HeapMeter meter;
            const double ms = MillisecondsOf([&] {
                texture.Load(std::make_unique<BorrowedPicture>(source, size.width, size.height),
                             limit.width, limit.height);
            });
            peak = meter.Peak();
            result = static_cast<std::size_t>(texture.GetWidth()) *
                     static_cast<std::size_t>(texture.GetHeight()) * 3;
            return ms;
        });
    state.counters["peak_to_result"] = static_cast<double>(peak) / static_cast<double>(result);
}

void Split(benchmark::State& state, Size size) {
    const PixelBytes source = NoiseBytes(size.Bytes());
    std::size_t peak = 0;
    RunPairs(
        state, [&] { return CopyIntoNewMs(source); },
        [&] {
            CGLTexture tiles[8];
            CGLTexture* grid[8];
            for (int i = 0; i < 8; ++i) grid[i] = &tiles[i];
            LoadNoise(tiles[0], source, size.width, size.height);
            const HeapMeter meter;
            const double ms = MillisecondsOf([&] { SplitIntoGrid(grid, 4, 2); });
            peak = meter.Peak() + size.Bytes();
            return ms;
        });
    state.counters["peak_to_picture"] =
        static_cast<double>(peak) / static_cast<double>(size.Bytes());
}

template <class Function, class... Arguments>
void Register(const std::string& name, int pairs, Function function, Arguments... arguments) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State& state) { function(state, arguments...); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(pairs);
}

}  // namespace

int main(int argc, char** argv) {
    Register("rescale_halved/8192", kBenchPairs, Rescale, kLarge, Size{4096, 2048});
    Register("rescale_halved/16384", kBenchPairs, Rescale, kHuge, kLarge);
    Register("rescale_ratio/10800", kBenchPairs, Rescale, kOdd, kLarge);
    Register("rescale_plain/10800", kPlainRuns, RescalePlain, kOdd, kLarge);
    Register("rescale_plain/8192", kPlainRuns, RescalePlain, kLarge, Size{4096, 2048});
    Register("load/8192", kBenchPairs, Load, kLarge, Size{});
    Register("load/16384", kBenchPairs, Load, kHuge, Size{});
    Register("load_shrink/8192", kBenchPairs, Load, kLarge, Size{4096, 2048});
    Register("load_shrink/16384", kBenchPairs, Load, kHuge, kLarge);
    Register("load_shrink/10800", kBenchPairs, Load, kOdd, kLarge);
    Register("split/8192", kBenchPairs, Split, kLarge);
    Register("split/16384", kBenchPairs, Split, kHuge);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
