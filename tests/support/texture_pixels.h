#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "image/jpeg_texture.h"
#include "support/memory_picture.h"

/// A texture class whose sizes a test may claim, to ask for more memory than there is.
template <class Texture>
class Claimed : public Texture {
public:
    void ClaimBuffer(std::int32_t width, std::int32_t height) {
        this->width_ = this->bufferWidth_ = width;
        this->height_ = this->bufferHeight_ = height;
    }
};

inline constexpr std::int32_t kHugeSide = std::numeric_limits<std::int32_t>::max();

inline std::vector<int> Sizes(const CJpegTexture& texture) {
    return {texture.GetWidth(), texture.GetHeight(), texture.GetBufferWidth(),
            texture.GetBufferHeight()};
}

inline int LoadImage(CJpegTexture& texture, const MemoryImage& image, int maxWidth = 0,
                     int maxHeight = 0) {
    return texture.Load(std::make_unique<MemoryPicture>(image), maxWidth, maxHeight);
}

/// Pixel of the texture as 0xRRGGBB, `row` counted from the top of the picture.
inline std::uint32_t TextureColour(const CJpegTexture& texture, int x, int row) {
    const int fromBottom = texture.GetHeight() - 1 - row;
    const int at = (fromBottom * texture.GetBufferWidth() + x) * texture.GetBytesPerPixel();
    const std::uint8_t* const pixel = texture.GetPixels() + at;
    return (std::uint32_t{pixel[0]} << 16U) | (std::uint32_t{pixel[1]} << 8U) | pixel[2];
}

/// Pixel of a 24-bit image as 0xRRGGBB.
inline std::uint32_t ImageColour(const MemoryImage& image, int x, int row) {
    const std::uint8_t* const pixel =
        &image.bytes[static_cast<std::size_t>((row * image.width + x) * 3)];
    return (std::uint32_t{pixel[2]} << 16U) | (std::uint32_t{pixel[1]} << 8U) | pixel[0];
}
