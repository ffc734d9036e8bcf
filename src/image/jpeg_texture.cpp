#include "image/jpeg_texture.h"

#include <cstdlib>
#include <cstring>

#include "image/pixel_block.h"
#include "image/resample.h"

namespace {

/// Largest power of two not above `value`; 0 for 0.
std::uint32_t PowerOfTwoBelow(std::uint32_t value) noexcept {
    std::uint32_t power = 0x80000000U;  // the largest power of two in 32 bits
    while (power > value) power /= 2;
    return power;
}

}  // namespace

CJpegTexture::CJpegTexture(const CJpegTexture& other) noexcept { *this = other; }

CJpegTexture& CJpegTexture::operator=(const CJpegTexture& other) noexcept {
    if (this == &other) return *this;
    Clear(true);
    width_ = other.width_;
    height_ = other.height_;
    bufferWidth_ = other.bufferWidth_;
    bufferHeight_ = other.bufferHeight_;
    bytesPerPixel_ = other.bytesPerPixel_;
    if (other.pixels_ == nullptr) return *this;
    const std::size_t bytes = BlockBytes(bufferWidth_, bufferHeight_, bytesPerPixel_);
    pixels_ = AllocateBlock(bytes);
    if (pixels_ != nullptr) std::memcpy(pixels_, other.pixels_, bytes);
    return *this;
}

CJpegTexture::~CJpegTexture() { Clear(false); }

void CJpegTexture::Clear(bool resetSize) noexcept {
    std::free(pixels_);
    pixels_ = nullptr;
    if (!resetSize) return;
    ResetSizes();
    bytesPerPixel_ = 0;
}

void CJpegTexture::SetSizes(const TextureSizes& sizes) noexcept {
    width_ = sizes.width;
    height_ = sizes.height;
    bufferWidth_ = sizes.bufferWidth;
    bufferHeight_ = sizes.bufferHeight;
}

void CJpegTexture::ResetSizes() noexcept { SetSizes({}); }

bool CJpegTexture::HasBorder() const noexcept { return width_ >= 3 && width_ % 4 == 2; }

bool CJpegTexture::IsPowerOfTwoSize() const noexcept {
    if (width_ != bufferWidth_ || height_ != bufferHeight_) return false;
    const auto width = static_cast<std::uint32_t>(width_);
    const bool oneBit = width != 0 && (width & (width - 1)) == 0;
    // Deliberate: the height is compared with 0. No picture has this height, so the result is false
    // for every picture.
    return oneBit && height_ == 0;
}

bool CJpegTexture::MakePowerOfTwo() noexcept {
    if (pixels_ == nullptr) return false;
    const auto width = static_cast<int>(PowerOfTwoBelow(static_cast<std::uint32_t>(width_)));
    const auto height = static_cast<int>(PowerOfTwoBelow(static_cast<std::uint32_t>(height_)));
    if (width == bufferWidth_ && height == bufferHeight_) return true;
    return Rescale(width, height);
}

bool CJpegTexture::Rescale(int newWidth, int newHeight) noexcept {
    if (pixels_ == nullptr || bytesPerPixel_ != kRgbBytes) return false;
    if (newWidth < 1 || newHeight < 1 || newWidth > width_ || newHeight > height_) return false;
    const BlockSize from{static_cast<std::size_t>(bufferWidth_),
                         static_cast<std::size_t>(bufferHeight_)};
    const BlockSize to{static_cast<std::size_t>(newWidth), static_cast<std::size_t>(newHeight)};
    if (!ShrinkPixels(pixels_, from, to)) return false;
    pixels_ = ResizeBlock(pixels_, BlockBytes(newWidth, newHeight, bytesPerPixel_));
    width_ = bufferWidth_ = newWidth;
    height_ = bufferHeight_ = newHeight;
    return true;
}

bool CJpegTexture::PadBuffer(int newBufferWidth, int newBufferHeight) noexcept {
    if (pixels_ == nullptr || newBufferWidth < bufferWidth_ || newBufferHeight < bufferHeight_) {
        return false;
    }
    if (newBufferWidth == bufferWidth_ && newBufferHeight == bufferHeight_) return true;
    pixels_ = ResizeBlock(pixels_, BlockBytes(newBufferWidth, newBufferHeight, bytesPerPixel_));
    if (pixels_ == nullptr) {
        ResetSizes();
        return false;
    }
    // Move the top row first, so that no row overwrites a row that has not been moved yet.
    for (std::int32_t row = height_ - 1; row >= 0; --row) {
        std::memmove(
            pixels_ + BlockBytes(newBufferWidth, row + newBufferHeight - height_, bytesPerPixel_),
            pixels_ + BlockBytes(bufferWidth_, row, bytesPerPixel_),
            BlockBytes(width_, 1, bytesPerPixel_));
    }
    bufferWidth_ = newBufferWidth;
    bufferHeight_ = newBufferHeight;
    return true;
}

bool CJpegTexture::Allocate(const TextureSizes& sizes, std::int32_t bytesPerPixel) noexcept {
    Clear(true);
    bytesPerPixel_ = bytesPerPixel;
    pixels_ = AllocateBlock(BlockBytes(sizes.bufferWidth, sizes.bufferHeight, bytesPerPixel));
    if (pixels_ == nullptr) return false;
    SetSizes(sizes);
    return true;
}

bool CJpegTexture::KeepFront(const TextureSizes& sizes) noexcept {
    pixels_ =
        ResizeBlock(pixels_, BlockBytes(sizes.bufferWidth, sizes.bufferHeight, bytesPerPixel_));
    SetSizes(pixels_ != nullptr ? sizes : TextureSizes{});
    return pixels_ != nullptr;
}

bool CJpegTexture::Split(CJpegTexture& other, bool byColumns) noexcept {
    if (pixels_ == nullptr || &other == this) return false;
    TextureSizes half{width_, height_, bufferWidth_, bufferHeight_};
    (byColumns ? half.width : half.height) /= 2;
    (byColumns ? half.bufferWidth : half.bufferHeight) /= 2;
    // Allocate also fails when a half would be empty.
    if (!other.Allocate(half, bytesPerPixel_)) return false;

    const std::size_t rowBytes = BlockBytes(bufferWidth_, 1, bytesPerPixel_);
    const std::size_t halfRowBytes = BlockBytes(half.bufferWidth, 1, bytesPerPixel_);
    const auto height = static_cast<std::size_t>(half.bufferHeight);
    const std::uint8_t* const start = pixels_ + (byColumns ? halfRowBytes : height * rowBytes);
    for (std::size_t row = 0; row < height; ++row) {
        std::memcpy(other.pixels_ + row * halfRowBytes, start + row * rowBytes, halfRowBytes);
        // The left half of the row moves to its new place, which ends before the rows that are
        // still to be copied.
        if (byColumns) {
            std::memmove(pixels_ + row * halfRowBytes, pixels_ + row * rowBytes, halfRowBytes);
        }
    }
    return KeepFront(half);
}
