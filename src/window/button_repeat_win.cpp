#include "window/button_repeat_win.h"

namespace {

constexpr UINT kRepeatMs = 30;  // ms between two repeats of a held button

}  // namespace

void ButtonRepeat::Start(HWND window) noexcept { timer_.Start(window, kRepeatTimer, kRepeatMs); }

void ButtonRepeat::StopFor(HWND window) noexcept {
    if (timer_.RunsFor(window)) Stop();
}

void ButtonRepeat::CancelLostPress(PointerState& pointer, HWND window) noexcept {
    if (GetCapture() == window) return;
    Stop();
    pointer.ForgetPress();
}

void ButtonRepeat::Repeat(PointerState& pointer, HWND window) {
    CancelLostPress(pointer, window);
    if (pointer.HeldKey() != 0)
        SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(pointer.HeldKey()), 0);
}
