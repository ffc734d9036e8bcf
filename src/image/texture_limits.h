#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <limits>

class CJpegTexture;

inline constexpr std::int32_t kSmallestTexture = 128;  // pixels a side, before GL was asked

/// Size limits of the map picture. Written by the window thread, read by workers.
struct TextureLimits {
    std::atomic<std::int32_t> maxTextureSize{kSmallestTexture};  ///< pixels a side, GL's or the cap
    std::atomic<std::int32_t> textureLimit{kSmallestTexture};    ///< pixels a side, when splitting
    std::atomic<std::int32_t> texScalerX{0};   ///< base-2 exponent on the width limits
    std::atomic<std::int32_t> texScalerY{-1};  ///< base-2 exponent on the height limits
};

/// Largest picture that may be loaded or split, pixels.
struct TextureBounds {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

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

/// The limit of one side, scaled for both sides.
/// @param limit  pixels a side
TextureBounds ScaledBounds(std::int32_t limit, const TextureLimits& limits) noexcept;

/// Shrinks a loaded picture to the limits: one above them to the limits themselves, one within
/// them to powers of two.
/// @param widthLimit, heightLimit  pixels
/// @return whether it fits now; false when it could not be rescaled (or there is no picture)
bool FitToLimits(CJpegTexture& texture, int widthLimit, int heightLimit) noexcept;
