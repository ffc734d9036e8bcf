#include "window/sun_timer_win.h"

#include "render/current_context_win.h"
#include "window/flight_win.h"
#include "window/gl_resources_win.h"

namespace {

constexpr UINT kSunMs = 5000;  // ms between two looks at the clock

}  // namespace

void StartSunTimer(MapWindow& entry) noexcept {
    entry.sunTimer.Start(entry.window, kSunTimer, kSunMs);
}

void OnSunTimer(MapState& map, HWND window) {
    // Asking Windows for all its zones takes a while: neither the start nor a label should wait.
    map.overlay.zones.Prepare();
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr || IsFlying(map) || map.repeat.Runs()) return;
    GetSystemTime(&map.drawing.sceneTime);
    const CurrentContextScope current(map.drawing.context, entry->dc.Get());
    if (current.IsCurrent()) CompileScene(map);
}
