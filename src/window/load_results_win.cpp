#include "window/load_results_win.h"

#include "render/current_context_win.h"
#include "window/attach_tiles_win.h"

namespace {

constexpr DWORD kWindowWaitMs = 1000;  // ms that the window thread waits for the picture's lock
constexpr int kErrorTextSize = 128;    // characters with terminator

/// Shows a message box with the text that the picture cannot be loaded. Does nothing while such a
/// box is on the screen.
/// @param boxShown  in and out: whether a box is on the screen
void ShowErrorBox(bool& boxShown, HWND window) {
    if (boxShown) return;
    wchar_t text[kErrorTextSize];
    wsprintfW(text, L"Can not load textures.\n Check for the \"%s\" presence or make it smaller.",
              L"map.jpg");
    boxShown = true;
    MessageBoxW(GetParent(window), text, L"Error", MB_ICONERROR);
    boxShown = false;
}

/// Ends a load that has failed. Frees the tiles if this load is the newest load and no other load
/// has filled the picture since its start.
void EndFailedLoad(SharedPicture& shared, HWND window) {
    const MutexHold hold = shared.Lock(kWindowWaitMs);
    if (!hold) return;  // another worker is using the picture
    const LoadNumber failed = shared.loads.Find(window, LoadState::Failed);
    if (shared.loads.MustClearTextures(failed, shared.picture.Stage()))
        shared.picture.ClearTiles(false);
    shared.loads.Report(failed, LoadState::Ended);
}

void OnFailure(MapState& map, HWND window) {
    EndFailedLoad(map.textures, window);
    map.windows.InvalidateAll();  // each window may show "Loading texture..."
    ShowErrorBox(map.errorBoxShown, window);
}

/// Attaches the tiles to the planet. If the context cannot be made current, a later frame attaches
/// the tiles. Needs MapState because it uses the picture, OpenGL, the level of detail, the windows
/// and the loader.
void OnTilesReady(MapState& map, const MapWindow& entry) {
    SharedPicture& shared = map.textures;
    shared.loads.Report(shared.loads.Find(entry.window, LoadState::Split), LoadState::Ended);
    if (map.gl.Planet() == nullptr) return;
    const CurrentContextScope current(map.gl.Context(), entry.dc.Get());
    {
        // Deliberate: when the lock does not become free in time, the message is dropped, and the
        // tiles are not attached until the next load.
        const MutexHold hold = shared.Lock(kWindowWaitMs);
        if (!hold || !shared.picture.HasAllTiles()) {
            // Another load is using the picture now. The window of that load attaches the tiles
            // when it gets the message that the load has ended. If that window was destroyed, no
            // window gets the message, so start a new load.
            if (shared.loads.IsNewestForgotten()) map.loader.StartLoad(entry.window);
            return;
        }
        shared.SetTilesWait(!current.IsCurrent());
        if (current.IsCurrent()) AttachTiles(shared, map.gl);
    }
    if (current.IsCurrent()) OnTilesAttached(map.gl, map.detail);
    map.windows.InvalidateAll();
}

}  // namespace

void LoadAtDetail(MapState& map, HWND window, std::int32_t factor) {
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    map.detail.Apply(factor, map.textures.limits);
    {
        const ForeignContextGuard guard(map.gl.Context());
        if (map.gl.Context().MakeCurrent(entry->dc.Get())) map.gl.Compile();
    }
    map.detail.StopMeasuring();
    InvalidateRect(window, nullptr, FALSE);
    map.loader.StartLoad(window);
}

LRESULT OnStageDone(HWND window, WPARAM wParam, LPARAM lParam) {
    MapState& map = Map();
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return 0;
    const bool success = lParam != 0;
    if (!success) {
        OnFailure(map, window);
    } else if (wParam == kLoadStage) {
        map.loader.StartSplit(window);
        InvalidateRect(window, nullptr, FALSE);
    } else if (wParam == kSplitStage) {
        OnTilesReady(map, *entry);
    }
    return 0;
}
