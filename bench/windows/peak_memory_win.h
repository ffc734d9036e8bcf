#pragma once

#include "base/windows_types.h"
// psapi.h needs windows.h before it.
#include <psapi.h>

inline double CountedMiB(SIZE_T PROCESS_MEMORY_COUNTERS::*counter) {
    PROCESS_MEMORY_COUNTERS counters = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.*counter) / (1024.0 * 1024.0);
}

/// The largest working set of the process so far, MiB.
inline double PeakMiB() { return CountedMiB(&PROCESS_MEMORY_COUNTERS::PeakWorkingSetSize); }

/// The working set of the process now, MiB.
inline double HeldMiB() { return CountedMiB(&PROCESS_MEMORY_COUNTERS::WorkingSetSize); }
