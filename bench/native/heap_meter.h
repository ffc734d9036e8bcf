#pragma once

#include <cstddef>

/// How much heap the process takes beyond what it held when the meter was made, bytes: every
/// malloc, realloc, new and free of the program is counted. One at a time.
class HeapMeter {
public:
    HeapMeter() noexcept;
    /// The most that was held at one time since then.
    std::size_t Peak() const noexcept;

private:
    std::size_t start_;
};
