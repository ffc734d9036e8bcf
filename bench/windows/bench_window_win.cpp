#include "bench_window_win.h"

namespace {

constexpr wchar_t kClass[] = L"horivo bench window";

void RegisterOnce() {
    WNDCLASSW windowClass = {};
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClass;
    RegisterClassW(&windowClass);  // fails if the class is registered already
}

}  // namespace

BenchWindow::BenchWindow(int width, int height) {
    RegisterOnce();
    window_ = CreateWindowExW(0, kClass, L"bench", WS_POPUP, 0, 0, width, height, nullptr, nullptr,
                              GetModuleHandleW(nullptr), nullptr);
    ShowWindow(window_, SW_SHOWNA);
    dc_ = GetDC(window_);
}

BenchWindow::~BenchWindow() {
    ReleaseDC(window_, dc_);
    DestroyWindow(window_);
}

void PumpPending() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}
