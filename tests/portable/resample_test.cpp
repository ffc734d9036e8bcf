#include "image/resample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/plain_shrink.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Shrink(Bytes block, std::size_t width, std::size_t height, std::size_t newWidth,
             std::size_t newHeight) {
    EXPECT_TRUE(ShrinkPixels(block.data(), {width, height}, {newWidth, newHeight}));
    block.resize(newWidth * newHeight * 3);
    return block;
}

Bytes Noise(std::size_t bytes, unsigned seed) {
    std::mt19937 random(seed);
    Bytes noise(bytes);
    for (auto& byte : noise) byte = static_cast<std::uint8_t>(random());
    return noise;
}

/// The same from rows that lie upside down elsewhere, red and blue exchanged.
Bytes ShrinkExchanging(const Bytes& block, std::size_t width, std::size_t height,
                       std::size_t newWidth, std::size_t newHeight) {
    const std::size_t rowBytes = width * 3;
    Bytes rows;
    for (std::size_t row = height; row-- > 0;) {
        const auto start = block.begin() + std::ptrdiff_t(row * rowBytes);
        rows.insert(rows.end(), start, start + std::ptrdiff_t(rowBytes));
    }
    Bytes shrunk(newWidth * newHeight * 3);
    EXPECT_TRUE(ShrinkExchangingRedBlue(&rows[(height - 1) * rowBytes], -std::ptrdiff_t(rowBytes),
                                        {width, height}, {newWidth, newHeight}, shrunk.data()));
    for (std::size_t i = 0; i < shrunk.size(); i += 3) std::swap(shrunk[i], shrunk[i + 2]);
    return shrunk;
}

void ExpectPlain(const Bytes& block, std::size_t width, std::size_t height, std::size_t newWidth,
                 std::size_t newHeight) {
    const Bytes plain = PlainShrink(block, std::ptrdiff_t(width), std::ptrdiff_t(height),
                                    std::ptrdiff_t(newWidth), std::ptrdiff_t(newHeight));
    const std::string sizes = std::to_string(width) + " x " + std::to_string(height) + " to " +
                              std::to_string(newWidth) + " x " + std::to_string(newHeight);
    EXPECT_TRUE(Shrink(block, width, height, newWidth, newHeight) == plain) << sizes;
    EXPECT_TRUE(ShrinkExchanging(block, width, height, newWidth, newHeight) == plain) << sizes;
}

TEST(Resample, CountsTheFirstPixelOfALineTwice) {
    const Bytes row = {10, 20, 30, 41, 51, 62, 70, 80, 90, 101, 111, 122};
    const Bytes shrunk = {20, 30, 40, 85, 95, 106};  // (2 * 10 + 41) / 3 ..., (70 + 101) / 2 ...
    EXPECT_EQ(Shrink(row, 4, 1, 2, 1), shrunk);
    EXPECT_EQ(Shrink(row, 1, 4, 1, 2), shrunk) << "columns as rows";
    EXPECT_EQ(Shrink(row, 4, 1, 4, 1), row) << "a line that keeps its length keeps its pixels";
    EXPECT_EQ(Shrink(row, 4, 1, 1, 1), (Bytes{46, 56, 66})) << "(2 * 10 + 41 + 70 + 101) / 5 ...";
}

TEST(Resample, GivesTheBytesOfThePlainTwoPasses) {
    std::mt19937 random(20240621);
    const auto upTo = [&](std::size_t limit) { return random() % limit + 1; };
    for (int round = 0; round < 1500; ++round) {
        const std::size_t width = upTo(round % 3 == 0 ? 300 : 40);
        const std::size_t height = upTo(round % 5 == 0 ? 200 : 40);
        const std::size_t newWidth = round % 7 == 0 ? width : upTo(width);
        const std::size_t newHeight = round % 11 == 0 ? height : upTo(height);
        ExpectPlain(Noise(width * height * 3, static_cast<unsigned>(round)), width, height,
                    newWidth, newHeight);
        if (HasFailure()) return;
    }
}

// Maps are halved, or shrunk by less, at full speed: each width leaves other pixels over at the end
// of a row that is worked on in larger pieces.
TEST(Resample, GivesTheBytesOfThePlainTwoPassesUpToHalf) {
    const std::size_t heights[][2] = {{1, 1}, {2, 1}, {3, 2}, {4, 2}, {9, 5}, {14, 7}};
    for (std::size_t newWidth = 1; newWidth <= 40; ++newWidth) {
        for (const std::size_t width : {newWidth, newWidth + 1, newWidth * 3 / 2, newWidth * 2 - 1,
                                        newWidth * 2, newWidth * 2 + 1}) {
            for (const auto& [height, newHeight] : heights) {
                ExpectPlain(Noise(width * height * 3, unsigned(width)), width, height, newWidth,
                            newHeight);
                if (HasFailure()) return;
            }
        }
    }
}

TEST(Resample, GivesTheBytesOfThePlainTwoPassesAtExtremeSides) {
    const std::size_t cases[][4] = {
        {65536, 1, 1, 1},     {65535, 2, 2, 1},     {2, 65536, 1, 3},  {65535, 3, 65534, 2},
        {3, 65535, 2, 65534}, {65535, 1, 32768, 1}, {70001, 2, 16, 2}, {1, 1, 1, 1},
        {6000, 3, 4096, 2},   {3, 4097, 3, 1},
    };
    for (const auto& [width, height, newWidth, newHeight] : cases) {
        ExpectPlain(Noise(width * height * 3, 1), width, height, newWidth, newHeight);
        ExpectPlain(Bytes(width * height * 3, 255), width, height, newWidth, newHeight);
    }
}

/// `count - 1` pixels whose sum, with the first one twice, is `sum` in all channels.
Bytes LineOfSum(std::uint32_t count, std::uint32_t sum) {
    Bytes line((count - 1) * 3, 0);
    for (std::size_t pixel = 1; pixel < count - 1; ++pixel) {
        const auto value = static_cast<std::uint8_t>(std::min(sum, 255U));
        std::fill_n(&line[pixel * 3], 3, value);
        sum -= value;
    }
    return line;
}

TEST(Resample, DividesExactlyOnBothSidesOfEachQuotient) {
    for (const std::uint32_t count : {3U, 4U, 7U, 255U, 4095U, 4096U, 4097U, 65535U, 65537U}) {
        for (const std::uint32_t quotient : {1U, 2U, 100U, 200U, 253U}) {
            const std::uint32_t largest = 255 * (count - 2);  // the doubled pixel stays 0
            const std::uint32_t sum = quotient * count;
            if (sum > largest) continue;
            const std::size_t size = count - 1;
            for (const std::uint32_t less : {0U, 1U}) {
                const Bytes line = LineOfSum(count, sum - less);
                EXPECT_EQ(Shrink(line, size, 1, 1, 1)[0], quotient - less) << sum << " / " << count;
                EXPECT_EQ(Shrink(line, 1, size, 1, 1)[0], quotient - less) << sum << " / " << count;
            }
        }
    }
}

}  // namespace
