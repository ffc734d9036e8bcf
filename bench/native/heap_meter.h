#pragma once

#include <cstddef>

/// Measures how much heap the process takes beyond what it held when the meter was made. Counts
/// every malloc, calloc, realloc, new and free of the program. Only one meter at a time.
class HeapMeter {
public:
    HeapMeter() noexcept;
    /// The most bytes that the process held at one time since the meter was made, minus the bytes
    /// that it held before.
    std::size_t Peak() const noexcept;

private:
    std::size_t start_;
};
