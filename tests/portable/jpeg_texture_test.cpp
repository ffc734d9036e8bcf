#include "image/jpeg_texture.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "image/texture_limits.h"
#include "support/table.h"
#include "support/texture_pixels.h"

namespace {

using testing::ElementsAre;

class JpegTextureTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(MemoryPicture::LiveCount(), 0) << "a picture was not destroyed";
        EXPECT_EQ(MemoryPicture::LockCount(), 0) << "a picture was left locked";
    }
};

/// A buffer that shows a 24-bit image in its first columns and rows, bottom row first, and zeros
/// elsewhere.
std::vector<int> Showing(const MemoryImage& image, int bufferWidth, int bufferHeight) {
    std::vector<int> bytes(static_cast<std::size_t>(bufferWidth * bufferHeight * 3));
    for (int row = 0; row < image.height; ++row) {
        const auto source = image.bytes.rbegin() + row * image.width * 3;
        const auto target = bytes.begin() + row * bufferWidth * 3;
        // Backwards B, G, R become R, G, B, and the last pixel of a row the first one.
        for (int x = 0; x < image.width; ++x) {
            std::copy_n(source + x * 3, 3, target + (image.width - 1 - x) * 3);
        }
    }
    return bytes;
}

TEST_F(JpegTextureTest, LoadPadsTheBufferOrRefusesWhatIsAboveTheLimits) {
    for (const Row& row : Table("texture_load")) {
        SCOPED_TRACE(row.why);
        MemoryImage image = NoiseImage(row.Int(0), row.Int(1));
        image.bottomUp = image.width % 2 == 0;
        CJpegTexture texture;
        const int result = LoadImage(texture, image, row.Int(2), row.Int(3));
        if (row.Int(4) == 0) {
            EXPECT_EQ(result, kLoadFailed);
            EXPECT_THAT(Sizes(texture), ElementsAre(0, 0, 0, 0));
            continue;
        }
        EXPECT_EQ(result, kLoadedUnchanged);
        EXPECT_THAT(Sizes(texture), ElementsAre(image.width, image.height, row.Int(4), row.Int(5)));
        EXPECT_TRUE(Bytes(texture) == Showing(image, row.Int(4), row.Int(5)));
    }
    CJpegTexture texture;
    MemoryImage grey = NoiseImage(4, 1, kPixelFormat8bppIndexed);
    grey.bytes = {1, 2, 3, 4};
    EXPECT_EQ(LoadImage(texture, grey), kLoadedUnchanged);
    EXPECT_THAT(Bytes(texture), ElementsAre(1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4));
    const int conversions = MemoryPicture::ConversionCount();
    EXPECT_EQ(LoadImage(texture, NoiseImage(129, 8, kPixelFormat8bppIndexed), 128, 256),
              kLoadFailed);
    EXPECT_EQ(MemoryPicture::ConversionCount(), conversions) << "a refused picture is not decoded";
}

TEST_F(JpegTextureTest, AFailedLoadLeavesNothing) {
    const MemoryImage good = NoiseImage(20, 10, kPixelFormat32bppArgb);
    PictureFiles() = {{L"locked", good}, {L"strange", good}};
    PictureFiles()[L"locked"].lockable = false;
    PictureFiles()[L"strange"].convertible = false;
    MemoryImage& huge = PictureFiles()[L"huge"];
    huge.width = kHugeSide - 3;
    huge.height = kHugeSide;
    huge.lockable = false;
    CJpegTexture plain;
    CGLTexture fitted;
    for (CJpegTexture* texture : {&plain, static_cast<CJpegTexture*>(&fitted)}) {
        const auto expectNothing = [texture](int result, const wchar_t* why) {
            EXPECT_EQ(result, kLoadFailed) << why;
            EXPECT_THAT(Sizes(*texture), ElementsAre(0, 0, 0, 0)) << why;
            EXPECT_EQ(texture->GetPixels(), nullptr) << why;
        };
        for (const wchar_t* name : {L"locked", L"strange", L"huge", L"missing"}) {
            ASSERT_EQ(LoadImage(*texture, good), kLoadedUnchanged) << "something to lose";
            expectNothing(texture->LoadFromFile(name, 64, 64), name);
        }
        LoadImage(*texture, good);
        expectNothing(texture->Load(nullptr, 64, 64), L"no picture");
        LoadImage(*texture, good);
        expectNothing(texture->Load(OpenPicture(L"huge"), 0, 0), L"huge, no limits");
    }
}

TEST_F(JpegTextureTest, TheMapTextureShrinksToPowersOfTwoOrItsLimits) {
    for (const Row& row : Table("texture_shrink")) {
        CGLTexture texture;
        PictureFiles()[L"map.jpg"] = NoiseImage(row.Int(0), row.Int(1));
        EXPECT_EQ(texture.LoadFromFile(L"map.jpg", row.Int(2), row.Int(3)), row.Int(4)) << row.why;
        EXPECT_EQ(texture.GetWidth(), row.Int(5)) << row.why;
        EXPECT_EQ(texture.GetHeight(), row.Int(6)) << row.why;
    }
    for (const Row& row : Table("texture_fit")) {
        CGLTexture texture;
        LoadImage(texture, NoiseImage(row.Int(0), row.Int(1)));
        EXPECT_TRUE(FitToLimits(texture, row.Int(2), row.Int(3)));
        EXPECT_EQ(texture.GetBufferWidth(), row.Int(4)) << row.why;
        EXPECT_EQ(texture.GetBufferHeight(), row.Int(5)) << row.why;
    }
    for (const Row& row : Table("scaled_limit")) {
        EXPECT_EQ(ScaledLimit(row.Int(0), row.Int(1)), row.Int(2)) << row.why;
    }
}

TEST_F(JpegTextureTest, ALoadThatShrinksGivesTheBytesOfLoadAndRescale) {
    const int cases[][4] = {{64, 32, 64, 16},     {68, 34, 32, 16}, {1080, 540, 1024, 512},
                            {1000, 512, 64, 512}, {42, 30, 32, 16}, {16, 300, 16, 16}};
    for (const auto& [width, height, maxWidth, maxHeight] : cases) {
        MemoryImage image = NoiseImage(width, height);
        image.bottomUp = width == 1000;
        CGLTexture shrunk;
        EXPECT_EQ(LoadImage(shrunk, image, maxWidth, maxHeight), kLoadedShrunk) << width;
        CGLTexture plain;
        LoadImage(plain, image);
        EXPECT_TRUE(plain.Rescale(shrunk.GetWidth(), shrunk.GetHeight())) << width;
        EXPECT_EQ(Sizes(shrunk), Sizes(plain)) << width;
        EXPECT_TRUE(Bytes(shrunk) == Bytes(plain)) << width;
    }
}

TEST_F(JpegTextureTest, RescaleRefusesWhatIsNoShrinkingAndTakesInThePadding) {
    CJpegTexture texture;
    LoadImage(texture, NoiseImage(30, 20));
    const std::vector<int> before = Bytes(texture);
    const int wrong[][2] = {{0, 5}, {5, 0}, {31, 5}, {5, 21}};
    for (const auto& size : wrong) EXPECT_FALSE(texture.Rescale(size[0], size[1])) << size[0];
    EXPECT_EQ(Bytes(texture), before);
    texture.ConvertToRgba(1);
    EXPECT_FALSE(texture.Rescale(8, 8)) << "4 bytes a pixel";
    MemoryImage white = NoiseImage(3, 1);
    white.bytes.assign(9, 240);
    LoadImage(texture, white);  // a buffer of 4
    EXPECT_TRUE(texture.Rescale(2, 1));
    EXPECT_THAT(Bytes(texture), ElementsAre(240, 240, 240, 120, 120, 120)) << "half padding";
}

TEST_F(JpegTextureTest, SaysWhatTheSizesMeanToOpenGl) {
    for (const int width : {6, 1026, 2, 1024, 1, 7}) {
        CJpegTexture texture;
        LoadImage(texture, NoiseImage(width, 32));
        EXPECT_EQ(texture.HasBorder(), width == 6 || width == 1026) << width;
        EXPECT_FALSE(texture.IsPowerOfTwoSize()) << "no height is enough";
    }
}

TEST_F(JpegTextureTest, WithoutMemoryOrPixelsEachOperationKeepsItsPromise) {
    Claimed<CJpegTexture> texture;
    LoadImage(texture, NoiseImage(4, 4));
    texture.ClaimBuffer(kHugeSide, kHugeSide);
    const CJpegTexture copy(texture);
    EXPECT_EQ(copy.GetPixels(), nullptr);
    EXPECT_EQ(copy.GetWidth(), kHugeSide) << "a copy keeps its numbers";
    EXPECT_FALSE(texture.ConvertToRgba(1));
    EXPECT_EQ(texture.GetBytesPerPixel(), 3) << "a widening changes nothing";
    EXPECT_NE(texture.GetPixels(), nullptr);
    texture.ClaimBuffer(4, 4);
    EXPECT_FALSE(texture.PadBuffer(kHugeSide, kHugeSide) || texture.SwapRedBlue());
    EXPECT_EQ(texture.GetPixels(), nullptr);
    EXPECT_THAT(Sizes(texture), ElementsAre(0, 0, 0, 0));
    CGLTexture empty;
    EXPECT_FALSE(empty.ConvertToRgba(1) || empty.SwapRedBlue() || empty.SaveJpeg(L"map.jpg", 85));
    EXPECT_FALSE(empty.Rescale(1, 1) || empty.PadBuffer(16, 16));
    EXPECT_FALSE(FitToLimits(empty, 64, 64) || empty.MakePowerOfTwo());
    empty.ReplaceByBrightness(0, 255, 1);
}

/// A row of four pixels whose packed values are 0x030201, 0x060504, 0x090807, 0x0C0B0A.
CJpegTexture FourPixels() {
    CJpegTexture texture;
    MemoryImage image = NoiseImage(4, 1);
    image.bytes = {3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10};  // B, G, R
    LoadImage(texture, image);
    return texture;
}

TEST(TexturePixels, WideningAddsAByteOrAsksTheFunction) {
    CJpegTexture texture = FourPixels();
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

TEST(TexturePixels, ColoursAreReplacedByTheirPackedValueOrBrightness) {
    CJpegTexture texture = FourPixels();
    texture.ReplaceColor(0x060504, 0xAABBCCDD);
    texture.ReplaceColor(0xFF090807, 0);  // no 3-byte pixel reads like that
    EXPECT_THAT(Bytes(texture), ElementsAre(1, 2, 3, 0xDD, 0xCC, 0xBB, 7, 8, 9, 10, 11, 12));
    texture = FourPixels();
    texture.ConvertToRgba(0xFF);  // brightness 2, 5, 8, 11: the alpha does not count
    texture.ReplaceByBrightness(5, 8, 0x01020304);
    texture.ReplaceColor(0xFF030201, 0x11223344);
    EXPECT_THAT(Bytes(texture),
                ElementsAre(0x44, 0x33, 0x22, 0x11, 4, 3, 2, 1, 4, 3, 2, 1, 10, 11, 12, 255));
}

TEST(TexturePixels, ExchangingRedAndBlueSparesTheLastQuarterOfAFourByteRow) {
    CJpegTexture texture = FourPixels();
    EXPECT_TRUE(texture.SwapRedBlue());
    EXPECT_THAT(Bytes(texture), ElementsAre(3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10));
    texture = FourPixels();
    texture.ConvertToRgba(0);
    EXPECT_TRUE(texture.SwapRedBlue());
    EXPECT_THAT(Bytes(texture), ElementsAre(3, 2, 1, 0, 6, 5, 4, 0, 9, 8, 7, 0, 10, 11, 12, 0));
}

}  // namespace
