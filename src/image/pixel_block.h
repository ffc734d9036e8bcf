#pragma once
// The blocks that textures keep their pixels in.

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
