#include "window/button_repeat_win.h"

namespace {

constexpr UINT kRepeatMs = 30;  // ms between two repeats of a held button

}  // namespace

void StartButtonRepeat(MapState& map, HWND window) noexcept {
    map.repeat.Start(window, kRepeatTimer, kRepeatMs);
}

void GiveUpLostPress(MapState& map, HWND window) noexcept {
    if (GetCapture() == window) return;
    map.repeat.Stop();
    map.pointer.ForgetPress();
}

void OnRepeatTimer(MapState& map, HWND window) {
    GiveUpLostPress(map, window);
    if (map.pointer.pressedKey != 0)
        SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(map.pointer.pressedKey), 0);
}
