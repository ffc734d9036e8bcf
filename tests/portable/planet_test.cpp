// What the planet does where OpenGL fails or is given senseless sizes.
#include "globe/planet.h"

#include <gmock/gmock.h>

#include <optional>

#include "image/jpeg_texture.h"
#include "support/gl_stand_in.h"
#include "support/texture_pixels.h"

namespace {

using testing::Each;
using testing::IsEmpty;

class PlanetTest : public GlTest {
protected:
    /// Tile i holds the value i + 1 in each byte of its 16 x 8 pixels.
    PlanetTest()
        : planet_(std::in_place, PlanetInputs{detail_, flags_, compression_, time_, none_}) {
        for (std::size_t i = 0; i < kTileCount; ++i) {
            MemoryImage image = NoiseImage(16, 8);
            image.bytes.assign(image.bytes.size(), static_cast<std::uint8_t>(i + 1));
            LoadImage(tiles_[i], image);
            pointers_[i] = &tiles_[i];
        }
    }
    std::uint32_t Upload() { return planet_->SetTexture(pointers_); }

    MeshDetail detail_;
    ExtensionFlags flags_;
    std::int32_t compression_ = 1;
    SYSTEMTIME time_{2024, 3, 3, 20, 12, 0, 0, 0};
    CityTable none_;
    CGLTexture tiles_[kTileCount];
    const CGLTexture* pointers_[kTileCount];
    std::optional<CPlanet> planet_;
};

TEST_F(PlanetTest, FailureOfAnyUploadLeavesNoTextureBehind) {
    for (int failing = 1; failing <= kTileCount; ++failing) {
        Gl() = {};
        Gl().failingUpload = failing;
        EXPECT_EQ(Upload(), GLenum{GL_OUT_OF_MEMORY});
        EXPECT_EQ(Gl().uploads, failing);
        EXPECT_THAT(planet_->textureNames, Each(0U));
        EXPECT_THAT(Gl().textures, IsEmpty());
        EXPECT_EQ(planet_->tileWidth, 0U);
    }
    Gl().errors = {GL_INVALID_ENUM, GL_STACK_UNDERFLOW};
    EXPECT_EQ(Upload(), 0U) << "older errors are not blamed on a tile";
    EXPECT_TRUE(planet_->HasTexture());
}

TEST_F(PlanetTest, LostContextEndsTheUploadInsteadOfHanging) {
    Gl().steadyError = GL_INVALID_OPERATION;
    EXPECT_EQ(Upload(), GLenum{GL_INVALID_OPERATION});
    EXPECT_LT(Gl().errorsAsked, 100);
    EXPECT_FALSE(planet_->HasTexture());
}

TEST_F(PlanetTest, StrangeResolutionsNeverCrash) {
    Upload();
    for (const MeshDetail& detail :
         {MeshDetail{0, 0, -1}, {3, 120, 0}, {180, 1, 1}, {-8, -8, 2}, {4, 2, 1}, {7, 5, 1}}) {
        detail_ = detail;
        planet_->RenderBody();
        EXPECT_EQ(Gl().matrixDepth, 1);
    }
}

}  // namespace
