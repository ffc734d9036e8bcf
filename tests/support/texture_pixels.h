#pragma once

#include <cstdint>
#include <limits>
#include <memory>
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

/// The whole buffer.
inline std::vector<int> Bytes(const CJpegTexture& texture) {
    const std::ptrdiff_t pixels =
        std::ptrdiff_t{texture.GetBufferWidth()} * texture.GetBufferHeight();
    return {texture.GetPixels(), texture.GetPixels() + pixels * texture.GetBytesPerPixel()};
}

inline int LoadImage(CJpegTexture& texture, const MemoryImage& image, int maxWidth = 0,
                     int maxHeight = 0) {
    return texture.Load(std::make_unique<MemoryPicture>(image), maxWidth, maxHeight);
}
