#pragma once

#include <cstddef>
#include <vector>

/// Sees what the process allocates while it lives. One at a time; works under the address
/// sanitizer, whose allocator tells.
class AllocationLog {
public:
    static bool IsSupported() noexcept;
    AllocationLog() noexcept;
    AllocationLog(const AllocationLog&) = delete;
    AllocationLog& operator=(const AllocationLog&) = delete;
    ~AllocationLog();
    /// Ends the log. @return bytes of each allocation, in order (the first 256 of them)
    std::vector<std::size_t> Stop();
};
