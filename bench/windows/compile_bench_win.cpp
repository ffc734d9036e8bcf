// Recording the globe's display lists, all of them or only what a look at the clock records anew
// (body and cities), against the recorded OpenGL calls of the same.
#include <cmath>
#include <cstdlib>
#include <functional>
#include <vector>

#include "bench_window_win.h"
#include "cities/city_markers.h"
#include "common/result_line.h"
#include "common/spread_cities.h"
#include "gl_tape_win.h"
#include "globe/planet.h"
#include "image/jpeg_texture.h"
#include "image/picture.h"
#include "render/gl_context_win.h"
#include "window/level_of_detail.h"

namespace {

constexpr int kCities = 417;
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
        ApplyPerfFactor(detail_, limits_, factor);
        const std::string name = std::to_string(factor);
        const auto all = [&] { CompileWithShells(); };
        const auto look = [&] { planet_.Compile(); };
        GlTape allCalls;
        Record(allCalls, all);
        GlTape lookCalls;
        Record(lookCalls, look);
        Compare("compile/" + name, allCalls, all);
        Compare("look/" + name, lookCalls, look);
        Compare("look_to_all/" + name, allCalls, look);
        PrintValue("compile/" + name + "/commands", "calls", static_cast<double>(allCalls.Size()));
        PrintValue("look/" + name + "/commands", "calls", static_cast<double>(lookCalls.Size()));
    }

private:
    PlanetInputs Inputs() const {
        return {detail_.mesh, extensions_, texCompression_, sceneTime_, cities_};
    }

    /// Each time another radius, by less than a pixel: no shell's list can stay.
    void CompileWithShells() {
        planet_.radius = planet_.radius == kRadius ? std::nextafter(kRadius, 0.0F) : kRadius;
        planet_.Compile();
    }

    static void Record(GlTape& calls, const std::function<void()>& function) {
        calls.Record({GetModuleHandleW(nullptr), GetModuleHandleW(L"glu32.dll")}, function);
    }
    template <class Function>
    static void Compare(const std::string& name, const GlTape& calls, Function&& function) {
        PrintPairs(name, MeasurePairs([&] { return MillisecondsOf([&] { calls.Play(); }); },
                                      [&] { return MillisecondsOf(function); }));
    }

    BenchWindow window_;
    ExtensionFlags extensions_;
    std::uint32_t lastSysError_ = 0;
    CGLContext context_;
    std::int32_t texCompression_ = 0;
    SYSTEMTIME sceneTime_ = {};
    DetailState detail_;
    TextureLimits limits_;
    std::vector<CityRecord> cityRecords_;
    CityTable cities_;
    CPlanet planet_;
};

}  // namespace

int wmain() {
    CompileBench bench;
    for (const int factor : {100, 200, 400, 800}) bench.Run(factor);
    return 0;
}
