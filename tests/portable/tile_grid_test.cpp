#include "image/tile_grid.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>

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
        Grid grid(NoiseImage(width, height));
        ASSERT_TRUE(grid.Split(columns, rows));
        Grid halved(NoiseImage(width, height));
        Halve(halved.tiles.data(), columns, columns / 2, true);
        for (int column = 0; column < columns; ++column) {
            Halve(halved.tiles.data() + column, rows, columns * rows / 2, false);
        }
        for (int i = 0; i < columns * rows; ++i) {
            const CGLTexture& tile = grid.Tile(i);
            ASSERT_EQ(Sizes(tile), Sizes(halved.Tile(i))) << i << " of " << width;
            const int bytes = tile.GetBufferWidth() * tile.GetBufferHeight() * 3;
            EXPECT_EQ(std::memcmp(tile.GetPixels(), halved.Tile(i).GetPixels(),
                                  static_cast<std::size_t>(bytes)),
                      0)
                << i << " of " << width;
        }
    }
}

TEST(TileGrid, ASideThatWouldBecomeEmptyClearsAll) {
    const int cases[][3] = {{64, 1, 4}, {1, 64, 8}, {1, 1, 4}};
    for (const auto& [width, height, columns] : cases) {
        Grid grid(NoiseImage(width, height));
        EXPECT_FALSE(grid.Split(columns, 2)) << width;
        EXPECT_EQ(grid.Tile(columns).GetPixels(), nullptr) << width;
        EXPECT_THAT(Sizes(grid.Tile(columns)), ElementsAre(0, 0, 0, 0)) << width;
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
