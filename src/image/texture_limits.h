#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

class CJpegTexture;

/// A texture size limit scaled by a power of two.
/// @param limit   pixels, 0 or above
/// @param scaler  base-2 exponent: above 0 doubles, below 0 halves, as often as it says
/// @return pixels; the largest int where the product exceeds it
constexpr int ScaledLimit(int limit, int scaler) noexcept {
    // 31 steps empty or overfill any limit, and stay inside 64 bits.
    const int steps = std::clamp(scaler, -31, 31);
    const std::int64_t wide = limit;
    const std::int64_t scaled = steps > 0 ? wide << steps : wide >> -steps;
    return static_cast<int>(
        std::min<std::int64_t>(scaled, std::numeric_limits<std::int32_t>::max()));
}

/// Shrinks a loaded picture to the limits: one above them to the limits themselves, one within
/// them to powers of two.
/// @param widthLimit, heightLimit  pixels
/// @return whether it fits now; false when it could not be rescaled (or there is no picture)
bool FitToLimits(CJpegTexture& texture, int widthLimit, int heightLimit) noexcept;
