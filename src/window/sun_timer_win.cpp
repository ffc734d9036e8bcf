#include "window/sun_timer_win.h"

#include "render/current_context_win.h"

namespace {

constexpr UINT kSunMs = 5000;  // ms between two updates of the day/night line

}  // namespace

void StartSunTimer(MapWindow& entry) noexcept {
    entry.sunTimer.Start(entry.window, kSunTimer, kSunMs);
}

void OnSunTimer(MapState& map, HWND window) {
    // Asking Windows for all its zones takes a while: done here, it delays neither the start of the
    // map nor a label.
    map.zones.Prepare();
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr || map.flight.IsUnderWay() || map.repeat.IsUnderWay()) return;
    map.gl.TakeTime();
    const CurrentContextScope current(map.gl.Context(), entry->dc.Get());
    if (current.IsCurrent()) map.gl.Compile();
}
