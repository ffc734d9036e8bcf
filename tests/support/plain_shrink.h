#pragma once
// The box filter written down plainly, as the reference for the fast one.

#include <cstdint>
#include <utility>
#include <vector>

/// Shortens one line of RGB pixels, pixel by pixel: each result is the mean of the pixels that fall
/// to it, rounded down, and the first pixel of the line counts twice.
/// @param from, to  pixels  @param sourceStep, targetStep  bytes
inline void PlainLine(const std::uint8_t* source, std::uint8_t* target, std::ptrdiff_t from,
                      std::ptrdiff_t to, std::ptrdiff_t sourceStep, std::ptrdiff_t targetStep) {
    std::uint32_t sums[3] = {source[0], source[1], source[2]};
    std::uint32_t count = 1;
    std::ptrdiff_t box = 0;
    for (std::ptrdiff_t i = 0; i < from; ++i, source += sourceStep) {
        for (int c = 0; c < 3; ++c) sums[c] += source[c];
        ++count;
        const std::ptrdiff_t next = (i + 1) * to / from;
        if (next == std::exchange(box, next)) continue;
        for (int c = 0; c < 3; ++c)
            target[c] = static_cast<std::uint8_t>(std::exchange(sums[c], 0) / count);
        count = 0;
        target += targetStep;
    }
}

/// Both passes over a whole block of packed 3-byte pixels, one after the other.
inline std::vector<std::uint8_t> PlainShrink(std::vector<std::uint8_t> block, std::ptrdiff_t width,
                                             std::ptrdiff_t height, std::ptrdiff_t newWidth,
                                             std::ptrdiff_t newHeight) {
    std::uint8_t* const pixels = block.data();
    for (std::ptrdiff_t row = 0; row < height; ++row)
        PlainLine(pixels + row * width * 3, pixels + row * newWidth * 3, width, newWidth, 3, 3);
    for (std::ptrdiff_t column = 0; column < newWidth; ++column) {
        std::uint8_t* const top = pixels + column * 3;
        PlainLine(top, top, height, newHeight, newWidth * 3, newWidth * 3);
    }
    block.resize(static_cast<std::size_t>(newWidth * newHeight * 3));
    return block;
}
