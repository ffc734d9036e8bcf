#include "window/sun_timer_win.h"

#include "render/current_context_win.h"

namespace {

constexpr UINT kSunMs = 5000;  // ms between two updates of the day/night line

}  // namespace

void StartSunTimer(MapWindow& entry) noexcept {
    entry.sunTimer.Start(entry.window, kSunTimer, kSunMs);
}

void OnSunTimer(MapState& map, HWND window) {
    // Read all time zones of Windows here and not earlier: this takes a while and must delay
    // neither the start of the map nor the first label.
    map.zones.Prepare();
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr || map.flight.IsUnderWay() || map.repeat.IsUnderWay()) return;
    map.gl.ReadTime();
    const CurrentContextScope current(map.gl.Context(), entry->dc.Get());
    if (current.IsCurrent()) map.gl.Compile();
}
