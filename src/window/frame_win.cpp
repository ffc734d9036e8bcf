#include "window/frame_win.h"

#include <array>

#include "base/gl.h"
#include "cities/city_pick.h"
#include "globe/city_labels.h"
#include "render/current_context_win.h"
#include "window/attach_tiles_win.h"
#include "window/load_results_win.h"
#include "window/status_lines.h"
#include "window/timers_win.h"

namespace {

/// Sets the flat projection: after this call, coordinates are window pixels, and y goes upward.
void BeginFlatPass(std::int32_t width, std::int32_t height) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    // NOLINTNEXTLINE(readability-suspicious-call-argument): right is the width, top the height.
    gluOrtho2D(0.0, width, 0.0, height);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_LIGHTING);
    glDisable(GL_DEPTH_TEST);
}

void EndFlatPass() {
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
    glFlush();
}

/// Draws the status lines. Needs MapState because the lines show values of the pointer, the level
/// of detail, the view, OpenGL and the picture.
void DrawStatus(const MapState& map) {
    const CPlanet* planet = map.gl.Planet();
    const bool textured = planet != nullptr && planet->HasTexture();
    const CGLContext& context = map.gl.Context();
    const StatusLines lines{
        .geoPoint = map.pointer.GeoPoint(),
        .detail = map.detail,
        .showInfo = map.view.ShowsInformation(),
        .showFps = map.view.ShowsFrameRate(),
        .textured = textured,
        .tileWidth = textured ? planet->tileWidth : 0,
        .tileHeight = textured ? planet->tileHeight : 0,
        .maxTextureSize = map.textures.limits.maxTextureSize,
        .renderer = context.GetRenderer(),
        .version = context.GetVersion(),
        .vendor = context.GetVendor(),
        .loading = map.textures.picture.IsLoading(),
        .splitting = map.textures.picture.IsSplitting(),
    };
    DrawStatusLines(lines, map.gl.Font());
}

/// Draws one frame and shows it. Needs MapState because the frame shows nearly all parts of
/// MapState.
void DrawFrame(MapState& map, HDC dc, std::int32_t width, std::int32_t height) {
    const CGeoPoint& pointed = map.pointer.GeoPoint();
    map.gl.Scene().Resize(width, height);
    std::array<CityRecord*, kMaxCitiesNear> cities = {};
    std::int32_t count = 0;
    FindCitiesNear(map.host.Cities(), pointed.globePoint, kCityReach, cities.data(), kMaxCitiesNear,
                   count);
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    map.gl.PlaceLampOver(pointed.globePoint);
    map.gl.Scene().Draw();
    BeginFlatPass(width, height);
    RenderCityLabels(cities.data(), count, pointed, map.gl.Scene(), map.gl.Font(),
                     map.gl.Globe().limbDepth, map.cityClock);
    DrawStatus(map);
    map.overlay.Draw(pointed, width, height);
    EndFlatPass();
    SwapBuffers(dc);
}

/// Uploads the tiles and photos that were ready while the context could not be made current. Needs
/// MapState because it uses the picture, OpenGL, the level of detail, the windows and the overlay.
void UploadWaitingTextures(MapState& map) {
    if (AttachWaitingTiles(map.textures, map.gl)) {
        OnTilesAttached(map.gl, map.detail);
        map.windows.InvalidateAll();
    }
    map.overlay.UploadWaitingPhotos();
}

/// Adds the duration of a frame to the measurement. Loads the picture at a coarser detail when the
/// frames are too slow. Needs MapState because LoadAtDetail needs it.
/// @return whether the measurement needs another frame
bool TimeFrame(MapState& map, HWND window, DWORD elapsedMs) {
    const TuneOutcome outcome = map.detail.AddFrame(map.textures.picture.IsBusy(), elapsedMs);
    if (outcome == TuneOutcome::Coarser) LoadAtDetail(map, window, map.detail.Factor());
    return outcome == TuneOutcome::AnotherFrame;
}

}  // namespace

LRESULT OnPaint(HWND window, WPARAM, LPARAM) {
    MapState& map = Map();
    const DWORD start = GetTickCount();
    bool more = false;
    {
        const PaintScope paint(window);
        std::int32_t width = 0;
        std::int32_t height = 0;
        MapWindow* entry = map.windows.Find(window);
        if (entry == nullptr || !ClientSize(window, width, height)) return 0;
        const ForeignContextGuard guard(map.gl.Context());
        if (!map.gl.Context().MakeCurrent(paint.Dc())) return 0;
        UploadWaitingTextures(map);
        DrawFrame(map, paint.Dc(), width, height);
        // Mesa: the first frame after a change of size is drawn into a buffer of the old size, so
        // this frame is cut off or has a black margin. Without another frame, the wrong frame would
        // stay on the screen.
        more = entry->NoteShownSize(width, height);
        // Deliberate: TimeFrame gets the duration of the painting, not the time since the last
        // frame. So the frame rate in the status lines ignores the time between frames.
        more = TimeFrame(map, window, GetTickCount() - start) || more;
    }
    if (!map.view.ShowsFrameRate() && !more) return 0;
    InvalidateRect(window, nullptr, FALSE);
    PostDueTimers(map, window);
    return 0;
}
