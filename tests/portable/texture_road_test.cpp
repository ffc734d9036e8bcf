#include "window/texture_road.h"

#include <gtest/gtest.h>

#include "support/memory_picture.h"
#include "support/table.h"

namespace {

class TextureRoadTest : public testing::Test {
protected:
    TextureRoadTest() {
        Files() = {};
        limits_.maxTextureSize = 64;
        limits_.textureLimit = 64;
        limits_.texScalerY = 0;
    }
    int Load(int width, int height) {
        Files().pictures[L"data\\map.jpg"] = NoiseImage(width, height);
        return LoadTexture(store_, limits_, L"data\\");
    }
    bool Split() { return SplitTextures(store_, limits_); }

    TextureStore store_;
    TextureLimits limits_;
};

TEST_F(TextureRoadTest, PictureGoesFromFileToEightTilesOnce) {
    EXPECT_FALSE(Split()) << "nothing is loaded";
    EXPECT_FALSE(FitTexture(store_, limits_)) << "nothing is loaded";
    EXPECT_EQ(Load(64, 32), kLoadedUnchanged);
    EXPECT_EQ(store_.Stage(), TextureStage::Loaded);
    EXPECT_FALSE(store_.HasAllTiles()) << "the whole map is not tile 0";
    EXPECT_TRUE(Split());
    EXPECT_TRUE(Split()) << "a second cut must leave the tiles alone";
    EXPECT_FALSE(FitTexture(store_, limits_)) << "tile 0 is not the map";
    EXPECT_TRUE(store_.HasAllTiles());
    for (int i = 0; i < kTileCount; ++i) {
        EXPECT_EQ(store_.Tiles()[i]->GetWidth(), 16);
        EXPECT_EQ(store_.Tiles()[i]->GetHeight(), 16);
    }
    EXPECT_TRUE(store_.TilesFit(16));
    EXPECT_FALSE(store_.TilesFit(15)) << "a lesser card";
    EXPECT_FALSE(store_.IsBusy());
    Load(64, 32);
    EXPECT_FALSE(store_.HasAllTiles()) << "a load that began since then has cleared the set";
    EXPECT_TRUE(Split());
    EXPECT_TRUE(store_.HasAllTiles());
}

TEST_F(TextureRoadTest, FailuresLeaveAnEmptyStore) {
    Load(64, 32);
    Split();
    Files().pictures.clear();
    Files().pictures[L"map.jpg"] = NoiseImage(64, 32);
    EXPECT_EQ(LoadTexture(store_, limits_, L"data\\"), kLoadFailed) << "the file has gone";
    EXPECT_EQ(store_.Stage(), TextureStage::Empty);
    EXPECT_FALSE(store_.HasAllTiles());
    EXPECT_FALSE(Split());
    EXPECT_EQ(LoadTexture(store_, limits_, L""), kLoadFailed) << "not from the current directory";
    EXPECT_NE(Load(64, 1), kLoadFailed);
    EXPECT_FALSE(Split()) << "one row has no northern and southern half";
    EXPECT_EQ(store_.Stage(), TextureStage::Empty);
    EXPECT_FALSE(store_.IsBusy());
}

}  // namespace
