// Makes a first picture with the necessary steps only: bare_map MAP [WIDTH HEIGHT]. It is the
// baseline of first_picture: one window and one thread, no messages, no settings, no overlay.
#include <cstdlib>
#include <memory>

#include "base/gl.h"
#include "bench_window_win.h"
#include "globe/planet.h"
#include "image/gdiplus_session_win.h"
#include "image/jpeg_texture.h"
#include "image/picture.h"
#include "image/tile_grid.h"
#include "render/gl_context_win.h"
#include "render/gl_font.h"
#include "render/scene.h"
#include "shown_line_win.h"
#include "window/map_font.h"

namespace {

constexpr float kRadius = 3.0F;            // scene units
constexpr float kCameraDistance = -12.2F;  // scene units; the view of a new map window
constexpr double kTiltDeg = 40.0;
constexpr int kFontWidth = -8;

void ShowMap(const BenchWindow& window, const std::wstring& path, int width, int height) {
    ExtensionFlags extensions;
    std::uint32_t lastSysError = 0;
    CGLContext context(extensions, lastSysError);
    context.Create(window.Dc());
    const UniqueFont fontHandle = CreateMapFont(L"MS Sans Serif", kFontWidth, 0, 0, 0);
    SelectObject(window.Dc(), fontHandle.get());
    CGLFont font;
    font.Build(window.Dc(), false);

    CGLTexture textures[kTileCount];
    CGLTexture* tiles[kTileCount];
    for (int i = 0; i < kTileCount; ++i) tiles[i] = &textures[i];
    textures[0].LoadFromFile(path, 0, 0);
    SplitIntoGrid(tiles, kTileColumns, kTileRows);

    CScene scene;
    scene.Init();
    scene.position.z = kCameraDistance;
    scene.rotation.x = kTiltDeg;
    scene.Resize(width, height);
    const MeshDetail detail;
    const std::int32_t noCompression = 0;
    SYSTEMTIME now;
    GetSystemTime(&now);
    const CityTable noCities;
    const PlanetInputs inputs{detail, extensions, noCompression, now, noCities};
    CPlanet* const planet = scene.AddChild(std::make_unique<CPlanet>(inputs));
    planet->radius = kRadius;
    planet->SetTexture(tiles);
    scene.Compile();
    scene.Draw();
    glFlush();
    SwapBuffers(window.Dc());
    PrintShown();
    std::_Exit(0);  // work after the first picture is not measured
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count < 2) return 2;
    const int width = count > 3 ? _wtoi(arguments[2]) : 1920;
    const int height = count > 3 ? _wtoi(arguments[3]) : 1080;
    const GdiplusSession gdiplus;
    const BenchWindow window(width, height);
    ShowMap(window, arguments[1], width, height);
    return 0;
}
