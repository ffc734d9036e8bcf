#pragma once
// Blocks of pixels: textures allocate them, and the JPEG encoder gets a view of one block.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Bytes of a pixel; each byte is one colour channel or alpha.
inline constexpr std::int32_t kRgbBytes = 3;
inline constexpr std::int32_t kRgbaBytes = 4;

/// Bytes of a packed block. No argument may be below 0, and `bytesPerPixel` may be at most 4: the
/// product then fits 64 bits.
inline std::size_t BlockBytes(std::int32_t width, std::int32_t height,
                              std::int32_t bytesPerPixel) noexcept {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
           static_cast<std::size_t>(bytesPerPixel);
}

/// Allocates a block with malloc; null for 0 bytes, because an empty texture has no block.
inline std::uint8_t* AllocateBlock(std::size_t bytes) noexcept {
    return bytes != 0 ? static_cast<std::uint8_t*>(std::malloc(bytes)) : nullptr;
}

/// Changes the size of a block (`bytes` above 0) and keeps its first bytes. When memory runs out,
/// the block is freed and the result is null.
inline std::uint8_t* ResizeBlock(std::uint8_t* block, std::size_t bytes) noexcept {
    auto* const resized = static_cast<std::uint8_t*>(std::realloc(block, bytes));
    if (resized == nullptr) std::free(block);
    return resized;
}

/// A view of pixels for the encoder. The encoder does not copy the pixels.
struct PixelBlock {
    std::uint8_t* firstRow = nullptr;        ///< top row
    std::int32_t width = 0;                  ///< pixels
    std::int32_t height = 0;                 ///< pixels
    std::int32_t stride = 0;                 ///< bytes from a row to the one below; may be negative
    std::int32_t bytesPerPixel = kRgbBytes;  ///< kRgbBytes (B, G, R) or kRgbaBytes (B, G, R, A)
};
