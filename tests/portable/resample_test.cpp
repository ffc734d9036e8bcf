#include "image/resample.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "support/memory_picture.h"
#include "support/plain_shrink.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Shrink(Bytes block, BlockSize from, BlockSize to) {
    EXPECT_TRUE(ShrinkPixels(block.data(), from, to));
    block.resize(to.width * to.height * 3);
    return block;
}

/// The same from rows that lie upside down elsewhere, red and blue exchanged.
Bytes ShrinkExchanging(const Bytes& block, BlockSize from, BlockSize to) {
    const auto rowBytes = static_cast<std::ptrdiff_t>(from.width * 3);
    Bytes rows;
    for (auto end = block.end(); end != block.begin(); end -= rowBytes) {
        rows.insert(rows.end(), end - rowBytes, end);
    }
    Bytes shrunk(to.width * to.height * 3);
    EXPECT_TRUE(ShrinkExchangingRedBlue(&rows[(from.height - 1) * from.width * 3], -rowBytes, from,
                                        to, shrunk.data()));
    for (std::size_t i = 0; i < shrunk.size(); i += 3) std::swap(shrunk[i], shrunk[i + 2]);
    return shrunk;
}

/// Noise of the old sides gives the bytes of the plain two passes at the new ones.
void ExpectPlain(int width, int height, int newWidth, int newHeight) {
    const Bytes noise = NoiseImage(width, height).bytes;
    const Bytes plain = PlainShrink(noise, width, height, newWidth, newHeight);
    const BlockSize from{std::size_t(width), std::size_t(height)};
    const BlockSize to{std::size_t(newWidth), std::size_t(newHeight)};
    EXPECT_TRUE(Shrink(noise, from, to) == plain && ShrinkExchanging(noise, from, to) == plain)
        << width << " x " << height << " to " << newWidth << " x " << newHeight;
}

TEST(Resample, CountsTheFirstPixelOfALineTwice) {
    const Bytes row = {10, 20, 30, 41, 51, 62, 70, 80, 90, 101, 111, 122};
    const Bytes shrunk = {20, 30, 40, 85, 95, 106};  // (2 * 10 + 41) / 3 ..., (70 + 101) / 2 ...
    EXPECT_EQ(Shrink(row, {4, 1}, {2, 1}), shrunk);
    EXPECT_EQ(Shrink(row, {1, 4}, {1, 2}), shrunk) << "columns as rows";
    EXPECT_EQ(Shrink(row, {4, 1}, {4, 1}), row) << "a line that keeps its length keeps its pixels";
}

TEST(Resample, GivesTheBytesOfThePlainTwoPasses) {
    std::mt19937 random(20240621);
    const auto upTo = [&](int limit) { return static_cast<int>(random() % unsigned(limit)) + 1; };
    for (int round = 0; round < 1500 && !HasFailure(); ++round) {
        const int width = upTo(round % 3 == 0 ? 300 : 40);
        const int height = upTo(round % 5 == 0 ? 200 : 40);
        ExpectPlain(width, height, round % 7 == 0 ? width : upTo(width),
                    round % 11 == 0 ? height : upTo(height));
    }
    // Sides whose products need more than 32 bits.
    const int cases[][4] = {{65535, 3, 65534, 2}, {3, 65535, 2, 65534}, {70001, 2, 16, 2}};
    for (const auto& [width, height, newWidth, newHeight] : cases) {
        ExpectPlain(width, height, newWidth, newHeight);
    }
}

// Maps are halved, or shrunk by less, at full speed: each width leaves other pixels over at the end
// of a row that is worked on in larger pieces.
TEST(Resample, GivesTheBytesOfThePlainTwoPassesUpToHalf) {
    const int heights[][2] = {{1, 1}, {2, 1}, {4, 2}, {9, 5}};
    for (int to = 1; to <= 40 && !HasFailure(); ++to) {
        for (const int from : {to + 1, to * 3 / 2, to * 2 - 1, to * 2, to * 2 + 1}) {
            for (const auto& [height, newHeight] : heights) {
                ExpectPlain(from, height, to, newHeight);
            }
        }
    }
}

TEST(Resample, DividesExactlyOnBothSidesOfEachQuotient) {
    for (const std::size_t size : {2, 3, 6, 254, 4094, 4095, 4096, 65534, 65536}) {
        for (const int quotient : {1, 2, 100, 200, 255}) {
            Bytes line(size * 3, static_cast<std::uint8_t>(quotient));
            for (int less = 0; less < 2; ++less) {
                EXPECT_EQ(Shrink(line, {size, 1}, {1, 1})[2], quotient - less) << size << " pixels";
                EXPECT_EQ(Shrink(line, {1, size}, {1, 1})[2], quotient - less) << size << " rows";
                --line.back();
            }
        }
    }
}

}  // namespace
