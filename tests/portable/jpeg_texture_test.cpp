#include "image/jpeg_texture.h"

#include <gmock/gmock.h>

#include <cstring>

#include "image/texture_limits.h"
#include "support/table.h"
#include "support/texture_pixels.h"

namespace {

using testing::ElementsAre;

/// Says that it is as large as a picture can be, without having pixels.
class HugePicture final : public Picture {
public:
    bool IsOk() const noexcept override { return true; }
    std::int32_t GetWidth() const noexcept override { return kHugeSide - 3; }
    std::int32_t GetHeight() const noexcept override { return kHugeSide; }
    std::int32_t GetPixelFormat() const noexcept override { return kPixelFormat24bppRgb; }
    PixelRows LockForReading() override { return {}; }
    void Unlock() noexcept override {}
};

class JpegTextureTest : public testing::Test {
protected:
    void SetUp() override { Files() = {}; }
    void TearDown() override {
        EXPECT_EQ(MemoryPicture::LiveCount(), 0) << "a picture was not destroyed";
        EXPECT_EQ(MemoryPicture::LockCount(), 0) << "a picture was left locked";
    }
};

/// The buffer shows the image in its first columns of rows 0 to height - 1 and zeros elsewhere.
void ExpectShows(const CJpegTexture& texture, const MemoryImage& image) {
    for (int row = 0; row < texture.GetBufferHeight(); ++row) {
        for (int x = 0; x < texture.GetBufferWidth(); ++x) {
            const int fromTop = image.height - 1 - row;
            const bool inside = x < image.width && fromTop >= 0;
            ASSERT_EQ(TextureColour(texture, x, texture.GetHeight() - 1 - row),
                      inside ? ImageColour(image, x, fromTop) : 0U)
                << "pixel " << x << ", " << row;
        }
    }
}

TEST_F(JpegTextureTest, LoadPadsTheBufferOrRefusesWhatIsAboveTheLimits) {
    for (const Row& row : Table("texture_load")) {
        SCOPED_TRACE(row.why);
        MemoryImage image = NoiseImage(row.Int(0), row.Int(1));
        image.bottomUp = row.Int(0) % 2 == 0;
        CJpegTexture texture;
        const bool fits = row.Int(4) != 0;
        EXPECT_EQ(LoadImage(texture, image, row.Int(2), row.Int(3)),
                  fits ? kLoadedUnchanged : kLoadFailed);
        const int shown = fits ? 1 : 0;
        EXPECT_THAT(Sizes(texture),
                    ElementsAre(shown * row.Int(0), shown * row.Int(1), row.Int(4), row.Int(5)));
        ExpectShows(texture, image);
    }
    CJpegTexture texture;
    const MemoryImage grey = NoiseImage(6, 4, kPixelFormat8bppIndexed);
    EXPECT_EQ(LoadImage(texture, grey), kLoadedUnchanged);
    EXPECT_EQ(TextureColour(texture, 5, 0), grey.bytes[5] * 0x010101U);
}

TEST_F(JpegTextureTest, AFailedLoadLeavesNothing) {
    CJpegTexture plain;
    CGLTexture fitted;
    for (CJpegTexture* texture : {&plain, static_cast<CJpegTexture*>(&fitted)}) {
        for (int failure = 0; failure < 6; ++failure) {
            LoadImage(*texture, NoiseImage(20, 10));  // something to lose
            MemoryImage bad = NoiseImage(20, 10, kPixelFormat32bppArgb);
            bad.readable = failure != 0;
            bad.lockable = failure != 1;
            bad.convertible = failure != 2;
            const int result = failure < 3   ? LoadImage(*texture, bad, 64, 64)
                               : failure < 4 ? texture->Load(nullptr, 64, 64)
                               : failure < 5 ? texture->LoadFromFile(L"missing.jpg", 64, 64)
                                             : texture->Load(std::make_unique<HugePicture>(), 0, 0);
            EXPECT_EQ(result, kLoadFailed) << failure;
            EXPECT_THAT(Sizes(*texture), ElementsAre(0, 0, 0, 0)) << failure;
            EXPECT_EQ(texture->GetPixels(), nullptr) << failure;
        }
    }
}

TEST_F(JpegTextureTest, TheMapTextureShrinksToPowersOfTwoOrItsLimits) {
    for (const Row& row : Table("texture_shrink")) {
        CGLTexture texture;
        Files().pictures[L"map.jpg"] = NoiseImage(row.Int(0), row.Int(1));
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
    CGLTexture empty;
    EXPECT_FALSE(FitToLimits(empty, 64, 64) || empty.MakePowerOfTwo());
}

TEST_F(JpegTextureTest, ALoadThatShrinksGivesTheBytesOfLoadAndRescale) {
    const int cases[][4] = {
        {64, 32, 32, 16},     {64, 32, 64, 16}, {68, 34, 32, 16}, {1080, 540, 1024, 512},
        {1000, 512, 64, 512}, {44, 16, 16, 8},  {42, 30, 32, 16}, {16, 300, 16, 16},
    };
    for (const auto& [width, height, maxWidth, maxHeight] : cases) {
        MemoryImage image = NoiseImage(width, height);
        image.bottomUp = width == 1000;
        CGLTexture shrunk;
        EXPECT_EQ(LoadImage(shrunk, image, maxWidth, maxHeight), kLoadedShrunk) << width;
        CGLTexture plain;
        LoadImage(plain, image);
        EXPECT_TRUE(plain.Rescale(shrunk.GetWidth(), shrunk.GetHeight())) << width;
        EXPECT_EQ(Sizes(shrunk), Sizes(plain)) << width;
        const auto bytes = static_cast<std::size_t>(plain.GetWidth() * plain.GetHeight() * 3);
        EXPECT_EQ(std::memcmp(shrunk.GetPixels(), plain.GetPixels(), bytes), 0) << width;
    }
}

TEST_F(JpegTextureTest, RescaleRefusesWhatIsNoShrinkingAndTakesInThePadding) {
    const MemoryImage image = NoiseImage(30, 20);
    CJpegTexture texture;
    LoadImage(texture, image);
    const int wrong[][2] = {{0, 5}, {5, 0}, {-1, 5}, {31, 5}, {5, 21}};
    for (const auto& size : wrong) EXPECT_FALSE(texture.Rescale(size[0], size[1])) << size[0];
    ExpectShows(texture, image);
    texture.ConvertToRgba(1);
    EXPECT_FALSE(texture.Rescale(8, 8)) << "4 bytes a pixel";
    MemoryImage white = NoiseImage(3, 1);
    white.bytes.assign(9, 240);
    LoadImage(texture, white);  // a buffer of 4
    EXPECT_TRUE(texture.Rescale(2, 1));
    EXPECT_EQ(TextureColour(texture, 0, 0), 0xF0F0F0U);
    EXPECT_EQ(TextureColour(texture, 1, 0), 0x787878U) << "half of it padding";
}

TEST_F(JpegTextureTest, SaysWhatTheSizesMeanToOpenGl) {
    for (const int width : {6, 258, 1026, 2, 1024, 1, 7}) {
        CJpegTexture texture;
        LoadImage(texture, NoiseImage(width, 32));
        EXPECT_EQ(texture.HasBorder(), width == 6 || width == 258 || width == 1026) << width;
        EXPECT_FALSE(texture.IsPowerOfTwoSize()) << "no height is enough";
    }
}

TEST_F(JpegTextureTest, WithoutMemoryEachOperationKeepsItsPromise) {
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
    EXPECT_FALSE(texture.PadBuffer(kHugeSide, kHugeSide));
    EXPECT_EQ(texture.GetPixels(), nullptr);
    EXPECT_THAT(Sizes(texture), ElementsAre(0, 0, 0, 0));
}

}  // namespace
