#include "window/timers_win.h"

#include "render/current_context_win.h"
#include "window/flight_win.h"
#include "window/hover_win.h"
#include "window/pointer_win.h"
#include "window/scene_life_win.h"

namespace {

constexpr UINT kRepeatMs = 30;  // ms between two repeats of a held button
constexpr UINT kSunMs = 5000;   // ms between two looks at the clock

void OnRepeatTimer(MapState& map, HWND window) {
    GiveUpLostPress(map, window);
    if (map.pointer.pressedKey != 0)
        SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(map.pointer.pressedKey), 0);
}

/// Day and night follow the clock. The change shows with the next frame.
void OnSunTimer(MapState& map, HWND window) {
    // Asking Windows for all its zones takes a while: neither the start nor a label should wait.
    map.overlay.zones.Prepare();
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr || IsFlying(map) || map.repeat.Runs()) return;
    GetSystemTime(&map.drawing.sceneTime);
    const CurrentContextScope current(map.drawing.context, entry->dc.Get());
    if (current.IsCurrent()) CompileScene(map);
}

struct TimerRoute {
    UINT_PTR id;
    void (*handle)(MapState& map, HWND window);
};
constexpr TimerRoute kTimerRoutes[] = {
    {kRepeatTimer, OnRepeatTimer},
    {kFlightTimer, OnFlightTimer},
    {kHoverTimer, OnHoverTimer},
    {kSunTimer, OnSunTimer},
};

}  // namespace

void StartSunTimer(MapWindow& entry) noexcept {
    entry.sunTimer.Start(entry.window, kSunTimer, kSunMs);
}

void StartRepeat(MapState& map, HWND window) noexcept {
    map.repeat.Start(window, kRepeatTimer, kRepeatMs);
}

LRESULT OnTimer(HWND window, WPARAM wParam, LPARAM) {
    for (const TimerRoute& route : kTimerRoutes) {
        if (route.id == wParam) route.handle(Map(), window);
    }
    return 0;
}
