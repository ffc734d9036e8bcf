#pragma once
// Blocks of pixels: the memory that textures keep theirs in, and the view of one for the encoder.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Bytes of a packed block; sides and `bytesPerPixel` are 0 or above (no product leaves 64 bits).
inline std::size_t BlockBytes(std::int32_t width, std::int32_t height,
                              std::int32_t bytesPerPixel) noexcept {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
           static_cast<std::size_t>(bytesPerPixel);
}

/// Null for 0 bytes: an empty texture has no block.
inline std::uint8_t* AllocateBlock(std::size_t bytes) noexcept {
    return bytes != 0 ? static_cast<std::uint8_t*>(std::malloc(bytes)) : nullptr;
}

/// Changes the size of a block and keeps its front; without memory the block is freed and the
/// result null. `bytes` above 0.
inline std::uint8_t* ResizeBlock(std::uint8_t* block, std::size_t bytes) noexcept {
    auto* const resized = static_cast<std::uint8_t*>(std::realloc(block, bytes));
    if (resized == nullptr) std::free(block);
    return resized;
}

/// Pixels handed to the encoder without copying.
struct PixelBlock {
    std::uint8_t* firstRow = nullptr;  ///< top row
    std::int32_t width = 0;            ///< pixels
    std::int32_t height = 0;           ///< pixels
    std::int32_t stride = 0;           ///< bytes from a row to the one below; may be negative
    std::int32_t bytesPerPixel = 3;    ///< 3 (B, G, R) or 4 (B, G, R, A)
};
