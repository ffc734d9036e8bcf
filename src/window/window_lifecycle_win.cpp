#include "window/window_lifecycle_win.h"

#include "render/current_context_win.h"
#include "window/flight_win.h"
#include "window/gl_resources_win.h"
#include "window/hover_win.h"
#include "window/install_self_test_win.h"
#include "window/loader_win.h"
#include "window/map_font.h"
#include "window/map_settings.h"
#include "window/sun_timer_win.h"
#include "window/tile_upload_win.h"
#include "window/view_control.h"

namespace {

constexpr int kFontWidth = -8;  // logical units

/// For releasing what lives in the map's context: where that cannot be made current none is, or the
/// same names would be deleted in the context of another program part.
void MakeCurrentOrNone(MapState& map, HDC dc) noexcept {
    if (!map.drawing.context.MakeCurrent(dc)) wglMakeCurrent(nullptr, nullptr);
}

/// The one context serves all windows in turn. What lives in the old one goes with it, while it is
/// still there; the tiles in memory stay and are attached again.
void LeaveOldContext(MapState& map) {
    const MapWindow* other = map.windows.Current();
    if (other == nullptr) return;
    MakeCurrentOrNone(map, other->dc.Get());
    ReleaseScene(map);
}

void SelectMapFont(MapWindow& entry) {
    // Deliberate: the 8 is passed as the width; the font has the default height and an average
    // character of 8 units.
    entry.font = CreateMapFont(L"MS Sans Serif", kFontWidth, 0, 0, 0);
    if (entry.font)
        entry.selectedFont = std::make_unique<SelectedObject>(entry.dc.Get(), entry.font.get());
}

void ReadSettings(MapState& map) {
    const std::int32_t factor =
        ReadMapSettings(map.host.settingsFile, map.settings, map.detail.perfFactor);
    map.textures.limits.texScalerX = map.settings.texScalerX;
    map.textures.limits.texScalerY = map.settings.texScalerY;
    ApplyPerfFactor(map.detail, map.textures.limits, factor);
}

/// The start view; the spin stays as it was.
void ResetView(MapState& map) noexcept {
    map.view.cameraDistance = kStartDistance;
    map.view.viewTilt = kStartTilt;
    ApplyView(map.view, map.drawing.scene);
}

void ShowTilesOrLoad(MapState& map, HWND window) {
    if (map.host.installTest) {
        if (map.textures.testMayLoad) RunInstallSelfTest(map);
        return;
    }
    if (!AttachPresentTiles(map)) StartLoad(window);
}

/// @return an OpenGL set-up code
std::uint32_t SetUpWindow(MapState& map, MapWindow& entry) {
    GetSystemTime(&map.drawing.sceneTime);
    SelectMapFont(entry);
    if (!map.drawing.handCursor) map.drawing.handCursor.reset(LoadCursorW(nullptr, IDC_HAND));
    const std::uint32_t status = CreateContext(map, entry);
    if (status != HORIVO_OK) return status;
    ReadSettings(map);
    ResetView(map);
    PopulateScene(map);
    ShowTilesOrLoad(map, entry.window);
    InitScene(map);
    // The distance is another now, and a window that never gets a size asks nobody to measure.
    MeasureScene(map);
    StartSunTimer(entry);
    return HORIVO_OK;
}

/// @return whether a load of the window had not ended
bool RemoveWindow(MapState& map, HWND window) noexcept {
    map.windows.Remove(window);
    return map.textures.loads.Forget(window);
}

/// Makes context and scene again on a window that lives on, after another one's creation failed.
void RebuildOn(MapState& map, MapWindow& entry) {
    if (CreateContext(map, entry) != HORIVO_OK) return;
    PopulateScene(map);
    const bool attached = AttachPresentTiles(map);
    InitScene(map);
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (ClientSize(entry.window, width, height)) ResizeScene(map, width, height);
    InvalidateRect(entry.window, nullptr, FALSE);
    if (!attached) StartLoad(entry.window);
}

/// Leaves nothing of the refused window behind and puts the others back in order.
void Refuse(MapState& map, HWND window) noexcept {
    try {
        ReleaseScene(map);
        map.drawing.context.Destroy();
        RemoveWindow(map, window);
        MapWindow* survivor = map.windows.Current();
        if (survivor != nullptr) {
            RebuildOn(map, *survivor);
        } else {
            map.drawing.handCursor.reset();
        }
    } catch (...) {
        // Out of memory while the other windows are put in order: they stay empty.
        return;
    }
}

void StopMotionOf(MapState& map, HWND window) noexcept {
    if (map.hover.timer.RunsFor(window)) CancelHover(map);
    if (map.flight.timer.RunsFor(window)) StopFlight(map);
    if (map.repeat.RunsFor(window)) map.repeat.Stop();
}

void DestroyOneOfMany(MapState& map, MapWindow& entry) noexcept {
    StopMotionOf(map, entry.window);
    if (wglGetCurrentContext() == map.drawing.context.GetHandle() &&
        wglGetCurrentDC() == entry.dc.Get()) {
        wglMakeCurrent(nullptr, nullptr);
    }
    // The messages of its load go nowhere now, and the load of another window may have given up
    // waiting behind it: a window that lives must see the tiles through.
    const bool unfinished = RemoveWindow(map, entry.window);
    if (unfinished && !map.textures.loads.IsAnyUnderWay()) StartLoad(map.windows.Current()->window);
}

void DestroyLast(MapState& map, MapWindow& entry) noexcept {
    const ForeignContextGuard guard(map.drawing.context);
    MakeCurrentOrNone(map, entry.dc.Get());
    StopMotionOf(map, entry.window);
    ReleaseScene(map);
    map.drawing.context.Destroy();
    map.drawing.handCursor.reset();
    RemoveWindow(map, entry.window);
}

}  // namespace

LRESULT OnCreate(HWND window, WPARAM, LPARAM) {
    MapState& map = Map();
    // The window is there already: a second lamp and planet would stay in the scene for good.
    if (map.windows.IsLive(window)) return 0;
    map.host.createStatus = HORIVO_OK;
    const ForeignContextGuard guard(map.drawing.context);
    try {
        LeaveOldContext(map);
        map.host.createStatus = SetUpWindow(map, map.windows.Add(window));
        if (map.host.createStatus == HORIVO_OK) return 0;
    } catch (...) {
        // Out of memory: refused like a window without OpenGL.
        map.host.createError = ERROR_NOT_ENOUGH_MEMORY;
    }
    Refuse(map, window);
    return kRefuseCreation;
}

LRESULT OnDestroy(HWND window, WPARAM, LPARAM) {
    MapState& map = Map();
    MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return 0;  // refused at its creation, which left nothing to do
    entry->sunTimer.Stop();
    // The pointer cannot leave this window any more.
    if (map.pointer.overWindow == window) map.pointer.geoPoint.valid = false;
    if (map.windows.Count() > 1) {
        DestroyOneOfMany(map, *entry);
    } else {
        DestroyLast(map, *entry);
    }
    return 0;
}

LRESULT OnSize(HWND window, WPARAM wParam, LPARAM lParam) {
    MapState& map = Map();
    const MapWindow* entry = map.windows.Find(window);
    CancelHover(map);
    const std::int32_t width = LOWORD(lParam);
    const std::int32_t height = HIWORD(lParam);
    // A minimised or squeezed window keeps its last size.
    if (entry != nullptr && width >= 1 && height >= 1) {
        const CurrentContextScope current(map.drawing.context, entry->dc.Get());
        if (current.IsCurrent()) {
            ResizeScene(map, width, height);
        } else {
            ResizeSceneWithoutContext(map, width, height);
        }
    }
    return DefWindowProcW(window, WM_SIZE, wParam, lParam);
}
