#include "image/tile_grid.h"

#include <gmock/gmock.h>

#include <array>

#include "support/texture_pixels.h"

namespace {

using testing::ElementsAre;

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

TEST(TileGrid, ASideThatWouldBecomeEmptyLeavesNoTiles) {
    Grid low(64, 1);
    EXPECT_FALSE(low.Split(4, 2));
    EXPECT_THAT(Sizes(low.map), ElementsAre(0, 0, 0, 0));
    EXPECT_EQ(low.map.GetPixels(), nullptr);
    Grid narrow(1, 64);
    EXPECT_FALSE(narrow.Split(8, 1));
    EXPECT_THAT(Sizes(narrow.others[0]), ElementsAre(0, 0, 0, 0));
}

TEST(TileGrid, WithoutMemoryTheSplitLeavesItsTextureWhole) {
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
