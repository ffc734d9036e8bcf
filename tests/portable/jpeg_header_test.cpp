#include <gtest/gtest.h>

#include <vector>

#include "support/memory_bytes.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes Start() { return {0xFF, 0xD8}; }

/// What a header says, or {-7, -8, -9} as it was before where it is refused.
std::vector<int> Read(const Bytes& bytes, int skips = 1000) {
    MemoryBytes source(bytes, skips);
    JpegSize size{-7, -8, -9};
    const bool isJpeg = ReadJpegHeader(source, size);
    EXPECT_EQ(isJpeg, size.width != -7);
    return {size.width, size.height, size.components};
}

const std::vector<int> kRefused = {-7, -8, -9};
const std::vector<int> kSmall = {16, 15, 1};
const Bytes kGrey16x15 = {0xFF, 0xC0, 0, 11, 8, 0, 15, 0, 16, 1};
const Bytes kProgressive = {0xFF, 0xC2, 0, 17, 8, 0x0A, 0x8C, 0x15, 0x18, 3};

/// A segment whose length field counts itself and `payload` bytes; they look like a frame header.
Bytes Segment(std::uint8_t marker, std::size_t payload) {
    const std::size_t length = payload + 2;
    Bytes bytes = {0xFF, marker, static_cast<std::uint8_t>(length >> 8),
                   static_cast<std::uint8_t>(length)};
    for (std::size_t i = 0; i < payload; ++i) bytes.push_back(i % 2 == 0 ? 0xFF : 0xC0);
    return bytes;
}

TEST(JpegHeader, FindsTheFrameBehindTheSegmentsBeforeIt) {
    EXPECT_EQ(Read(Start() + kGrey16x15), kSmall);
    EXPECT_EQ(Read(Start() + Segment(0xE0, 13) + Segment(0xE1, 4099) + kProgressive),
              (std::vector<int>{5400, 2700, 3}));
    EXPECT_EQ(Read(Start() + Segment(0xFE, 65533) + kGrey16x15), kSmall) << "longest segment";
    EXPECT_EQ(Read(Start() + Segment(0xFE, 0) + kGrey16x15), kSmall) << "empty segment";
    EXPECT_EQ(Read(Start() + Segment(0xC1, 15) + kGrey16x15), kSmall) << "another frame type";
    EXPECT_EQ(Read(Start() + Bytes{0xFF, 0xC0, 0, 20, 8, 255, 255, 255, 255, 4}),
              (std::vector<int>{65535, 65535, 4}));
    // A fill byte is taken for a marker and the real one for a length: 0xC000 leads to a frame.
    Bytes filled = Start() + Bytes{0xFF, 0xFF, 0xC0, 0x00};
    filled.resize(filled.size() + 0xBFFE, 0xAA);
    EXPECT_EQ(Read(filled + kGrey16x15), kSmall);
}

TEST(JpegHeader, RefusesWhatIsNoJpegAndLeavesTheResultAlone) {
    const Bytes cases[] = {
        {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'},
        Start() + Segment(0xC1, 15),
        Start() + Segment(0xDA, 10) + Bytes{0x12, 0x34} + kGrey16x15,
        // Lengths of 0 and 1 lead back into themselves.
        Start() + Bytes{0xFF, 0xE0, 0, 0} + kGrey16x15,
        Start() + Bytes{0xFF, 0xE0, 0, 1} + kGrey16x15,
        Start() + Bytes{0xFF, 0xE0, 0xFF, 0xFF, 1, 2, 3},
        Start() + Bytes{0xFF} + kGrey16x15,
    };
    for (const Bytes& bytes : cases) EXPECT_EQ(Read(bytes), kRefused) << &bytes - cases;
}

TEST(JpegHeader, RefusesAHeaderCutAfterAnyByteOrThatCannotMoveOn) {
    const Bytes whole = Start() + Segment(0xE0, 5) + Segment(0xDB, 6) + kProgressive;
    for (auto end = whole.begin(); end != whole.end(); ++end) {
        EXPECT_EQ(Read({whole.begin(), end}), kRefused) << "cut after " << end - whole.begin();
    }
    for (int skips = 0; skips <= 2; ++skips) EXPECT_EQ(Read(whole, skips) == kRefused, skips < 2);
}

}  // namespace
