// Functions that change every single pixel of a texture: they convert pixels from RGB to RGBA,
// replace pixels of one colour or brightness by another colour, and exchange the red and the blue
// byte of pixels.

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "image/jpeg_texture.h"
#include "image/pixel_block.h"

namespace {

constexpr std::uint32_t kAlphaShift = 24;  // in a packed RGBA pixel, alpha begins at this bit
constexpr std::int32_t kBitsPerByte = 8;

std::uint32_t ReadPacked(const std::uint8_t* pixel, std::int32_t bytesPerPixel) noexcept {
    std::uint32_t packed = 0;
    for (std::int32_t i = 0; i < bytesPerPixel; ++i) {
        packed |= static_cast<std::uint32_t>(pixel[i]) << (kBitsPerByte * i);
    }
    return packed;
}

void WritePacked(std::uint32_t packed, std::int32_t bytesPerPixel, std::uint8_t* pixel) noexcept {
    for (std::int32_t i = 0; i < bytesPerPixel; ++i) {
        pixel[i] = static_cast<std::uint8_t>(packed >> (kBitsPerByte * i));
    }
}

/// Mean of the colour bytes, without the alpha byte.
std::uint32_t Brightness(const std::uint8_t* pixel, std::int32_t bytesPerPixel) noexcept {
    const std::int32_t colours = std::min(bytesPerPixel, kRgbBytes);
    std::uint32_t sum = 0;
    for (std::int32_t i = 0; i < colours; ++i) sum += pixel[i];
    return sum / static_cast<std::uint32_t>(colours);
}

/// Allocates a block of RGBA pixels and fills it with the result of `widen` for each packed pixel
/// of `source`. @return the block; null when memory runs out
template <class Widen>
std::uint8_t* WidenedBlock(const std::uint8_t* source, std::size_t pixelCount,
                           std::int32_t bytesPerPixel, Widen widen) {
    std::uint8_t* const block = AllocateBlock(pixelCount * kRgbaBytes);
    if (block == nullptr) return nullptr;
    std::uint8_t* target = block;
    for (std::size_t i = 0; i < pixelCount; ++i) {
        WritePacked(widen(ReadPacked(source, bytesPerPixel)), kRgbaBytes, target);
        source += bytesPerPixel;
        target += kRgbaBytes;
    }
    return block;
}

}  // namespace

std::size_t CJpegTexture::BufferPixels() const noexcept {
    if (pixels_ == nullptr) return 0;
    return static_cast<std::size_t>(bufferWidth_) * static_cast<std::size_t>(bufferHeight_);
}

bool CJpegTexture::TakeWidened(std::uint8_t* block) noexcept {
    if (block == nullptr) return false;
    std::free(pixels_);
    pixels_ = block;
    bytesPerPixel_ = kRgbaBytes;
    return true;
}

bool CJpegTexture::ConvertToRgba(std::uint8_t alpha) noexcept {
    if (bytesPerPixel_ == kRgbaBytes) return false;
    const std::uint32_t alphaBits = static_cast<std::uint32_t>(alpha) << kAlphaShift;
    return TakeWidened(WidenedBlock(pixels_, BufferPixels(), bytesPerPixel_,
                                    [=](std::uint32_t packed) { return packed | alphaBits; }));
}

bool CJpegTexture::ConvertToRgbaWith(PixelFunction function) noexcept {
    if (function == nullptr || bytesPerPixel_ == kRgbaBytes) return false;
    return TakeWidened(
        WidenedBlock(pixels_, BufferPixels(), bytesPerPixel_,
                     [&](std::uint32_t packed) { return function(packed, bytesPerPixel_); }));
}

void CJpegTexture::ReplaceColor(std::uint32_t from, std::uint32_t to) noexcept {
    std::uint8_t* pixel = pixels_;
    for (std::size_t left = BufferPixels(); left > 0; --left, pixel += bytesPerPixel_) {
        if (ReadPacked(pixel, bytesPerPixel_) == from) WritePacked(to, bytesPerPixel_, pixel);
    }
}

void CJpegTexture::ReplaceByBrightness(std::uint32_t low, std::uint32_t high,
                                       std::uint32_t value) noexcept {
    if (bytesPerPixel_ < 1) return;
    std::uint8_t* pixel = pixels_;
    for (std::size_t left = BufferPixels(); left > 0; --left, pixel += bytesPerPixel_) {
        const std::uint32_t brightness = Brightness(pixel, bytesPerPixel_);
        if (low <= brightness && brightness <= high) WritePacked(value, bytesPerPixel_, pixel);
    }
}

bool CJpegTexture::SwapRedBlue() noexcept {
    if (pixels_ == nullptr || (bytesPerPixel_ != kRgbBytes && bytesPerPixel_ != kRgbaBytes)) {
        return false;
    }
    const auto step = static_cast<std::size_t>(bytesPerPixel_);
    const std::size_t rowBytes = static_cast<std::size_t>(bufferWidth_) * step;
    const std::size_t end = static_cast<std::size_t>(width_) * kRgbBytes;
    for (std::int32_t row = 0; row < height_; ++row) {
        std::uint8_t* const bytes = pixels_ + static_cast<std::size_t>(row) * rowBytes;
        for (std::size_t k = 0; k < end; k += step) std::swap(bytes[k], bytes[k + 2]);
    }
    return true;
}
