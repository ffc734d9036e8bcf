#pragma once

#include <cstdio>

#include "base/windows_types.h"
#include "peak_memory_win.h"

/// Prints the moment, ms since 1970, at which a first picture was complete, and the most memory
/// that the process held until then.
inline void PrintShown() {
    FILETIME now;
    GetSystemTimePreciseAsFileTime(&now);
    constexpr double kTicksPerMs = 10000.0;
    constexpr double kUnixEpochMs =
        11644473600000.0;  // ms from the start of FILETIME, 1601, to 1970
    const auto ticks = static_cast<double>(
        (static_cast<unsigned long long>(now.dwHighDateTime) << 32U) | now.dwLowDateTime);
    std::printf("{\"shown_at_ms\": %.3f, \"peak_mib\": %.3f}\n", ticks / kTicksPerMs - kUnixEpochMs,
                PeakMiB());
    std::fflush(stdout);
}
