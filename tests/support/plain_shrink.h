#pragma once
// The box filter written down plainly, as the reference for the fast one.

#include <algorithm>
#include <cstdint>
#include <vector>

/// One line, pixel by pixel; steps in bytes.
inline void PlainLine(const std::uint8_t* source, std::uint8_t* target, std::int64_t from,
                      std::int64_t to, std::int64_t sourceStep, std::int64_t targetStep) {
    if (from <= to) {
        for (std::int64_t i = 0; i < to && i * from / to < from; ++i) {
            std::copy_n(source + i * from / to * sourceStep, 3, target);
            target += targetStep;
        }
        return;
    }
    std::uint32_t sums[3] = {source[0], source[1], source[2]};
    std::uint32_t count = 1;
    std::int64_t current = 0;
    const auto write = [&] {
        for (int c = 0; c < 3; ++c) target[c] = static_cast<std::uint8_t>(sums[c] / count);
    };
    for (std::int64_t i = 0; i < from; ++i, source += sourceStep) {
        const std::int64_t index = i * to / from;
        if (index >= to) break;
        if (index != current) {
            write();
            target += targetStep;
            current = index;
            std::fill_n(sums, 3, 0U);
            count = 0;
        }
        for (int c = 0; c < 3; ++c) sums[c] += source[c];
        ++count;
    }
    write();
}

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
