#pragma once

#include <algorithm>
#include <cstdint>

/// Resamples one line of RGB pixels the plain way, pixel by pixel: when it gets shorter each result
/// is the mean of the pixels that fall to it, rounded down, and the first pixel counts twice.
/// @param from, to  pixels  @param sourceStep, targetStep  bytes
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
