#pragma once

#include "base/handles_win.h"

/// A visible window of the tests' own class, 320 x 100 pixels of client area, with a DC that lasts
/// as long as the window, as OpenGL wants it.
class SmallWindow {
public:
    SmallWindow() : window_(Make()), dc_(window_) {}
    SmallWindow(const SmallWindow&) = delete;
    SmallWindow& operator=(const SmallWindow&) = delete;
    ~SmallWindow() { DestroyWindow(window_); }
    HWND Get() const { return window_; }
    HDC Dc() const { return dc_.Get(); }

    static constexpr int kWidth = 320;
    static constexpr int kHeight = 100;

private:
    static HWND Make() {
        const wchar_t* name = L"Horivo small test window";
        WNDCLASSEXW windowClass = {};
        windowClass.cbSize = sizeof windowClass;
        windowClass.style = CS_OWNDC;
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = name;
        RegisterClassExW(&windowClass);  // fails from the second window on: it is there
        const HWND window = CreateWindowExW(0, name, L"", WS_POPUP, 0, 0, kWidth, kHeight, nullptr,
                                            nullptr, windowClass.hInstance, nullptr);
        // Wine: where no window manager runs, a window that was active takes 2 s to go.
        ShowWindow(window, SW_SHOWNA);
        return window;
    }

    HWND window_;
    WindowDc dc_;
};
