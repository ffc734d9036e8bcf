// What the planet does where OpenGL fails.
#include "globe/planet.h"

#include <gmock/gmock.h>

#include "image/jpeg_texture.h"
#include "support/gl_stand_in.h"
#include "support/texture_pixels.h"

namespace {

using testing::Each;
using testing::IsEmpty;

class PlanetTest : public GlTest {
protected:
    PlanetTest() : planet_(PlanetInputs{detail_, flags_, compression_, time_, none_}) {
        for (std::size_t i = 0; i < kTileCount; ++i) {
            LoadImage(tiles_[i], NoiseImage(16, 8));
            pointers_[i] = &tiles_[i];
        }
    }
    std::uint32_t Upload() { return planet_.SetTexture(pointers_); }

    MeshDetail detail_;
    ExtensionFlags flags_;
    std::int32_t compression_ = 1;
    SYSTEMTIME time_{2024, 3, 3, 20, 12, 0, 0, 0};
    CityTable none_;
    CGLTexture tiles_[kTileCount];
    const CGLTexture* pointers_[kTileCount];
    CPlanet planet_;
};

TEST_F(PlanetTest, FailureOfAnyUploadLeavesNoTextureBehind) {
    for (int failing = 1; failing <= kTileCount; ++failing) {
        Gl() = {};
        Gl().failingUpload = failing;
        EXPECT_EQ(Upload(), GLenum{GL_OUT_OF_MEMORY});
        EXPECT_EQ(Gl().uploads, failing);
        EXPECT_THAT(planet_.textureNames, Each(0U));
        EXPECT_THAT(Gl().textures, IsEmpty());
        EXPECT_EQ(planet_.tileWidth, 0U);
    }
    Gl().errors = {GL_INVALID_ENUM, GL_STACK_UNDERFLOW};
    EXPECT_EQ(Upload(), 0U) << "older errors are not blamed on a tile";
    EXPECT_TRUE(planet_.HasTexture());
}

TEST_F(PlanetTest, LostContextEndsTheUploadInsteadOfHanging) {
    Gl().steadyError = GL_INVALID_OPERATION;
    EXPECT_EQ(Upload(), GLenum{GL_INVALID_OPERATION});
    EXPECT_LT(Gl().errorsAsked, 100);
    EXPECT_FALSE(planet_.HasTexture());
}

}  // namespace
