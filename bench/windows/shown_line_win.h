#pragma once

#include <cstdio>

#include "base/windows_types.h"
#include "peak_memory_win.h"

/// Returns `time` in ms since 1970.
inline double UnixMs(const FILETIME& time) {
    constexpr double kTicksPerMs = 10000.0;
    constexpr double kUnixEpochMs =
        11644473600000.0;  // ms from the start of FILETIME, 1601, to 1970
    const auto ticks = static_cast<double>(
        (static_cast<unsigned long long>(time.dwHighDateTime) << 32U) | time.dwLowDateTime);
    return ticks / kTicksPerMs - kUnixEpochMs;
}

/// Prints the moment, ms since 1970, at which a first picture was complete, the time since the
/// start of the process, and the most memory that the process held until then.
inline void PrintShown() {
    FILETIME now;
    GetSystemTimePreciseAsFileTime(&now);
    FILETIME start;
    FILETIME unused;
    GetProcessTimes(GetCurrentProcess(), &start, &unused, &unused, &unused);
    std::printf("{\"shown_at_ms\": %.3f, \"since_start_ms\": %.3f, \"peak_mib\": %.3f}\n",
                UnixMs(now), UnixMs(now) - UnixMs(start), PeakMiB());
    std::fflush(stdout);
}
