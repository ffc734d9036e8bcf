#include "map_host_win.h"

namespace {

constexpr wchar_t kClass[] = L"horivo bench host";
constexpr DWORD kPatienceMs = 60000;
constexpr DWORD kMaxQuiets = 3;  // longest wait, in multiples of the quiet time

// By these the library's workers tell its window how far they are; seen from the message loop.
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
    // Out of the way: what it points at would be labelled, too.
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
    // A pointer that happens to rest over the window gives messages for ever.
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
