#include <gtest/gtest.h>

#include <string>

#include "support/memory_bytes.h"

namespace {

using std::string_literals::operator""s;
using Found = std::vector<int>;  // width, height, components

const Found kRefused = {-7, -8, -9};  // as it was before
const std::string kStart = "\xFF\xD8";
const std::string kGrey16x15 = "\xFF\xC0\0\x0B\x08\0\x0F\0\x10\1"s;
const std::string kProgressive = "\xFF\xC2\0\x11\x08\x0A\x8C\x15\x18\3"s;

Found Read(const std::string& bytes, int skips = 1000) {
    const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
    MemoryBytes source(exact, skips);
    JpegSize size{-7, -8, -9};
    const bool isJpeg = ReadJpegHeader(source, size);
    EXPECT_EQ(isJpeg, size.width != -7);
    return {size.width, size.height, size.components};
}

/// A segment whose length field counts itself and `payload` bytes; they look like a frame header.
std::string Segment(char marker, std::size_t payload) {
    const std::size_t length = payload + 2;
    std::string bytes = {'\xFF', marker, static_cast<char>(length >> 8), static_cast<char>(length)};
    for (std::size_t i = 0; i < payload; ++i) bytes += i % 2 == 0 ? '\xFF' : '\xC0';
    return bytes;
}

TEST(JpegHeader, FindsTheFrameBehindTheSegmentsBeforeItAndRefusesWhatIsNoJpeg) {
    const Found small = {16, 15, 1};
    const struct {
        const char* why;
        std::string bytes;
        Found found;
    } cases[] = {
        {"the frame at once", kStart + kGrey16x15, small},
        {"progressive, behind two segments",
         kStart + Segment('\xE0', 13) + Segment('\xE1', 4099) + kProgressive,
         {5400, 2700, 3}},
        {"the longest segment", kStart + Segment('\xFE', 65533) + kGrey16x15, small},
        {"an empty segment", kStart + Segment('\xFE', 0) + kGrey16x15, small},
        {"another frame type", kStart + Segment('\xC1', 15) + kGrey16x15, small},
        {"the largest", kStart + "\xFF\xC0\0\x14\x08\xFF\xFF\xFF\xFF\4"s, {65535, 65535, 4}},
        {"a PNG", "\x89PNG\r\n\x1A\n\0\0\0\rIHDR"s, kRefused},
        {"an end in place of a start", "\xFF\xD9" + kGrey16x15, kRefused},
        {"no marker behind a segment", kStart + Segment('\xDA', 10) + "\x12" + kGrey16x15.substr(1),
         kRefused},
        {"a length of 0 leads back into itself", kStart + "\xFF\xE0\0\0"s + kGrey16x15, kRefused},
        {"so does 1", kStart + "\xFF\xE0\0\1"s + kGrey16x15, kRefused},
        {"a fill byte is taken for a marker", kStart + "\xFF" + kGrey16x15, kRefused},
    };
    for (const auto& c : cases) EXPECT_EQ(Read(c.bytes), c.found) << c.why;
}

TEST(JpegHeader, RefusesAHeaderCutAfterAnyByteOrThatCannotMoveOn) {
    const std::string whole = kStart + Segment('\xE0', 5) + Segment('\xDB', 6) + kProgressive;
    for (std::size_t end = 0; end < whole.size(); ++end) {
        EXPECT_EQ(Read(whole.substr(0, end)), kRefused) << "cut after " << end;
    }
    for (int skips = 0; skips <= 2; ++skips) EXPECT_EQ(Read(whole, skips) == kRefused, skips < 2);
}

}  // namespace
