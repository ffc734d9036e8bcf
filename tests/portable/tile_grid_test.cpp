#include "image/tile_grid.h"

#include <gmock/gmock.h>

#include <array>

#include "support/texture_pixels.h"

namespace {

using testing::ElementsAre;

/// Up to 32 tiles; the first one can claim sizes.
struct Grid {
    Claimed<CGLTexture> map;
    std::array<CGLTexture, 31> others;
    std::array<CGLTexture*, 32> tiles;

    explicit Grid(const MemoryImage& image) {
        tiles[0] = &map;
        for (std::size_t i = 0; i < others.size(); ++i) tiles[i + 1] = &others[i];
        for (CGLTexture* tile : tiles) LoadImage(*tile, image);  // what the others hold must go
    }
    CGLTexture& Tile(int index) { return *tiles[static_cast<std::size_t>(index)]; }
    bool Split(int columns, int rows) { return SplitIntoGrid(tiles.data(), columns, rows); }
};

TEST(TileGrid, TilesRejoinToThePicture) {
    const int cases[][4] = {{64, 32, 4, 2}, {8, 2, 4, 2},  {40, 24, 2, 4},
                            {64, 16, 8, 4}, {12, 5, 4, 1}, {5, 12, 1, 4}};
    for (const auto& [width, height, columns, rows] : cases) {
        const MemoryImage image = NoiseImage(width, height);
        Grid grid(image);
        ASSERT_TRUE(grid.Split(columns, rows));
        const int tileWidth = width / columns;
        const int tileHeight = height / rows;
        for (int row = 0; row < height; ++row) {
            for (int x = 0; x < tileWidth * columns; ++x) {
                const int band = rows - 1 - row / tileHeight;  // counted from the bottom
                const CGLTexture& tile = grid.Tile(x / tileWidth + columns * band);
                ASSERT_EQ(TextureColour(tile, x % tileWidth, row % tileHeight),
                          ImageColour(image, x, row))
                    << width << " x " << height << ": " << x << ", " << row;
            }
        }
    }
}

TEST(TileGrid, WithoutMemoryTheSplitLeavesItsTextureWhole) {
    const MemoryImage image = NoiseImage(8, 4);
    Grid grid(image);
    EXPECT_FALSE(grid.map.Split(grid.map, true)) << "into itself";
    grid.map.ClaimBuffer(kHugeSide, kHugeSide);
    EXPECT_FALSE(grid.Split(4, 2));
    EXPECT_THAT(Sizes(grid.Tile(2)), ElementsAre(0, 0, 0, 0));
    grid.map.ClaimBuffer(8, 4);
    EXPECT_EQ(TextureColour(grid.map, 7, 0), ImageColour(image, 7, 0));
    grid.map.Clear(true);
    EXPECT_FALSE(grid.Split(4, 2)) << "nothing to split";
}

}  // namespace
