// Measures how long the globe's display lists take to record. The baseline is a replay of the same
// OpenGL calls. A look at the clock is what the map does at each tick of its day/night timer: it
// records only the lists of the body and of the cities anew. The benchmark measures looks, and the
// recording of all lists:
//   compile_bench [DETAIL...]           times
//   compile_bench growth DETAIL COUNT   memory that COUNT looks add to the process
//   compile_bench bare DETAIL COUNT     memory that COUNT replays of one look add
#include <cmath>
#include <cstdlib>
#include <functional>
#include <string_view>
#include <vector>

#include "bench_window_win.h"
#include "cities/city_markers.h"
#include "common/result_line.h"
#include "common/spread_cities.h"
#include "gl_recording_win.h"
#include "globe/planet.h"
#include "image/jpeg_texture.h"
#include "image/picture.h"
#include "peak_memory_win.h"
#include "render/gl_context_win.h"
#include "window/level_of_detail.h"

namespace {

constexpr int kCities = 417;
// Looks before the measurement, which must not count the first growth of the heap.
constexpr int kWarmUp = 500;
constexpr float kRadius = 3.0F;

/// A planet with textures in a window of its own.
class CompileBench {
public:
    CompileBench() : window_(64, 48), context_(extensions_, lastSysError_), planet_(Inputs()) {
        context_.Create(window_.Dc());
        GetSystemTime(&sceneTime_);
        cityRecords_ = SpreadCities(kCities);
        cities_ = {cityRecords_.data(), kCities};
        planet_.radius = kRadius;
        PlaceCityMarkers(cities_, kRadius);
        CGLTexture textures[kTileCount];
        const CGLTexture* tiles[kTileCount];
        for (int i = 0; i < kTileCount; ++i) {
            textures[i].Allocate({16, 16, 16, 16}, 3);
            tiles[i] = &textures[i];
        }
        planet_.SetTexture(tiles);
    }

    void Run(int factor) {
        detail_.Apply(factor, limits_);
        const std::string name = std::to_string(factor);
        const auto all = [&] { CompileWithShells(); };
        const auto look = [&] { planet_.Compile(); };
        GlRecording allCalls;
        Record(allCalls, all);
        GlRecording lookCalls;
        Record(lookCalls, look);
        Compare("compile/" + name, allCalls, all);
        Compare("look/" + name, lookCalls, look);
        Compare("look_to_all/" + name, allCalls, look);
        PrintValue("compile/" + name + "/commands", "calls", static_cast<double>(allCalls.Size()));
        PrintValue("look/" + name + "/commands", "calls", static_cast<double>(lookCalls.Size()));
    }

    /// Prints what `count` looks, or replays of one, add to the memory of the process.
    void Grow(int factor, int count, bool replay) {
        detail_.Apply(factor, limits_);
        planet_.Compile();
        GlRecording calls;
        Record(calls, [&] { planet_.Compile(); });
        const auto repeat = [&](int times) {
            for (int i = 0; i < times; ++i) replay ? calls.Play() : planet_.Compile();
        };
        repeat(kWarmUp);
        const double before = HeldMiB();
        repeat(count);
        PrintValue("growth", "MiB", HeldMiB() - before);
    }

private:
    PlanetInputs Inputs() const {
        return {detail_.Mesh(), extensions_, texCompression_, sceneTime_, cities_};
    }

    /// Records all lists. Changes the radius by less than a pixel each time, because the planet
    /// keeps the lists of its atmosphere shells while their radius and resolution stay the same.
    void CompileWithShells() {
        planet_.radius = planet_.radius == kRadius ? std::nextafter(kRadius, 0.0F) : kRadius;
        planet_.Compile();
    }

    static void Record(GlRecording& calls, const std::function<void()>& function) {
        calls.Record({GetModuleHandleW(nullptr), GetModuleHandleW(L"glu32.dll")}, function);
    }
    template <class Function>
    static void Compare(const std::string& name, const GlRecording& calls, Function&& function) {
        PrintPairs(name, MeasurePairs([&] { return MillisecondsOf([&] { calls.Play(); }); },
                                      [&] { return MillisecondsOf(function); }));
    }

    BenchWindow window_;
    ExtensionFlags extensions_;
    std::uint32_t lastSysError_ = 0;
    CGLContext context_;
    std::int32_t texCompression_ = 0;
    SYSTEMTIME sceneTime_ = {};
    LevelOfDetail detail_;
    TextureLimits limits_;
    std::vector<CityRecord> cityRecords_;
    CityTable cities_;
    CPlanet planet_;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
    std::vector<int> factors;
    for (int i = 1; i < count; ++i) factors.push_back(_wtoi(arguments[i]));
    if (factors.empty()) factors = {100, 200, 400, 800};
    CompileBench bench;
    const std::wstring_view mode = count == 4 ? arguments[1] : L"";
    if (mode == L"growth" || mode == L"bare") {
        bench.Grow(_wtoi(arguments[2]), _wtoi(arguments[3]), mode == L"bare");
        return 0;
    }
    for (const int factor : factors) bench.Run(factor);
    return 0;
}
