#include "window/frame_win.h"

#include "base/gl.h"
#include "globe/city_labels.h"
#include "render/current_context_win.h"
#include "window/level_of_detail.h"
#include "window/loader_win.h"
#include "window/overlay_win.h"
#include "window/status_lines.h"
#include "window/tile_upload_win.h"
#include "window/timers_win.h"

namespace {

constexpr double kLampHeight = 1.2;  // globe radii: the lamp hovers over the pointed place

void PlaceLamp(MapState& map) noexcept {
    if (map.drawing.lamp == nullptr) return;
    const CVector4& point = map.pointer.geoPoint.globePoint;
    double(&position)[4] = map.drawing.lamp->lightPosition;
    position[0] = kLampHeight * point.x;
    position[1] = kLampHeight * point.y;
    position[2] = kLampHeight * point.z;
    position[3] = 1.0;
}

/// From here on coordinates are window pixels, y upward.
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

void DrawStatus(const MapState& map) {
    const CPlanet* planet = map.drawing.planet;
    const bool textured = planet != nullptr && planet->HasTexture();
    const StatusLines lines{
        .geoPoint = map.pointer.geoPoint,
        .detail = map.detail,
        .showInfo = map.view.showInfo,
        .showFps = map.view.showFps,
        .textured = textured,
        .tileWidth = textured ? planet->tileWidth : 0,
        .tileHeight = textured ? planet->tileHeight : 0,
        .maxTextureSize = map.textures.limits.maxTextureSize,
        .renderer = map.drawing.context.GetRenderer(),
        .version = map.drawing.context.GetVersion(),
        .vendor = map.drawing.context.GetVendor(),
        .loading = map.textures.picture.IsLoading(),
        .splitting = map.textures.picture.IsSplitting(),
    };
    DrawStatusLines(lines, map.drawing.font);
}

void DrawLabels(MapState& map, std::int32_t count) {
    RenderCityLabels(map.overlay.nearCities.data(), count, map.pointer.geoPoint, map.drawing.scene,
                     map.drawing.font, map.drawing.globe.limbDepth, map.overlay.clock);
}

void DrawFrame(MapState& map, HDC dc, std::int32_t width, std::int32_t height) {
    map.drawing.scene.Resize(width, height);
    std::int32_t citiesNear = 0;
    FindCitiesNear(map.host.cities, map.pointer.geoPoint.globePoint, kCityReach,
                   map.overlay.nearCities.data(), kMaxCitiesNear, citiesNear);
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    PlaceLamp(map);
    map.drawing.scene.Draw();
    BeginFlatPass(width, height);
    DrawLabels(map, citiesNear);
    DrawStatus(map);
    DrawOverlay(map, width, height);
    EndFlatPass();
    SwapBuffers(dc);
}

/// Measures the frame and takes it into the tuning. @return whether the window wants another frame
bool TimeFrame(MapState& map, HWND window) {
    const DWORD now = GetTickCount();
    // Deliberate: what counts is the time that painting took, not the time since the last frame.
    const DWORD elapsed = now - map.view.lastPaintTick;
    map.detail.fpsShown = FramesPerSecond(elapsed);
    const TuneOutcome outcome = TuneStep(map.detail, map.textures.picture.IsBusy(), elapsed);
    if (outcome == TuneOutcome::Coarser) LoadAtDetail(map, window, map.detail.perfFactor);
    map.view.lastPaintTick = now;
    return outcome == TuneOutcome::AnotherFrame;
}

/// Takes the size of a frame that was shown. @return whether the window has to be painted again
bool NoteShownSize(MapWindow& entry, std::int32_t width, std::int32_t height) noexcept {
    const bool first = entry.shownWidth == 0;
    const bool same = entry.shownWidth == width && entry.shownHeight == height;
    entry.shownWidth = width;
    entry.shownHeight = height;
    // Mesa: the first frame after a change of size still lands in a buffer of the old size, cut off
    // or with a black margin; nobody would draw the next one.
    return !first && !same;
}

/// Uploads what came while the context could not be made current.
void UploadWaitingTextures(MapState& map) {
    AttachWaitingTiles(map);
    map.overlay.panel.UploadPhotos();
}

}  // namespace

void PaintFrame(HWND window) {
    MapState& map = Map();
    map.view.lastPaintTick = GetTickCount();
    bool more = false;
    {
        const PaintScope paint(window);
        std::int32_t width = 0;
        std::int32_t height = 0;
        MapWindow* entry = map.windows.Find(window);
        if (entry == nullptr || !ClientSize(window, width, height)) return;
        const ForeignContextGuard guard(map.drawing.context);
        if (!map.drawing.context.MakeCurrent(paint.Dc())) return;
        UploadWaitingTextures(map);
        DrawFrame(map, paint.Dc(), width, height);
        more = NoteShownSize(*entry, width, height);
        more = TimeFrame(map, window) || more;
    }
    if (!map.view.showFps && !more) return;
    InvalidateRect(window, nullptr, FALSE);
    PostDueTimers(map, window);
}
