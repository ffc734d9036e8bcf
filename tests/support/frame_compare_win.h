#pragma once

#include <cstdlib>
#include <limits>

#include "support/gl_spy_win.h"

/// Number of pixels that look different, not counting shades that nobody could tell apart.
inline int DifferentPixels(const SpiedFrame& a, const SpiedFrame& b) {
    constexpr int kShade = 12;
    if (a.width != b.width || a.height != b.height) return std::numeric_limits<int>::max();
    int different = 0;
    for (std::size_t i = 0; i < a.pixels.size(); i += 3) {
        bool differs = false;
        for (std::size_t c = i; c < i + 3; ++c)
            differs = differs || std::abs(a.pixels[c] - b.pixels[c]) > kShade;
        if (differs) ++different;
    }
    return different;
}
