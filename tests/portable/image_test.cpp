// Textures loaded, shrunk, changed pixel by pixel, saved and cut into tiles.
#include <gmock/gmock.h>

#include <array>
#include <random>

#include "image/jpeg_texture.h"
#include "image/resample.h"
#include "image/texture_limits.h"
#include "image/tile_grid.h"
#include "support/memory_picture.h"
#include "support/plain_shrink.h"

namespace {

using testing::ElementsAre;

struct TextureTest : testing::Test {
    ~TextureTest() override {
        EXPECT_EQ(MemoryPicture::live, 0) << "a picture was not destroyed";
        EXPECT_EQ(MemoryPicture::locks, 0) << "a picture was left locked";
    }
};

/// Width, height and those of the buffer.
std::vector<int> Sizes(const CJpegTexture& texture) {
    return {texture.GetWidth(), texture.GetHeight(), texture.GetBufferWidth(),
            texture.GetBufferHeight()};
}

/// A buffer that shows a 24-bit image in its first columns and rows, bottom row first, and zeros
/// elsewhere.
std::vector<int> Showing(const MemoryImage& image, int bufferWidth, int bufferHeight) {
    std::vector<int> bytes(std::size_t(bufferWidth * bufferHeight * 3));
    for (int i = 0; i < std::ssize(image.bytes); ++i) {
        const int row = image.height - 1 - i / 3 / image.width;
        const int pixel = row * bufferWidth + i / 3 % image.width;
        bytes[std::size_t(pixel * 3 + 2 - i % 3)] = image.bytes[std::size_t(i)];
    }
    return bytes;
}

TEST_F(TextureTest, LoadPadsTheBufferOrRefusesWhatIsAboveTheLimits) {
    // Sides, limits, sides of the buffer; without both limits only a multiple of 4.
    const int cases[][6] = {{1001, 3, 0, 0, 1004, 3},       {30, 5, 64, 0, 32, 5},
                            {1, 1, 64, 64, 16, 16},         {1500, 17, 2048, 64, 2048, 32},
                            {1024, 16, 1024, 16, 1024, 16}, {16, 16, 1, 1, 16, 16}};
    for (const auto& [width, height, maxWidth, maxHeight, bufferWidth, bufferHeight] : cases) {
        const MemoryImage image = NoiseImage(width, height);
        CJpegTexture texture;
        EXPECT_EQ(LoadImage(texture, image, maxWidth, maxHeight), kLoadedUnchanged);
        EXPECT_THAT(Sizes(texture), ElementsAre(width, height, bufferWidth, bufferHeight));
        EXPECT_TRUE(Bytes(texture) == Showing(image, bufferWidth, bufferHeight)) << width;
    }
    CJpegTexture texture;
    EXPECT_EQ(LoadImage(texture, NoiseImage(1500, 17), 1024, 64), kLoadFailed);
    EXPECT_EQ(LoadImage(texture, NoiseImage(15, 65), 1024, 64), kLoadFailed);
    MemoryImage grey = NoiseImage(4, 1, kPixelFormat8bppIndexed);
    grey.bytes = {1, 2, 3, 4};
    EXPECT_EQ(LoadImage(texture, grey), kLoadedUnchanged);
    EXPECT_THAT(Bytes(texture), ElementsAre(1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4));
}

TEST_F(TextureTest, AFailedLoadLeavesNothing) {
    const MemoryImage good = NoiseImage(20, 10, kPixelFormat32bppArgb);
    PictureFiles() = {{L"locked", good}, {L"strange", good}};
    PictureFiles()[L"locked"].lockable = false;
    PictureFiles()[L"strange"].convertible = false;
    PictureFiles()[L"huge"] = {kHugeSide - 3, kHugeSide, kPixelFormat24bppRgb, {}, true, false};
    CJpegTexture plain;
    CGLTexture fitted;
    for (CJpegTexture* texture : {&plain, static_cast<CJpegTexture*>(&fitted)}) {
        for (const wchar_t* name : {L"locked", L"strange", L"huge", L"missing"}) {
            ASSERT_EQ(LoadImage(*texture, good), kLoadedUnchanged) << "something to lose";
            EXPECT_EQ(texture->LoadFromFile(name, 64, 64), kLoadFailed) << name;
            EXPECT_TRUE(Sizes(*texture) == Sizes({}) && texture->GetPixels() == nullptr) << name;
        }
        EXPECT_EQ(texture->Load(nullptr, 0, 0), kLoadFailed);
    }
}

TEST_F(TextureTest, TheMapShrinksToPowersOfTwoOrItsLimits) {
    // Sides, limits, result, sides after. Below 8 a side is kept as it is.
    const int loads[][7] = {{100, 50, 0, 64, 1, 100, 50},     {64, 32, 64, 64, 1, 64, 32},
                            {100, 33, 1024, 1024, 3, 64, 32}, {100, 70, 32, 16, 3, 32, 16},
                            {15, 9, 64, 64, 3, 8, 8},         {40, 7, 64, 64, 3, 40, 7}};
    for (const auto& [width, height, maxWidth, maxHeight, result, newWidth, newHeight] : loads) {
        CGLTexture texture;
        EXPECT_EQ(LoadImage(texture, NoiseImage(width, height), maxWidth, maxHeight), result);
        EXPECT_TRUE(texture.GetWidth() == newWidth && texture.GetHeight() == newHeight) << width;
    }
    // Width and height limit, width and height after; 100 x 50 before.
    const int fits[][4] = {{128, 64, 64, 32}, {80, 64, 80, 50}, {80, 40, 80, 40}};
    for (const auto& [widthLimit, heightLimit, width, height] : fits) {
        CGLTexture texture;
        LoadImage(texture, NoiseImage(100, 50));
        EXPECT_TRUE(FitToLimits(texture, widthLimit, heightLimit));
        EXPECT_THAT(Sizes(texture), ElementsAre(width, height, width, height));
    }
    EXPECT_TRUE(ScaledLimit(5, -1) == 2 && ScaledLimit(1 << 30, 1) == kHugeSide);
    EXPECT_TRUE(ScaledLimit(1, 999'999) == kHugeSide && ScaledLimit(kHugeSide, -999'999) == 0);
}

TEST_F(TextureTest, ALoadThatShrinksGivesTheBytesOfLoadAndRescale) {
    const int cases[][4] = {{64, 32, 64, 16},     {64, 32, 32, 16}, {1080, 540, 1024, 512},
                            {1000, 512, 64, 512}, {42, 30, 32, 16}, {16, 300, 16, 16}};
    for (const auto& [width, height, maxWidth, maxHeight] : cases) {
        const MemoryImage image = NoiseImage(width, height);
        CGLTexture shrunk;
        EXPECT_EQ(LoadImage(shrunk, image, maxWidth, maxHeight), kLoadedShrunk) << width;
        CGLTexture plain;
        LoadImage(plain, image);
        EXPECT_TRUE(plain.Rescale(shrunk.GetWidth(), shrunk.GetHeight())) << width;
        EXPECT_EQ(Sizes(shrunk), Sizes(plain)) << width;
        EXPECT_TRUE(Bytes(shrunk) == Bytes(plain)) << width;
    }
}

using Pixels = std::vector<std::uint8_t>;

Pixels Shrink(Pixels block, BlockSize from, BlockSize to) {
    EXPECT_TRUE(ShrinkPixels(block.data(), from, to));
    block.resize(to.width * to.height * 3);
    return block;
}

TEST(Resample, GivesTheBytesOfThePlainTwoPasses) {
    const Pixels row = {10, 20, 30, 41, 51, 62, 70, 80, 90, 101, 111, 122};
    const Pixels half = {20, 30, 40, 85, 95, 106};  // (2 * 10 + 41) / 3 ..., (70 + 101) / 2 ...
    EXPECT_EQ(Shrink(row, {4, 1}, {2, 1}), half) << "the first pixel counts twice";
    std::mt19937 random(20240621);
    const auto upTo = [&](int limit) { return static_cast<int>(random() % unsigned(limit)) + 1; };
    for (int i = 0; i < 1500; ++i) {
        // The first sides have products of more than 32 bits; most have the fast path up to half.
        const int width = i == 0 ? 65535 : upTo(i % 3 == 0 ? 300 : 80);
        const int height = i == 1 ? 65535 : i == 0 ? 3 : upTo(i % 5 == 0 ? 200 : 40);
        const int newWidth = i % 3 == 1 ? upTo(width) : width - upTo(width / 2 + 1) + 1;
        const int newHeight = i % 4 == 1 ? height : upTo(height);
        const Pixels noise = NoiseImage(width, height).bytes;
        ASSERT_TRUE(Shrink(noise, {std::size_t(width), std::size_t(height)},
                           {std::size_t(newWidth), std::size_t(newHeight)}) ==
                    PlainShrink(noise, width, height, newWidth, newHeight))
            << width << " x " << height << " to " << newWidth << " x " << newHeight;
    }
    // Exact on both sides of a quotient.
    for (const std::size_t size : {2, 3, 6, 254, 4094, 4095, 4096, 65534, 65536}) {
        for (const int quotient : {1, 2, 100, 200, 255}) {
            Pixels line(size * 3, static_cast<std::uint8_t>(quotient));
            EXPECT_EQ(Shrink(line, {size, 1}, {1, 1})[2], quotient) << size << " pixels";
            --line.back();
            EXPECT_EQ(Shrink(line, {1, size}, {1, 1})[2], quotient - 1) << size << " rows";
        }
    }
}

TEST_F(TextureTest, RescaleTakesInThePaddingAndSizesMeanWhatTheySay) {
    CJpegTexture texture;
    LoadImage(texture, NoiseImage(30, 20));
    EXPECT_FALSE(texture.Rescale(0, 5) || texture.Rescale(31, 5) || texture.Rescale(5, 21));
    EXPECT_TRUE(Bytes(texture) == Showing(NoiseImage(30, 20), 32, 20));
    texture.ConvertToRgba(1);
    EXPECT_FALSE(texture.Rescale(8, 8)) << "4 bytes a pixel";
    MemoryImage white = NoiseImage(3, 1);
    white.bytes.assign(9, 240);
    LoadImage(texture, white);  // a buffer of 4
    EXPECT_TRUE(texture.Rescale(2, 1));
    EXPECT_THAT(Bytes(texture), ElementsAre(240, 240, 240, 120, 120, 120)) << "half padding";
    LoadImage(texture, NoiseImage(1024, 32));
    EXPECT_FALSE(texture.HasBorder() || texture.IsPowerOfTwoSize()) << "no height is enough";
    LoadImage(texture, NoiseImage(6, 32));
    EXPECT_TRUE(texture.HasBorder());
}

TEST_F(TextureTest, WithoutMemoryOrPixelsEachOperationKeepsItsPromise) {
    Claimed<CJpegTexture> texture;
    LoadImage(texture, NoiseImage(4, 4));
    texture.ClaimBuffer(kHugeSide, kHugeSide);
    const CJpegTexture copy(texture);
    EXPECT_TRUE(copy.GetPixels() == nullptr && copy.GetWidth() == kHugeSide);
    EXPECT_FALSE(texture.ConvertToRgba(1));
    EXPECT_TRUE(texture.GetBytesPerPixel() == 3 && texture.GetPixels() != nullptr);
    texture.ClaimBuffer(4, 4);
    EXPECT_FALSE(texture.PadBuffer(kHugeSide, kHugeSide) || texture.SwapRedBlue());
    EXPECT_TRUE(Sizes(texture) == Sizes({}));
    EXPECT_FALSE(texture.ConvertToRgba(1) || texture.SaveJpeg(L"map.jpg", 85));
    EXPECT_FALSE(texture.Rescale(1, 1) || FitToLimits(texture, 64, 64));
}

/// A picture of this width whose bytes from the top left are 1, 2, 3 ... in R, G, B.
CJpegTexture Counting(int width, int height = 1) {
    MemoryImage image = NoiseImage(width, height);
    for (std::size_t i = 0; i < image.bytes.size(); ++i)
        image.bytes[i] = static_cast<std::uint8_t>(i / 3 * 3 + 3 - i % 3);
    CJpegTexture texture;
    LoadImage(texture, image);
    return texture;
}

TEST(TexturePixels, ChangeByTheirPackedValueAndKeepTheirOddities) {
    CJpegTexture widened = Counting(4);
    EXPECT_TRUE(widened.ConvertToRgba(99) && !widened.ConvertToRgba(1));
    widened.ReplaceByBrightness(5, 8, 0x01020304);  // without the alpha: 2, 5, 8, 11
    EXPECT_THAT(Bytes(widened), ElementsAre(1, 2, 3, 99, 4, 3, 2, 1, 4, 3, 2, 1, 10, 11, 12, 99));
    widened.SwapRedBlue();
    EXPECT_THAT(Bytes(widened), ElementsAre(3, 2, 1, 99, 2, 3, 4, 1, 2, 3, 4, 1, 10, 11, 12, 99))
        << "the last quarter is spared";
    CJpegTexture byFunction = Counting(4);
    EXPECT_FALSE(byFunction.ConvertToRgbaWith(nullptr));
    byFunction.ConvertToRgbaWith([](std::uint32_t packed, std::int32_t bytesPerPixel) {
        return (packed << 8U) | static_cast<std::uint32_t>(bytesPerPixel);
    });
    EXPECT_THAT(Bytes(byFunction), ElementsAre(3, 1, 2, 3, 3, 4, 5, 6, 3, 7, 8, 9, 3, 10, 11, 12));
    CJpegTexture replaced = Counting(4);
    replaced.ReplaceColor(0x060504, 0xAABB13);
    replaced.ReplaceColor(0xFF090807, 0);  // no 3-byte pixel has a fourth byte
    EXPECT_THAT(Bytes(replaced), ElementsAre(1, 2, 3, 0x13, 0xBB, 0xAA, 7, 8, 9, 10, 11, 12));
}

TEST(TexturePixels, AreSavedWithoutPaddingFromTheTopAndStay) {
    CJpegTexture texture = Counting(3, 2);  // a buffer of 4 x 2
    const CJpegTexture& same = texture;
    texture = same;
    const std::vector<int> before = Bytes(texture);
    EXPECT_TRUE(texture.SaveJpeg(L"saved", 85));
    EXPECT_THAT(PictureFiles()[L"saved"].bytes,
                ElementsAre(3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10, 15, 14, 13, 18, 17, 16));
    EXPECT_EQ(Bytes(texture), before);
    ASSERT_TRUE(texture.PadBuffer(4, 3));  // more room below the picture
    EXPECT_TRUE(std::equal(before.begin(), before.begin() + 9, Bytes(texture).begin() + 12));
}

/// Eight tiles with a picture each: what the others hold must go.
struct Grid {
    Grid(int width, int height) {
        for (std::size_t i = 0; i < 8; ++i) {
            LoadImage(textures[i], NoiseImage(width, height));
            tiles[i] = &textures[i];
        }
    }
    Claimed<CGLTexture> textures[8];
    CGLTexture* tiles[8];
};

/// Cuts by halving again and again, columns first.
void Halve(CGLTexture* const* tiles, std::ptrdiff_t count, std::ptrdiff_t half, bool byColumns) {
    if (count < 2) return;
    ASSERT_TRUE(tiles[0]->Split(*tiles[half], byColumns));
    Halve(tiles, count / 2, half / 2, byColumns);
    Halve(tiles + half, count / 2, half / 2, byColumns);
}

TEST(TileGrid, GivesTheTilesOfRepeatedHalvingOrLeavesTheMapWhole) {
    const int cases[][4] = {{64, 32, 4, 2}, {1001, 503, 4, 2}, {40, 27, 2, 4}};
    for (const auto& [width, height, columns, rows] : cases) {
        Grid grid(width, height);
        ASSERT_TRUE(SplitIntoGrid(grid.tiles, columns, rows));
        Grid halved(width, height);
        Halve(halved.tiles, columns, columns / 2, true);
        for (int i = 0; i < columns; ++i) Halve(halved.tiles + i, rows, columns * rows / 2, false);
        for (int i = 0; i < 8; ++i) {
            ASSERT_EQ(Sizes(*grid.tiles[i]), Sizes(*halved.tiles[i])) << i << " of " << width;
            EXPECT_TRUE(Bytes(*grid.tiles[i]) == Bytes(*halved.tiles[i])) << i << " of " << width;
        }
    }
    // Without memory the map stays whole; nothing is left when a tile would be empty.
    Grid flat(64, 1);
    EXPECT_FALSE(SplitIntoGrid(flat.tiles, 4, 2));
    for (const CGLTexture* tile : flat.tiles) EXPECT_EQ(tile->GetPixels(), nullptr);
    Grid grid(8, 4);
    auto& map = grid.textures[0];
    const std::vector<int> whole = Bytes(map);
    EXPECT_FALSE(map.Split(map, true)) << "into itself";
    map.ClaimBuffer(kHugeSide, kHugeSide);
    EXPECT_FALSE(SplitIntoGrid(grid.tiles, 4, 2));
    EXPECT_EQ(grid.tiles[1]->GetPixels(), nullptr);
    map.ClaimBuffer(8, 4);
    EXPECT_EQ(Bytes(map), whole);
}

}  // namespace
