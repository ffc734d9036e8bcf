// The tiles that reach OpenGL, byte for byte: the map picture read with GDI+ here, then shrunk and
// cut in the plainest way.
#include <gmock/gmock.h>

#include <algorithm>

#include "support/gdiplus_pictures_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"
#include "support/plain_line.h"

namespace {

/// Rows from the bottom, bytes R, G, B; `width` by `height` hold the picture, the rest is padding.
struct Block {
    int width = 0;
    int height = 0;
    int rowPixels = 0;
    std::vector<unsigned char> bytes;

    unsigned char* At(int x, int y) {
        return bytes.data() + 3 * (static_cast<std::ptrdiff_t>(y) * rowPixels + x);
    }
};

Block Allocate(int width, int height, int rowPixels) {
    const auto size = 3U * static_cast<std::size_t>(rowPixels) * static_cast<std::size_t>(height);
    return {width, height, rowPixels, std::vector<unsigned char>(size)};
}

/// Upside down, rows filled up with black to a multiple of four pixels.
Block FromPicture(const RgbPicture& picture) {
    Block block = Allocate(picture.width, picture.height, (picture.width + 3) / 4 * 4);
    for (int y = 0; y < picture.height; ++y) {
        std::copy_n(picture.pixels.data() + 3 * static_cast<std::ptrdiff_t>(y) * picture.width,
                    3 * picture.width, block.At(0, picture.height - 1 - y));
    }
    return block;
}

/// First every row, padding and all, then every column.
Block Rescale(Block block, int newWidth, int newHeight) {
    if (newWidth > block.width || newHeight > block.height) return block;
    Block narrow = Allocate(newWidth, block.height, newWidth);
    for (int y = 0; y < block.height; ++y)
        PlainLine(block.At(0, y), narrow.At(0, y), block.rowPixels, newWidth, 3, 3);
    Block low = Allocate(newWidth, newHeight, newWidth);
    const std::ptrdiff_t step = 3 * static_cast<std::ptrdiff_t>(newWidth);
    for (int x = 0; x < newWidth; ++x)
        PlainLine(narrow.At(x, 0), low.At(x, 0), block.height, newHeight, step, step);
    return low;
}

/// A power of two from 16 up to the first that reaches `limit`, halved when it passes `size`.
int PowerOfTwoWithin(int size, int limit) {
    int power = 16;
    while (power < size && power < limit) power *= 2;
    return power > size ? power / 2 : power;
}

int Shifted(int limit, int scaler) { return scaler > 0 ? limit << scaler : limit >> -scaler; }

Block Cut(Block& block, int x, int y, int width, int height) {
    Block part = Allocate(width, height, width);
    for (int row = 0; row < height; ++row)
        std::copy_n(block.At(x, y + row), 3 * width, part.At(0, row));
    return part;
}

struct Scalers {
    int x = 0;
    int y = -1;
};

/// The eight tiles of a picture for textures of at most `maxSize` a side.
std::vector<Block> ExpectedTiles(const RgbPicture& picture, int maxSize, const Scalers& scalers) {
    const int maxWidth = Shifted(maxSize, scalers.x);
    const int maxHeight = Shifted(maxSize, scalers.y);
    Block map = FromPicture(picture);
    const int fitWidth = PowerOfTwoWithin(map.width, maxWidth);
    const int fitHeight = PowerOfTwoWithin(map.height, maxHeight);
    if (fitWidth != map.width || fitHeight != map.height) map = Rescale(map, fitWidth, fitHeight);
    if (map.width > maxWidth || map.height > maxHeight)
        map = Rescale(map, std::min(map.width, maxWidth), std::min(map.height, maxHeight));

    std::vector<Block> tiles;
    const int width = map.rowPixels / 2 / 2;
    const int height = map.height / 2;
    for (const int y : {0, height}) {
        for (const int half : {0, map.rowPixels / 2}) {
            for (const int x : {half, half + width}) tiles.push_back(Cut(map, x, y, width, height));
        }
    }
    return tiles;
}

class Tiles : public MapHostTest {
protected:
    Tiles() {
        SpiedGl().keepCalls = false;
        SpiedGl().keepPixels = true;
    }

    /// A fresh library shows the map in the data folder and is freed again. @return its uploads
    std::vector<SpiedUpload> ShowMap(int maxSize) {
        SpiedGl().maxTextureSize = maxSize;
        SpiedGl().uploads.clear();
        Init();
        const HWND map = CreateMap(64, 48);
        EXPECT_NE(map, nullptr);
        EXPECT_TRUE(WaitForTiles());
        DestroyWindow(map);
        library.FreeMap();
        return std::move(SpiedGl().uploads);
    }

    static void ExpectTiles(const std::vector<SpiedUpload>& uploads,
                            const std::vector<Block>& tiles) {
        ASSERT_EQ(uploads.size(), tiles.size());
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            EXPECT_EQ(uploads[i].width, tiles[i].width) << "tile " << i;
            EXPECT_EQ(uploads[i].height, tiles[i].height) << "tile " << i;
            EXPECT_EQ(uploads[i].format, static_cast<GLenum>(GL_RGB));
            EXPECT_EQ(uploads[i].border, 0);
            EXPECT_TRUE(uploads[i].pixels == tiles[i].bytes) << "tile " << i;
        }
    }

    static void ForgetSettings() {
        DeleteFileW((DataFolder() / "horivo.ini").c_str());
        WritePrivateProfileStringW(nullptr, nullptr, nullptr,
                                   (DataFolder() / "horivo.ini").c_str());
    }
    static void WriteSetting(const wchar_t* key, int value) {
        WritePrivateProfileStringW(L"map", key, std::to_wstring(value).c_str(),
                                   (DataFolder() / "horivo.ini").c_str());
    }
};

struct SizeCase {
    const char* why;
    int width, height, maxSize;
    int tileWidth, tileHeight;  ///< as a person would say
};

}  // namespace

TEST_F(Tiles, EqualThePictureShrunkAndCut) {
    const SizeCase cases[] = {
        {"fits as it is", 1024, 512, 16384, 256, 256},
        {"shrinks to powers of two", 1500, 750, 16384, 256, 256},
        {"shrinks to the limit", 1500, 750, 256, 64, 64},
        {"odd sizes: padding is resampled with the picture", 1001, 503, 16384, 128, 128},
        {"odd sizes and a small limit", 1001, 503, 128, 32, 32},
        {"a limit that is no power of two shrinks twice", 512, 256, 192, 48, 48},
        {"halves that leave a column over", 300, 200, 98, 24, 24},
        {"narrow and high", 64, 700, 16384, 16, 256},
    };
    RgbPicture picture;
    for (const SizeCase& c : cases) {
        SCOPED_TRACE(c.why);
        if (picture.width != c.width || picture.height != c.height) {
            PutPatternMap(c.width, c.height);
            picture = DecodePicture(MapPath());
        }
        const auto uploads = ShowMap(c.maxSize);
        ASSERT_FALSE(uploads.empty());
        EXPECT_EQ(uploads[0].width, c.tileWidth);
        EXPECT_EQ(uploads[0].height, c.tileHeight);
        ExpectTiles(uploads, ExpectedTiles(picture, c.maxSize, {}));
    }
}

TEST_F(Tiles, TheAssetMapStandsTheRightWayRound) {
    PutAssetMap();
    const auto uploads = ShowMap(16384);
    ExpectTiles(uploads, ExpectedTiles(DecodePicture(MapPath()), 16384, {}));
    ASSERT_EQ(uploads.size(), 8U);
    // Antarctica's ice is at the southern edge, the Sahara in the north just east of Greenwich.
    const auto at = [&](std::size_t tile, std::size_t x, std::size_t y) {
        return &uploads[tile].pixels[3 * (y * 1024 + x)];
    };
    EXPECT_GT(at(2, 512, 8)[2], 180) << "ice at 45 E 89 S";
    const unsigned char* sahara = at(6, 10 * 1024 / 90, 22 * 1024 / 90);
    EXPECT_GT(sahara[0], sahara[2] + 40) << "sand at 10 E 22 N: red before blue";
}

TEST_F(Tiles, SizesFollowTheScalers) {
    constexpr int kMaxSize = 128;
    PutPatternMap(512, 256);
    const RgbPicture picture = DecodePicture(MapPath());
    WriteSetting(L"lag_factor", 8);  // a coarse mesh: many fine ones take their time
    for (const Scalers& c : {Scalers{-3, -3}, {-3, 1}, {-1, -2}, {0, 0}, {2, -3}, {2, 1}}) {
        SCOPED_TRACE("texScalerX " + std::to_string(c.x) + ", texScalerY " + std::to_string(c.y));
        WriteSetting(L"texScalerX", c.x);
        WriteSetting(L"texScalerY", c.y);
        const auto uploads = ShowMap(kMaxSize);
        ASSERT_EQ(uploads.size(), 8U);
        EXPECT_EQ(uploads[0].width, (128 << (c.x + 3)) / 8 / 4);
        EXPECT_EQ(uploads[0].height, (128 << (c.y + 3)) / 8 / 2);
        ExpectTiles(uploads, ExpectedTiles(picture, kMaxSize, c));
    }
    // Beyond their range they count as its ends.
    for (const auto& [value, meant] : {std::pair(9, Scalers{2, 1}), {-9, Scalers{-3, -3}}}) {
        WriteSetting(L"texScalerX", value);
        WriteSetting(L"texScalerY", value);
        ExpectTiles(ShowMap(64), ExpectedTiles(picture, 64, meant));
    }
    // What the file no longer names stays as it was.
    ForgetSettings();
    ExpectTiles(ShowMap(64), ExpectedTiles(picture, 64, {-3, -3}));
}

TEST_F(Tiles, AskForCompressionOnlyWhenSet) {
    const struct {
        int setting;
        GLint internalFormat;
    } cases[] = {{0, 3}, {1, 0x84ED}, {0, 3}, {-1, 0x84ED}};
    PutPatternMap(128, 64);
    const auto tiles = ExpectedTiles(DecodePicture(MapPath()), 256, {});
    for (const auto& c : cases) {
        SCOPED_TRACE(c.setting);
        WriteSetting(L"tex_compression", c.setting);
        const auto uploads = ShowMap(256);
        ExpectTiles(uploads, tiles);
        for (const SpiedUpload& upload : uploads)
            EXPECT_EQ(upload.internalFormat, c.internalFormat);
    }
}
