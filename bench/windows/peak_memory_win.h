#pragma once

#include "base/windows_types.h"
// psapi.h needs windows.h before it.
#include <psapi.h>

inline double CountedMiB(SIZE_T PROCESS_MEMORY_COUNTERS::*counter) {
    PROCESS_MEMORY_COUNTERS counters = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.*counter) / (1024.0 * 1024.0);
}

/// The most memory that the process has held so far.
inline double PeakMiB() { return CountedMiB(&PROCESS_MEMORY_COUNTERS::PeakWorkingSetSize); }

/// The memory that the process holds now.
inline double HeldMiB() { return CountedMiB(&PROCESS_MEMORY_COUNTERS::WorkingSetSize); }
