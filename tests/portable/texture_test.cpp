// The map picture: loaded, shrunk, changed pixel by pixel, saved and cut into tiles.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>

#include "image/map_picture.h"
#include "image/tile_grid.h"
#include "support/table.h"
#include "support/texture_pixels.h"

namespace {

using testing::ElementsAre;

class TextureTest : public testing::Test {
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

TEST_F(TextureTest, LoadPadsTheBufferOrRefusesWhatIsAboveTheLimits) {
    for (const Row& row : Table("texture_load")) {
        SCOPED_TRACE(row.why);
        MemoryImage image = NoiseImage(row.Int(0), row.Int(1));
        image.bottomUp = image.width % 2 == 0;
        CJpegTexture texture;
        const bool fits = row.Int(4) != 0;
        EXPECT_EQ(LoadImage(texture, image, row.Int(2), row.Int(3)),
                  fits ? kLoadedUnchanged : kLoadFailed);
        EXPECT_EQ(texture.GetBufferWidth(), row.Int(4));
        EXPECT_EQ(texture.GetBufferHeight(), row.Int(5));
        EXPECT_EQ(texture.GetWidth(), fits ? image.width : 0);
        EXPECT_TRUE(!fits || Bytes(texture) == Showing(image, row.Int(4), row.Int(5)));
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
        for (const int limit : {64, 0}) {
            for (const wchar_t* name : {L"locked", L"strange", L"huge", L"missing", L""}) {
                ASSERT_EQ(LoadImage(*texture, good), kLoadedUnchanged) << "something to lose";
                auto picture = *name != 0 ? OpenPicture(name) : nullptr;
                EXPECT_EQ(texture->Load(std::move(picture), limit, limit), kLoadFailed) << name;
                EXPECT_THAT(Sizes(*texture), ElementsAre(0, 0, 0, 0)) << name;
                EXPECT_EQ(texture->GetPixels(), nullptr) << name;
            }
        }
        LoadImage(*texture, good);
        EXPECT_EQ(texture->LoadFromFile(L"missing", 64, 64), kLoadFailed);
    }
}

TEST_F(TextureTest, TheMapShrinksToPowersOfTwoOrItsLimits) {
    for (const Row& row : Table("texture_shrink")) {
        CGLTexture texture;
        const MemoryImage image = NoiseImage(row.Int(0), row.Int(1));
        EXPECT_EQ(LoadImage(texture, image, row.Int(2), row.Int(3)), row.Int(4)) << row.why;
        EXPECT_EQ(texture.GetWidth(), row.Int(5)) << row.why;
        EXPECT_EQ(texture.GetHeight(), row.Int(6)) << row.why;
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
    for (const Row& row : Table("scaled_limit")) {
        EXPECT_EQ(ScaledLimit(row.Int(0), row.Int(1)), row.Int(2)) << row.why;
    }
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

TEST_F(TextureTest, RescaleTakesInThePaddingAndSizesMeanWhatTheySay) {
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
    for (const int width : {6, 1026, 2, 1024, 1, 7}) {
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
        {"red and blue",
         [](CJpegTexture& t) { t.SwapRedBlue(); },
         {3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10}},
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
    PictureFiles().clear();
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

/// Up to 8 tiles; the first one can claim sizes.
struct Grid {
    Claimed<CGLTexture> map;
    std::array<CGLTexture, 7> others;
    std::array<CGLTexture*, 8> tiles;

    Grid(int width, int height) {
        tiles[0] = &map;
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
    const int cases[][4] = {{64, 32, 4, 2}, {1001, 503, 4, 2}, {40, 27, 2, 4}, {28, 3, 8, 1}};
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
    for (const auto& [width, height, columns, rows] : {std::array{64, 1, 4, 2}, {1, 64, 8, 1}}) {
        Grid grid(width, height);
        EXPECT_FALSE(grid.Split(columns, rows));
        for (const CGLTexture& tile : grid.others) {
            EXPECT_THAT(Sizes(tile), ElementsAre(0, 0, 0, 0)) << width;
        }
        EXPECT_EQ(grid.map.GetPixels() == nullptr, height == 1) << "cut already, or still whole";
    }
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

TEST(MapPicture, SplitsOnceAndWithinItsLimits) {
    PictureFiles()[L"data/map.jpg"] = NoiseImage(256, 128);
    MapPicture picture;
    TextureLimits limits;
    limits.maxTextureSize = 256;
    EXPECT_EQ(picture.Load(limits, L""), kLoadFailed) << "not from the current folder";
    EXPECT_FALSE(picture.Split(limits)) << "nothing loaded";
    EXPECT_EQ(picture.Load(limits, L"data/"), kLoadedUnchanged);
    EXPECT_FALSE(picture.HasAllTiles());
    limits.texScalerX = -1;  // 128 x 128 with a limit of 256: only the width is above
    limits.texScalerY = -1;
    limits.textureLimit = 256;
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(picture.Split(limits) && picture.HasAllTiles());
        EXPECT_THAT(Sizes(picture.MapTexture()), ElementsAre(32, 64, 32, 64)) << round;
    }
    EXPECT_TRUE(picture.TilesFit(64) && !picture.TilesFit(63));
    EXPECT_EQ(picture.Load(limits, L"missing/"), kLoadFailed);
    EXPECT_EQ(picture.Stage(), PictureStage::Empty);
    EXPECT_FALSE(picture.HasAllTiles());
}

}  // namespace
