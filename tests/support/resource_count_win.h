#pragma once

#include <cstddef>

/// What this process holds now; tests compare a count before with one after.
struct ResourceCount {
    std::size_t kernelHandles = 0;
    std::size_t gdiObjects = 0;
    std::size_t privateBytes = 0;  ///< resident ones where the system does not count them
    /// Pages of its own that the process has committed. Under Wine without what the parts of it
    /// that are no Windows programs take, the graphics driver above all.
    std::size_t committedBytes = 0;
};

ResourceCount CountResources();
