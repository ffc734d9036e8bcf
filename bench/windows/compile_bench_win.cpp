// Compiles the globe's two display lists. Baseline: the same OpenGL commands with all arguments
// precomputed.
#include <cstdlib>
#include <vector>

#include "bench_window_win.h"
#include "cities/city_markers.h"
#include "common/result_line.h"
#include "common/spread_cities.h"
#include "gl_recording_win.h"
#include "globe/planet.h"
#include "image/jpeg_texture.h"
#include "image/picture.h"
#include "render/gl_context_win.h"
#include "window/level_of_detail.h"

namespace {

constexpr int kCities = 417;
constexpr float kRadius = 3.0F;

/// A planet with textures, in its own window.
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
        Compare("compile/" + name, [&] { planet_.Compile(); });
        Compare("compile_without_shells/" + name, [&] { CompileWithoutShells(); });
    }

private:
    PlanetInputs Inputs() const {
        return {detail_.Mesh(), extensions_, texCompression_, sceneTime_, cities_};
    }

    void CompileWithoutShells() {
        glNewList(kBody, GL_COMPILE);
        planet_.PlaceSunLight();
        planet_.BuildMesh();
        glEndList();
        glNewList(kBody + 1, GL_COMPILE);
        planet_.RenderCities();
        glEndList();
    }

    template <class Operation>
    void Compare(const std::string& name, Operation&& operation) {
        GlRecording recording;
        recording.Record({GetModuleHandleW(nullptr), GetModuleHandleW(L"glu32.dll")}, operation);
        PrintPairs(name, MeasurePairs([&] { return MillisecondsOf([&] { recording.Play(); }); },
                                      [&] { return MillisecondsOf(operation); }));
        PrintValue(name + "/commands", "calls", static_cast<double>(recording.Size()));
    }

    static constexpr GLuint kBody = 1000;  // a list name that the library does not use

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

int wmain() {
    CompileBench bench;
    for (const int factor : {100, 200, 400, 800}) bench.Run(factor);
    return 0;
}
