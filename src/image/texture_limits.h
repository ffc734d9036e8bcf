#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <limits>

class CJpegTexture;

/// Texture size that is assumed until OpenGL reports its limit, pixels per side.
inline constexpr std::int32_t kInitialTextureSize = 128;

/// Size limits of the map picture, which ScaledBounds scales for the width and the height. The
/// window thread writes these values, worker threads read them.
struct TextureLimits {
    /// The largest texture that OpenGL allows, or the smaller size that the self-test of InstallMap
    /// has found, pixels per side.
    std::atomic<std::int32_t> maxTextureSize{kInitialTextureSize};
    /// Largest side of a picture that is split, pixels. A larger picture is shrunk first.
    std::atomic<std::int32_t> textureLimit{kInitialTextureSize};
    std::atomic<std::int32_t> texScalerX{0};   ///< base-2 exponent that scales the width limits
    std::atomic<std::int32_t> texScalerY{-1};  ///< base-2 exponent that scales the height limits
};

/// A limit for the width and a limit for the height of a picture, pixels.
struct TextureBounds {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// Largest exponent that ScaledLimit uses. A shift by 31 turns any limit above 0 into 0, or into
/// more than the largest int; the result still fits 64 bits.
inline constexpr int kMaxShift = 31;

/// A texture size limit scaled by a power of two.
/// @param limit   pixels, 0 or above
/// @param scaler  base-2 exponent: above 0 enlarges the limit, below 0 reduces it
/// @return pixels; the largest int where the product exceeds it
constexpr int ScaledLimit(int limit, int scaler) noexcept {
    const int steps = std::clamp(scaler, -kMaxShift, kMaxShift);
    const std::int64_t wide = limit;
    const std::int64_t scaled = steps > 0 ? wide << steps : wide >> -steps;
    return static_cast<int>(
        std::min<std::int64_t>(scaled, std::numeric_limits<std::int32_t>::max()));
}

/// Scales one limit for the width and for the height.
/// @param limit  pixels per side
TextureBounds ScaledBounds(std::int32_t limit, const TextureLimits& limits) noexcept;

/// Shrinks a loaded picture. When a side is above its limit, that side is shrunk to the limit;
/// otherwise both sides are shrunk to powers of two.
/// @param widthLimit, heightLimit  pixels
/// @return false when the picture could not be rescaled or there is none
bool FitToLimits(CJpegTexture& texture, int widthLimit, int heightLimit) noexcept;
