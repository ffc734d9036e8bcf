#include "own_frame.h"

namespace {

constexpr wchar_t kInnerProc[] = L"HorivoDemo.InnerProc";
// A popup: only for a popup does GetParent name the owner, and the map sends to its parent.
constexpr DWORD kFrameStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX |
                              WS_MAXIMIZEBOX | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;

/// The map's procedure with the one thing that a frame adds: its close button.
LRESULT CALLBACK FrameProc(HWND map, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto inner = reinterpret_cast<WNDPROC>(GetPropW(map, kInnerProc));
    if (message == WM_CLOSE) {
        DestroyWindow(GetWindow(map, GW_OWNER));
        return 0;
    }
    if (message == WM_NCDESTROY) RemovePropW(map, kInnerProc);
    return CallWindowProcW(inner, map, message, wParam, lParam);
}

}  // namespace

bool NeedsOwnFrame() {
    // Wine: up to version 8 it gives a child window's DC no drawable, so SwapBuffers reaches
    // neither the screen nor the DC, and the map would stay black.
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

void GiveOwnFrame(HWND map, HWND owner, int width, int height) {
    SetPropW(map, kInnerProc, reinterpret_cast<HANDLE>(GetWindowLongPtrW(map, GWLP_WNDPROC)));
    SetWindowLongPtrW(map, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FrameProc));
    ShowWindow(map, SW_HIDE);
    SetParent(map, nullptr);
    SetWindowLongPtrW(map, GWL_STYLE, static_cast<LONG_PTR>(kFrameStyle));
    SetWindowLongPtrW(map, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    wchar_t title[128] = {};
    GetWindowTextW(owner, title, 128);
    SetWindowTextW(map, title);
    RECT frame{0, 0, width, height};
    AdjustWindowRectEx(&frame, kFrameStyle, FALSE, 0);
    const int frameWidth = frame.right - frame.left;
    const int frameHeight = frame.bottom - frame.top;
    const int spareX = GetSystemMetrics(SM_CXSCREEN) - frameWidth;
    const int spareY = GetSystemMetrics(SM_CYSCREEN) - frameHeight;
    // A map as wide as the screen has all its pixels there: the frame's sides lie beyond the edges.
    SetWindowPos(map, nullptr, spareX > 0 ? spareX / 2 : frame.left, spareY > 0 ? spareY / 2 : 0,
                 frameWidth, frameHeight, SWP_NOZORDER | SWP_FRAMECHANGED | SWP_SHOWWINDOW);
    SetForegroundWindow(map);
}
