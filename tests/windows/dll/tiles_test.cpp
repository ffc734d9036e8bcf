// The tiles that reach OpenGL: which part of the map picture each shows, how large it is, and what
// the settings change about it. The picture is read with GDI+ here.
#include <gmock/gmock.h>

#include "support/gdiplus_pictures_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"
#include "support/table.h"

namespace {

/// How much red and green differ on average from what the tile in this place of the grid should
/// show.
double Difference(const SpiedUpload& tile, int column, int row, const RgbPicture& picture) {
    long difference = 0;
    for (int y = 0; y < tile.height; ++y) {
        for (int x = 0; x < tile.width; ++x) {
            // The middle of what became one pixel; the tiles' rows come from the bottom.
            const int left = (2 * (column * tile.width + x) + 1) * picture.width / (8 * tile.width);
            const int up = (2 * (row * tile.height + y) + 1) * picture.height / (4 * tile.height);
            const int at = (picture.height - 1 - up) * picture.width + left;
            const unsigned char* found =
                &tile.pixels[3U * static_cast<unsigned>(y * tile.width + x)];
            const std::uint8_t* expected = &picture.pixels[3U * static_cast<unsigned>(at)];
            difference += std::abs(found[0] - expected[0]) + std::abs(found[1] - expected[1]);
        }
    }
    return static_cast<double>(difference) / (2 * tile.width * tile.height);
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
        EXPECT_TRUE(WaitForTiles());
        DestroyWindow(map);
        library.FreeMap();
        return std::move(SpiedGl().uploads);
    }

    /// Eight tiles of one size that show the picture: the southern four from the west, then the
    /// northern ones. @param shade  by how much a byte may differ on average
    static void ExpectTiles(const std::vector<SpiedUpload>& uploads, int width, int height,
                            const RgbPicture& picture, double shade) {
        ASSERT_EQ(uploads.size(), 8U);
        for (int i = 0; i < 8; ++i) {
            const SpiedUpload& tile = uploads[static_cast<std::size_t>(i)];
            ASSERT_EQ(std::pair(tile.width, tile.height), std::pair(width, height)) << i;
            EXPECT_EQ(tile.format, static_cast<GLenum>(GL_RGB));
            EXPECT_EQ(tile.border, 0);
            EXPECT_LE(Difference(tile, i % 4, i / 4, picture), shade) << "tile " << i;
        }
    }

    static void WriteSetting(const wchar_t* key, int value) {
        WritePrivateProfileStringW(L"map", key, std::to_wstring(value).c_str(),
                                   (DataFolder() / "horivo.ini").c_str());
    }
};

}  // namespace

TEST_F(Tiles, ShowEachItsPartOfThePictureAsLargeAsItMayBe) {
    RgbPicture picture;
    for (const Row& row : Table("tile_sizes")) {
        SCOPED_TRACE(row.why);
        const int width = row.Int(0);
        if (picture.width != width) {
            PutPatternMap(width, row.Int(1));
            picture = DecodePicture(MapPath());
        }
        WriteSetting(L"texScalerX", row.Int(3));
        WriteSetting(L"texScalerY", row.Int(4));
        const bool shrunk = row.Int(5) * 4 != width || row.Int(6) * 2 != row.Int(1);
        ExpectTiles(ShowMap(row.Int(2)), row.Int(5), row.Int(6), picture, shrunk ? 6.0 : 0.0);
    }
    // What the file no longer names stays as it was.
    DeleteFileW((DataFolder() / "horivo.ini").c_str());
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, (DataFolder() / "horivo.ini").c_str());
    ExpectTiles(ShowMap(128), 4, 8, picture, 6.0);
}

TEST_F(Tiles, AskForCompressionOnlyWhenSet) {
    PutPatternMap(128, 64);
    for (const auto& [setting, internalFormat] : {std::pair(0, 3), {1, 0x84ED}, {-1, 0x84ED}}) {
        WriteSetting(L"tex_compression", setting);
        EXPECT_THAT(ShowMap(256),
                    testing::Each(testing::Field(&SpiedUpload::internalFormat, internalFormat)))
            << setting;
    }
}
