#pragma once
// What pictures look like that the DLL shows or hands to OpenGL.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "support/gl_spy_win.h"

/// Number of pixels that look different, not counting shades that nobody could tell apart.
inline int DifferentPixels(const SpiedFrame& a, const SpiedFrame& b) {
    constexpr int kShade = 12;
    if (a.width != b.width || a.height != b.height) return std::numeric_limits<int>::max();
    int different = 0;
    for (std::size_t i = 0; i < a.pixels.size(); i += 3) {
        const auto differs = [&](std::size_t c) {
            return std::abs(a.pixels[c] - b.pixels[c]) > kShade;
        };
        different += differs(i) || differs(i + 1) || differs(i + 2);
    }
    return different;
}

/// Whether an upload shows the part of a pattern (gdiplus_pictures_win.h) of this size whose lower
/// left corner is `left`, `bottom`, by its corners. All are parts of the pattern, which may fill
/// only the lower left of the upload.
inline bool ShowsPattern(const SpiedUpload& upload, double left, double bottom, double width,
                         double height) {
    constexpr double kMiss = 24.0;  // JPEG, and pixels that became one
    const int bytes = upload.format == GL_RGBA ? 4 : 3;
    for (const int x : {0, static_cast<int>(upload.width / std::max(width, 1.0)) - 1}) {
        for (const int y : {0, static_cast<int>(upload.height / std::max(height, 1.0)) - 1}) {
            const auto* pixel = upload.pixels.data() + bytes * (y * upload.width + x);
            const double green = 255.0 * (left + width * (x + 0.5) / upload.width);
            const double red = 255.0 * (1.0 - bottom - height * (y + 0.5) / upload.height);
            if (std::hypot(pixel[0] - red, pixel[1] - green, pixel[2]) > kMiss) return false;
            if (bytes == 4 && pixel[3] != 255) return false;
        }
    }
    return true;
}
