#pragma once
// The box filter written down plainly, as the reference for the fast one.

#include <cstdint>
#include <vector>

#include "support/plain_line.h"

/// Both passes over a whole block of packed 3-byte pixels, one after the other.
inline std::vector<std::uint8_t> PlainShrink(std::vector<std::uint8_t> block, std::int64_t width,
                                             std::int64_t height, std::int64_t newWidth,
                                             std::int64_t newHeight) {
    for (std::int64_t row = 0; row < height; ++row) {
        PlainLine(&block[static_cast<std::size_t>(row * width * 3)],
                  &block[static_cast<std::size_t>(row * newWidth * 3)], width, newWidth, 3, 3);
    }
    for (std::int64_t column = 0; column < newWidth; ++column) {
        std::uint8_t* const top = &block[static_cast<std::size_t>(column * 3)];
        PlainLine(top, top, height, newHeight, newWidth * 3, newWidth * 3);
    }
    block.resize(static_cast<std::size_t>(newWidth * newHeight * 3));
    return block;
}
