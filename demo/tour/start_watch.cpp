#include "tour/start_watch.h"

#include <psapi.h>

#include <cstdio>

namespace {

constexpr DWORD kPatienceMs = 60000;
// By these the library's workers tell its window how far they are; seen from the message loop.
constexpr UINT kStageDone = WM_USER + 1;
constexpr WPARAM kSplitStage = 1;

double NowMs() {
    FILETIME now{};
    GetSystemTimePreciseAsFileTime(&now);
    constexpr double kTicksPerMs = 10000.0;
    constexpr double kUnixEpochMs = 11644473600000.0;  // of a clock that began in 1601
    const auto ticks = static_cast<double>(
        static_cast<unsigned long long>(now.dwHighDateTime) << 32U | now.dwLowDateTime);
    return ticks / kTicksPerMs - kUnixEpochMs;
}

double PeakMiB() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.PeakWorkingSetSize) / (1024.0 * 1024.0);
}

}  // namespace

bool WatchStart(HWND map) {
    bool hasTiles = false;
    while (MsgWaitForMultipleObjects(0, nullptr, FALSE, kPatienceMs, QS_ALLINPUT) != WAIT_TIMEOUT) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
            if (message.hwnd != map) continue;
            if (message.message == kStageDone && message.wParam == kSplitStage) hasTiles = true;
            if (message.message != WM_PAINT || !hasTiles) continue;
            std::printf("{\"shown_at_ms\": %.3f, \"peak_mib\": %.3f}\n", NowMs(), PeakMiB());
            std::fflush(stdout);
            return true;
        }
    }
    return false;
}
