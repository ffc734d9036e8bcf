#pragma once

#include <cstddef>

/// What this process holds now; tests compare a count before with one after.
struct ResourceCount {
    std::size_t kernelHandles = 0;
    std::size_t gdiObjects = 0;
    std::size_t privateBytes = 0;  ///< resident ones where the system does not count them
};

ResourceCount CountResources();
