#include "map_host_win.h"

namespace {

constexpr wchar_t kClass[] = L"horivo bench host";
constexpr DWORD kPatienceMs = 60000;
constexpr DWORD kMaxQuiets = 3;  // longest wait, in multiples of the quiet time

// The message that a worker of the library posts to the map window, and its wParam after the map
// picture was split into tiles. The message loop of this file sees the message.
constexpr UINT kStageDone = WM_USER + 1;
constexpr WPARAM kSplitStage = 1;

bool Wait(DWORD ms) {
    return MsgWaitForMultipleObjects(0, nullptr, FALSE, ms, QS_ALLINPUT) != WAIT_TIMEOUT;
}

}  // namespace

BenchHost::BenchHost(std::vector<CityRecord>& cities, int width, int height) {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClass;
    RegisterClassW(&windowClass);
    host_ = CreateWindowExW(0, kClass, L"bench", WS_POPUP, 0, 0, width, height, nullptr, nullptr,
                            windowClass.hInstance, nullptr);
    // Moves the pointer out of the map, because the cities near the pointer would get labels.
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    ShowWindow(host_, SW_SHOWNA);
    InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
    std::uint32_t status = 0;
    map_ = CreateMapWindow(host_, 0, 0, width, height, &status);
}

BenchHost::~BenchHost() {
    DestroyWindow(host_);
    FreeMap();
}

bool PumpUntilTextured(HWND map) {
    bool hasTiles = false;
    while (Wait(kPatienceMs)) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
            if (message.hwnd != map) continue;
            if (message.message == kStageDone && message.wParam == kSplitStage) hasTiles = true;
            if (message.message == WM_PAINT && hasTiles) return true;
        }
    }
    return false;
}

void BenchHost::PumpUntilQuiet(DWORD quietMs) {
    // Limits the whole wait, because messages may come without end, for example while the pointer
    // is over the window.
    const DWORD start = GetTickCount();
    MSG message;
    while (Wait(quietMs) && GetTickCount() - start < kMaxQuiets * quietMs) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
}

void BenchHost::Paint() const {
    InvalidateRect(map_, nullptr, FALSE);
    UpdateWindow(map_);
}
