// Single pixels of a texture, and how they reach the encoder.

#include <gmock/gmock.h>

#include "image/jpeg_texture.h"
#include "support/texture_pixels.h"

namespace {

using testing::ElementsAre;

std::vector<int> Bytes(const CJpegTexture& texture) {
    const int count =
        texture.GetBufferWidth() * texture.GetBufferHeight() * texture.GetBytesPerPixel();
    return {texture.GetPixels(), texture.GetPixels() + count};
}

/// A row of four pixels whose packed values are 0x030201, 0x060504, 0x090807, 0x0C0B0A.
class PixelsTest : public testing::Test {
protected:
    void SetUp() override {
        Files() = {};
        MemoryImage image = NoiseImage(4, 1);
        image.bytes = {3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10};  // B, G, R
        LoadImage(texture, image);
    }

    CJpegTexture texture;
};

TEST_F(PixelsTest, WideningAddsAByteOrAsksTheFunction) {
    CJpegTexture asked(texture);
    EXPECT_TRUE(texture.ConvertToRgba(0x80));
    EXPECT_THAT(Bytes(texture),
                ElementsAre(1, 2, 3, 128, 4, 5, 6, 128, 7, 8, 9, 128, 10, 11, 12, 128));
    EXPECT_FALSE(texture.ConvertToRgba(1)) << "4 bytes already";
    EXPECT_FALSE(asked.ConvertToRgbaWith(nullptr));
    EXPECT_TRUE(asked.ConvertToRgbaWith([](std::uint32_t packed, std::int32_t bytesPerPixel) {
        return (packed << 8U) | static_cast<std::uint32_t>(bytesPerPixel);
    }));
    EXPECT_THAT(Bytes(asked), ElementsAre(3, 1, 2, 3, 3, 4, 5, 6, 3, 7, 8, 9, 3, 10, 11, 12));
}

TEST_F(PixelsTest, ReplacesColoursByTheirPackedValueOrBrightness) {
    texture.ReplaceColor(0x060504, 0xAABBCCDD);
    texture.ReplaceColor(0xFF090807, 0);  // no 3-byte pixel reads like that
    EXPECT_THAT(Bytes(texture), ElementsAre(1, 2, 3, 0xDD, 0xCC, 0xBB, 7, 8, 9, 10, 11, 12));
    SetUp();
    texture.ConvertToRgba(0xFF);  // brightness 2, 5, 8, 11: the alpha does not count
    texture.ReplaceByBrightness(5, 8, 0x01020304);
    texture.ReplaceColor(0xFF030201, 0x11223344);
    EXPECT_THAT(Bytes(texture),
                ElementsAre(0x44, 0x33, 0x22, 0x11, 4, 3, 2, 1, 4, 3, 2, 1, 10, 11, 12, 255));
}

TEST_F(PixelsTest, ExchangingRedAndBlueSparesTheLastQuarterOfAFourByteRow) {
    EXPECT_TRUE(texture.SwapRedBlue());
    EXPECT_THAT(Bytes(texture), ElementsAre(3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10));
    SetUp();
    texture.ConvertToRgba(0);
    EXPECT_TRUE(texture.SwapRedBlue());
    EXPECT_THAT(Bytes(texture), ElementsAre(3, 2, 1, 0, 6, 5, 4, 0, 9, 8, 7, 0, 10, 11, 12, 0));
}

TEST_F(PixelsTest, AnEmptyTextureDoesNothing) {
    CJpegTexture empty;
    EXPECT_FALSE(empty.ConvertToRgba(1) || empty.SwapRedBlue() || empty.SaveJpeg(L"map.jpg", 85));
    EXPECT_FALSE(empty.Rescale(1, 1) || empty.PadBuffer(16, 16));
    empty.ReplaceByBrightness(0, 255, 1);
}

}  // namespace
