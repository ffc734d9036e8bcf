#include "window/window_lifecycle_win.h"

#include "cities/city_markers.h"
#include "render/current_context_win.h"
#include "window/attach_tiles_win.h"
#include "window/map_font.h"
#include "window/map_state_win.h"
#include "window/sun_timer_win.h"
#include "window/view_change_win.h"

namespace {

constexpr int kFontWidth = -8;  // logical units; negative: CreateMapFont does not convert it

/// Deletes the scene, the overlay and the font, in this order. The context should be current (see
/// GlResources::ReleaseScene).
void ReleaseContents(GlResources& gl, Overlay& overlay) noexcept {
    gl.ReleaseScene();
    overlay.Release();
    gl.ReleaseFont();
}

/// Releases everything in the context, because the context will be created again for a new window.
/// The tiles stay in memory and are uploaded again.
void LeaveOldContext(LiveWindows& windows, GlResources& gl, Overlay& overlay) {
    const MapWindow* other = windows.Current();
    if (other == nullptr) return;
    gl.MakeCurrentOrNone(other->dc.Get());
    ReleaseContents(gl, overlay);
}

UniqueFont CreateWindowFont() noexcept {
    // Deliberate: 8 is passed as the width and not as the height. The font has the default height
    // and an average character width of 8 units.
    return CreateMapFont(L"MS Sans Serif", kFontWidth, 0, 0, 0);
}

/// Reads "horivo.ini". Needs MapState because it uses the folders, the settings, the level of
/// detail and the picture.
void ReadSettings(MapState& map) {
    const std::int32_t factor =
        ReadMapSettings(map.host.Folders().settingsFile, map.settings, map.detail.Factor());
    map.textures.SetScalers(map.settings);
    map.detail.Apply(factor, map.textures.limits);
}

/// Sets the distance and the tilt of the start view, and keeps the spin.
void ResetView(MapState& map, HWND window) noexcept {
    map.view.MoveTo(kStartDistance);
    map.view.TurnTo({kStartTilt, map.view.Angles().spin});
    ApplyViewChange(map, window, {});
}

/// Adds the lamp and the planet to the scene. Needs MapState because it uses OpenGL, the level of
/// detail, the settings and the cities.
void Populate(MapState& map) {
    map.gl.Populate(map.detail.Mesh(), map.settings.texCompression, map.host.Cities());
}

/// Sets the GL state that stays the same for all frames, makes the overlay and places the markers
/// of the cities. Call this function after Populate.
void InitScene(GlResources& gl, Overlay& overlay, const CityTable& cities) {
    gl.InitScene();
    overlay.Create();
    PlaceCityMarkers(cities, kPlanetRadius);
}

/// Shows the map picture on the globe of a new window. During InstallMap, runs the self-test of the
/// picture. Otherwise uploads the tiles in memory, or starts a load when there are no usable tiles.
/// Needs MapState because it uses the install test, the picture, OpenGL, the folders and the
/// loader.
void ShowTilesOrLoad(MapState& map, HWND window) {
    if (map.installTest.IsRunning()) {
        if (map.installTest.MayLoad())
            RunInstallSelfTest(map.textures, map.gl, map.host.Folders().data);
        return;
    }
    if (!AttachPresentTiles(map.textures, map.gl)) map.loader.StartLoad(window);
}

/// Makes the context, the scene and the timer for a new window. Needs MapState because it sets up
/// nearly all parts of MapState. @return HORIVO_OK or an OpenGL set-up code
std::uint32_t SetUpWindow(MapState& map, MapWindow& entry) {
    map.gl.ReadTime();
    entry.UseFont(CreateWindowFont());
    map.gl.LoadHandCursor();
    const std::uint32_t status = map.gl.CreateContext(entry, map.textures);
    if (status != HORIVO_OK) return status;
    ReadSettings(map);
    ResetView(map, entry.window);
    Populate(map);
    ShowTilesOrLoad(map, entry.window);
    InitScene(map.gl, map.overlay, map.host.Cities());
    // Measure here, because the camera distance was just reset and a window that is created at its
    // final size gets no WM_SIZE.
    map.gl.Measure();
    StartSunTimer(entry);
    return HORIVO_OK;
}

/// Removes the window from the live windows and from the loads.
/// @return whether a load of the window has not ended yet
bool RemoveWindow(LiveWindows& windows, LoadTracker& loads, HWND window) noexcept {
    windows.Remove(window);
    return loads.Forget(window);
}

/// Makes the context and the scene again for a live window, after the creation of another window
/// has failed. Needs MapState for the same reason as SetUpWindow.
void RebuildOn(MapState& map, MapWindow& entry) {
    if (map.gl.CreateContext(entry, map.textures) != HORIVO_OK) return;
    Populate(map);
    const bool attached = AttachPresentTiles(map.textures, map.gl);
    InitScene(map.gl, map.overlay, map.host.Cities());
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (ClientSize(entry.window, width, height)) map.gl.Resize(width, height);
    InvalidateRect(entry.window, nullptr, FALSE);
    if (!attached) map.loader.StartLoad(entry.window);
}

/// Releases everything that was made for a refused window. Makes the context and the scene again
/// for another live window, if there is one. Needs MapState for the same reason as SetUpWindow.
void Refuse(MapState& map, HWND window) noexcept {
    try {
        ReleaseContents(map.gl, map.overlay);
        map.gl.DestroyContext();
        RemoveWindow(map.windows, map.textures.loads, window);
        MapWindow* survivor = map.windows.Current();
        if (survivor != nullptr) {
            RebuildOn(map, *survivor);
        } else {
            map.gl.ReleaseHandCursor();
        }
    } catch (...) {
        // Out of memory during RebuildOn: the other windows stay empty.
        return;
    }
}

void StopMotionOf(HWND window, Hover& hover, Flight& flight, ButtonRepeat& repeat) noexcept {
    hover.CancelFor(window);
    flight.StopFor(window);
    repeat.StopFor(window);
}

/// Starts a load for another live window, unless a load is under way. Call this function when a
/// window was destroyed before its load had ended: the messages of that load are lost, and a load
/// of another window may have timed out while it waited for that load.
void RestartLoadForAnotherWindow(MapState& map) noexcept {
    if (!map.textures.loads.IsAnyUnderWay()) map.loader.StartLoad(map.windows.Current()->window);
}

/// Releases a window while there are other live windows. Needs MapState because it uses OpenGL, the
/// windows, the picture and the loader.
void DestroyOneOfMany(MapState& map, MapWindow& entry) noexcept {
    if (wglGetCurrentContext() == map.gl.Context().GetHandle() &&
        wglGetCurrentDC() == entry.dc.Get()) {
        wglMakeCurrent(nullptr, nullptr);
    }
    const bool unfinished = RemoveWindow(map.windows, map.textures.loads, entry.window);
    if (unfinished) RestartLoadForAnotherWindow(map);
}

/// Releases the last window, the context and the scene. Needs MapState because it uses OpenGL, the
/// overlay, the windows and the picture.
void DestroyLast(MapState& map, MapWindow& entry) noexcept {
    const ForeignContextGuard guard(map.gl.Context());
    map.gl.MakeCurrentOrNone(entry.dc.Get());
    ReleaseContents(map.gl, map.overlay);
    map.gl.DestroyContext();
    map.gl.ReleaseHandCursor();
    RemoveWindow(map.windows, map.textures.loads, entry.window);
}

}  // namespace

LRESULT OnCreate(HWND window, WPARAM, LPARAM) {
    MapState& map = Map();
    // Ignore a WM_CREATE that another program has sent to a live window: a second creation would
    // add another lamp and planet, which would never be removed from the scene.
    if (map.windows.IsLive(window)) return 0;
    map.results.EndCreation(HORIVO_OK);
    const ForeignContextGuard guard(map.gl.Context());
    try {
        LeaveOldContext(map.windows, map.gl, map.overlay);
        map.results.EndCreation(SetUpWindow(map, map.windows.Add(window)));
        if (map.results.CreateStatus() == HORIVO_OK) return 0;
    } catch (...) {
        // Out of memory: the window is refused, like a window without OpenGL.
        map.results.RefuseCreation(ERROR_NOT_ENOUGH_MEMORY);
    }
    Refuse(map, window);
    return kRefuseCreation;
}

LRESULT OnDestroy(HWND window, WPARAM, LPARAM) {
    MapState& map = Map();
    MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return 0;  // refused at its creation: nothing to release
    entry->sunTimer.Stop();
    map.pointer.LeaveDestroyed(window);
    StopMotionOf(window, map.hover, map.flight, map.repeat);
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
    map.hover.Cancel();
    const std::int32_t width = LOWORD(lParam);
    const std::int32_t height = HIWORD(lParam);
    // Keep the last size when the window is minimised or has no client area.
    if (entry != nullptr && width >= 1 && height >= 1) {
        const CurrentContextScope current(map.gl.Context(), entry->dc.Get());
        if (current.IsCurrent()) {
            map.gl.Resize(width, height);
        } else {
            map.gl.ResizeWithoutContext(width, height);
        }
    }
    return DefWindowProcW(window, WM_SIZE, wParam, lParam);
}
