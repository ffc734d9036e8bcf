#pragma once

#include "base/windows_types.h"
// psapi.h needs windows.h before it.
#include <psapi.h>

/// The most memory that the process has held so far.
inline double PeakMiB() {
    PROCESS_MEMORY_COUNTERS counters = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.PeakWorkingSetSize) / (1024.0 * 1024.0);
}
