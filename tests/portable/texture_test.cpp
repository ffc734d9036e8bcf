// Textures: loaded, shrunk, changed pixel by pixel, saved and cut into tiles.
#include <gmock/gmock.h>

#include <array>
#include <random>

#include "image/resample.h"
#include "image/texture_limits.h"
#include "image/tile_grid.h"
#include "support/memory_picture.h"
#include "support/plain_shrink.h"

namespace {

using testing::ElementsAre;

class TextureTest : public testing::Test {
protected:
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
    // Sides, limits, sides of the buffer or 0; without both limits only a multiple of 4.
    const int cases[][6] = {{1001, 3, 0, 0, 1004, 3},       {30, 5, 64, 0, 32, 5},
                            {1, 1, 64, 64, 16, 16},         {1500, 17, 2048, 64, 2048, 32},
                            {1024, 16, 1024, 16, 1024, 16}, {1500, 17, 1024, 64, 0, 0},
                            {15, 65, 1024, 64, 0, 0},       {16, 16, 1, 1, 16, 16}};
    for (const auto& [width, height, maxWidth, maxHeight, bufferWidth, bufferHeight] : cases) {
        MemoryImage image = NoiseImage(width, height);
        image.bottomUp = width % 2 == 0;
        CJpegTexture texture;
        EXPECT_EQ(LoadImage(texture, image, maxWidth, maxHeight),
                  bufferWidth > 0 ? kLoadedUnchanged : kLoadFailed);
        const bool fits = bufferWidth > 0;
        EXPECT_THAT(Sizes(texture),
                    ElementsAre(fits ? width : 0, fits ? height : 0, bufferWidth, bufferHeight));
        EXPECT_TRUE(!fits || Bytes(texture) == Showing(image, bufferWidth, bufferHeight)) << width;
    }
    CJpegTexture texture;
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
    MemoryImage& huge = PictureFiles()[L"huge"];
    huge.width = kHugeSide - 3;
    huge.height = kHugeSide;
    huge.lockable = false;
    CJpegTexture plain;
    CGLTexture fitted;
    for (CJpegTexture* texture : {&plain, static_cast<CJpegTexture*>(&fitted)}) {
        for (const wchar_t* name : {L"locked", L"strange", L"huge", L"missing"}) {
            ASSERT_EQ(LoadImage(*texture, good), kLoadedUnchanged) << "something to lose";
            EXPECT_EQ(texture->LoadFromFile(name, 64, 64), kLoadFailed) << name;
            EXPECT_THAT(Sizes(*texture), ElementsAre(0, 0, 0, 0)) << name;
            EXPECT_EQ(texture->GetPixels(), nullptr) << name;
        }
        LoadImage(*texture, good);
        EXPECT_EQ(texture->Load(nullptr, 0, 0), kLoadFailed);
        EXPECT_EQ(texture->GetPixels(), nullptr);
    }
}

TEST_F(TextureTest, TheMapShrinksToPowersOfTwoOrItsLimits) {
    // Sides, limits, result, sides after. Below 8 a side is kept as it is.
    const int loads[][7] = {{100, 50, 0, 64, 1, 100, 50},     {64, 32, 64, 64, 1, 64, 32},
                            {100, 33, 1024, 1024, 3, 64, 32}, {100, 70, 32, 16, 3, 32, 16},
                            {100, 70, 33, 17, 3, 64, 32},     {15, 9, 64, 64, 3, 8, 8},
                            {40, 7, 64, 64, 3, 40, 7}};
    for (const auto& [width, height, maxWidth, maxHeight, result, newWidth, newHeight] : loads) {
        CGLTexture texture;
        EXPECT_EQ(LoadImage(texture, NoiseImage(width, height), maxWidth, maxHeight), result);
        EXPECT_EQ(texture.GetWidth(), newWidth) << width;
        EXPECT_EQ(texture.GetHeight(), newHeight) << width;
    }
    // Width and height limit, width and height after; 100 x 50 before.
    const int fits[][4] = {
        {128, 64, 64, 32}, {80, 64, 80, 50}, {80, 40, 80, 40}, {100, 50, 64, 32}};
    for (const auto& [widthLimit, heightLimit, width, height] : fits) {
        CGLTexture texture;
        LoadImage(texture, NoiseImage(100, 50));
        EXPECT_TRUE(FitToLimits(texture, widthLimit, heightLimit));
        EXPECT_THAT(Sizes(texture), ElementsAre(width, height, width, height));
    }
    const int scaled[][3] = {{2048, -3, 256},
                             {5, -1, 2},
                             {1 << 30, 1, kHugeSide},
                             {1, 999'999, kHugeSide},
                             {kHugeSide, -999'999, 0}};
    for (const auto& [limit, scaler, is] : scaled) EXPECT_EQ(ScaledLimit(limit, scaler), is);
}

TEST_F(TextureTest, ALoadThatShrinksGivesTheBytesOfLoadAndRescale) {
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
    // Sides before and after; the first ones have products of more than 32 bits.
    std::vector<std::array<int, 4>> cases = {{65535, 3, 65534, 2}, {3, 65535, 2, 65534}};
    for (int i = 0; i < 1500; ++i) {
        // Any sides, and those that are at most halved: these have the fast path.
        const int width = upTo(i % 3 == 0 ? 300 : 80);
        const int height = upTo(i % 5 == 0 ? 200 : 40);
        cases.push_back(
            {width, height, i % 7 == 0 ? width : upTo(width), i % 11 == 0 ? height : upTo(height)});
        if (i % 2 == 0) cases.back()[2] = std::max({1, width / 2, width - upTo(width / 2 + 1)});
    }
    for (const auto& [width, height, newWidth, newHeight] : cases) {
        const Pixels noise = NoiseImage(width, height).bytes;
        ASSERT_TRUE(Shrink(noise, {std::size_t(width), std::size_t(height)},
                           {std::size_t(newWidth), std::size_t(newHeight)}) ==
                    PlainShrink(noise, width, height, newWidth, newHeight))
            << width << " x " << height << " to " << newWidth << " x " << newHeight;
    }
}

TEST(Resample, DividesExactlyOnBothSidesOfEachQuotient) {
    for (const std::size_t size : {2, 3, 6, 254, 4094, 4095, 4096, 65534, 65536}) {
        for (const int quotient : {1, 2, 100, 200, 255}) {
            Pixels line(size * 3, static_cast<std::uint8_t>(quotient));
            for (int less = 0; less < 2; ++less, --line.back()) {
                EXPECT_EQ(Shrink(line, {size, 1}, {1, 1})[2], quotient - less) << size << " pixels";
                EXPECT_EQ(Shrink(line, {1, size}, {1, 1})[2], quotient - less) << size << " rows";
            }
        }
    }
}

TEST_F(TextureTest, RescaleTakesInThePaddingAndSizesMeanWhatTheySay) {
    CJpegTexture texture;
    LoadImage(texture, NoiseImage(30, 20));
    const std::vector<int> before = Bytes(texture);
    const int wrong[][2] = {{0, 5}, {5, 0}, {31, 5}, {5, 21}};
    for (const auto& [width, height] : wrong) EXPECT_FALSE(texture.Rescale(width, height));
    EXPECT_EQ(Bytes(texture), before);
    texture.ConvertToRgba(1);
    EXPECT_FALSE(texture.Rescale(8, 8)) << "4 bytes a pixel";
    MemoryImage white = NoiseImage(3, 1);
    white.bytes.assign(9, 240);
    LoadImage(texture, white);  // a buffer of 4
    EXPECT_TRUE(texture.Rescale(2, 1));
    EXPECT_THAT(Bytes(texture), ElementsAre(240, 240, 240, 120, 120, 120)) << "half padding";
    for (const int width : {6, 1026, 2, 1024, 7}) {
        LoadImage(texture, NoiseImage(width, 32));
        EXPECT_EQ(texture.HasBorder(), width == 6 || width == 1026) << width;
        EXPECT_FALSE(texture.IsPowerOfTwoSize()) << "no height is enough";
    }
}

TEST_F(TextureTest, WithoutMemoryOrPixelsEachOperationKeepsItsPromise) {
    Claimed<CJpegTexture> texture;
    LoadImage(texture, NoiseImage(4, 4));
    texture.ClaimBuffer(kHugeSide, kHugeSide);
    const CJpegTexture copy(texture);
    EXPECT_EQ(copy.GetPixels(), nullptr);
    EXPECT_EQ(copy.GetWidth(), kHugeSide) << "a copy keeps its numbers";
    EXPECT_FALSE(texture.ConvertToRgba(1));
    EXPECT_TRUE(texture.GetBytesPerPixel() == 3 && texture.GetPixels() != nullptr);
    texture.ClaimBuffer(4, 4);
    EXPECT_FALSE(texture.PadBuffer(kHugeSide, kHugeSide) || texture.SwapRedBlue());
    EXPECT_EQ(texture.GetPixels(), nullptr);
    EXPECT_THAT(Sizes(texture), ElementsAre(0, 0, 0, 0));
    CGLTexture empty;
    EXPECT_FALSE(empty.ConvertToRgba(1) || empty.SwapRedBlue() || empty.SaveJpeg(L"map.jpg", 85));
    EXPECT_FALSE(empty.Rescale(1, 1) || empty.PadBuffer(16, 16) || FitToLimits(empty, 64, 64));
    empty.ReplaceByBrightness(0, 255, 1);
}

/// A picture of this width whose bytes from the top left are 1, 2, 3 ... in R, G, B.
CJpegTexture Counting(int width, int height = 1) {
    MemoryImage image = NoiseImage(width, height);
    for (std::size_t i = 0; i < image.bytes.size(); ++i) {
        image.bytes[i] = static_cast<std::uint8_t>(i / 3 * 3 + 3 - i % 3);
    }
    CJpegTexture texture;
    LoadImage(texture, image);
    return texture;
}

TEST(TexturePixels, ChangeByTheirPackedValueAndKeepTheirOddities) {
    const struct {
        const char* why;
        void (*change)(CJpegTexture& texture);
        std::vector<int> after;
    } cases[] = {
        {"the second widening is refused",
         [](CJpegTexture& t) { t.ConvertToRgba(9), t.ConvertToRgba(1); },
         {1, 2, 3, 9, 4, 5, 6, 9, 7, 8, 9, 9, 10, 11, 12, 9}},
        {"a function gives all four bytes",
         [](CJpegTexture& t) {
             t.ConvertToRgbaWith(nullptr);
             t.ConvertToRgbaWith([](std::uint32_t packed, std::int32_t bytesPerPixel) {
                 return (packed << 8U) | static_cast<std::uint32_t>(bytesPerPixel);
             });
         },
         {3, 1, 2, 3, 3, 4, 5, 6, 3, 7, 8, 9, 3, 10, 11, 12}},
        {"no 3-byte pixel has a fourth byte",
         [](CJpegTexture& t) { t.ReplaceColor(0x060504, 0xAABB13), t.ReplaceColor(0xFF090807, 0); },
         {1, 2, 3, 0x13, 0xBB, 0xAA, 7, 8, 9, 10, 11, 12}},
        {"the alpha is no part of the brightness 2, 5, 8, 11",
         [](CJpegTexture& t) { t.ConvertToRgba(99), t.ReplaceByBrightness(5, 8, 0x01020304); },
         {1, 2, 3, 99, 4, 3, 2, 1, 4, 3, 2, 1, 10, 11, 12, 99}},
        {"the last quarter of a 4-byte row is spared",
         [](CJpegTexture& t) { t.ConvertToRgba(0), t.SwapRedBlue(); },
         {3, 2, 1, 0, 6, 5, 4, 0, 9, 8, 7, 0, 10, 11, 12, 0}},
    };
    for (const auto& c : cases) {
        CJpegTexture texture = Counting(4);
        c.change(texture);
        EXPECT_EQ(Bytes(texture), c.after) << c.why;
    }
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
    // More room is at the right and below the picture.
    ASSERT_TRUE(texture.PadBuffer(4, 3));
    EXPECT_TRUE(std::equal(before.begin(), before.begin() + 9, Bytes(texture).begin() + 12));
}

/// Eight tiles; the first one is the map and can claim sizes.
struct Grid {
    Claimed<CGLTexture> map;
    std::array<CGLTexture, 7> others;
    std::array<CGLTexture*, 8> tiles = {&map};

    Grid(int width, int height) {
        for (std::size_t i = 0; i < others.size(); ++i) tiles[i + 1] = &others[i];
        // What the others hold must go.
        for (CGLTexture* tile : tiles) LoadImage(*tile, NoiseImage(width, height));
    }
    bool Split(int columns, int rows) { return SplitIntoGrid(tiles.data(), columns, rows); }
};

/// The same cut by halving again and again, columns first.
void Halve(CGLTexture* const* tiles, std::ptrdiff_t count, std::ptrdiff_t half, bool byColumns) {
    if (count < 2) return;
    ASSERT_TRUE(tiles[0]->Split(*tiles[half], byColumns));
    Halve(tiles, count / 2, half / 2, byColumns);
    Halve(tiles + half, count / 2, half / 2, byColumns);
}

TEST(TileGrid, GivesTheTilesOfRepeatedHalving) {
    const int cases[][4] = {{64, 32, 4, 2}, {1001, 503, 4, 2}, {40, 27, 2, 4}};
    for (const auto& [width, height, columns, rows] : cases) {
        Grid grid(width, height);
        ASSERT_TRUE(grid.Split(columns, rows));
        Grid halved(width, height);
        Halve(halved.tiles.data(), columns, columns / 2, true);
        for (int column = 0; column < columns; ++column) {
            Halve(halved.tiles.data() + column, rows, columns * rows / 2, false);
        }
        for (std::size_t i = 0; i < grid.tiles.size(); ++i) {
            ASSERT_EQ(Sizes(*grid.tiles[i]), Sizes(*halved.tiles[i])) << i << " of " << width;
            EXPECT_TRUE(Bytes(*grid.tiles[i]) == Bytes(*halved.tiles[i])) << i << " of " << width;
        }
    }
}

TEST(TileGrid, LeavesTheMapWholeWithoutMemoryAndNothingWhenATileWouldBeEmpty) {
    Grid flat(64, 1);
    EXPECT_FALSE(flat.Split(4, 2));
    for (const CGLTexture* tile : flat.tiles) EXPECT_EQ(tile->GetPixels(), nullptr);
    Grid grid(8, 4);
    const std::vector<int> whole = Bytes(grid.map);
    EXPECT_FALSE(grid.map.Split(grid.map, true)) << "into itself";
    grid.map.ClaimBuffer(kHugeSide, kHugeSide);
    EXPECT_FALSE(grid.Split(4, 2));
    EXPECT_THAT(Sizes(grid.others[1]), ElementsAre(0, 0, 0, 0));
    grid.map.ClaimBuffer(8, 4);
    EXPECT_EQ(Bytes(grid.map), whole);
    grid.map.Clear(true);
    EXPECT_FALSE(grid.Split(4, 2)) << "nothing to split";
}

}  // namespace
