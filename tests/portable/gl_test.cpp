// What depends on OpenGL's answers: extensions, names of lists, the tree of drawn objects, and what
// the planet does where an upload or the recording of a list fails.
#include <gmock/gmock.h>

#include "globe/planet.h"
#include "image/jpeg_texture.h"
#include "render/extension_flags.h"
#include "render/list_name.h"
#include "support/gl_fake.h"
#include "support/table.h"
#include "support/texture_pixels.h"

namespace {

using testing::Each;
using testing::IsEmpty;

TEST(ExtensionFlags, FindEachFeatureByItsOwnName) {
    ExtensionFlags flags;  // one for all: what is gone from the string must be gone here
    for (const Row& row : Table("extensions")) {
        DetectExtensionFlags(row.why.c_str(), flags);
        EXPECT_EQ(flags.hasSeparateSpecularColor, row.Int(0) != 0) << row.why;
        EXPECT_EQ(flags.hasMultitexture, row.Int(1) != 0) << row.why;
        EXPECT_EQ(flags.hasTextureCompression, row.Int(2) != 0) << row.why;
        EXPECT_EQ(flags.hasTextureEdgeClamp, row.Int(3) != 0) << row.why;
    }
    flags.hasTextureEdgeClamp = true;
    DetectExtensionFlags(nullptr, flags);
    EXPECT_TRUE(flags.hasTextureEdgeClamp) << "no answer changes nothing";
}

TEST(GlStrings, TellTheGenericRendererAndAreCutAtTheField) {
    EXPECT_TRUE(IsGenericRenderer("GDI Generic"));
    for (const char* other : {"GDI", "GDIplus", "llvmpipe GDI ", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(IsGenericRenderer(other));
    char field[256] = "before";
    CopyGlString(nullptr, field);
    EXPECT_STREQ(field, "before");
    CopyGlString(std::string(1000, 'x').c_str(), field);
    EXPECT_EQ(field, std::string(255, 'x'));
}

TEST(ListNames, AreAddressesAndMeetAlsoAcrossTheWrap) {
    EXPECT_TRUE(ListNamesOverlap(100, 256, 355, 2));
    EXPECT_FALSE(ListNamesOverlap(100, 256, 356, 2));
    EXPECT_TRUE(ListNamesOverlap(100, 256, 99, 2));
    EXPECT_FALSE(ListNamesOverlap(100, 256, 98, 2));
    EXPECT_TRUE(ListNamesOverlap(0xFFFFFFFFU, 256, 0, 2));
    const int object = 0;
    EXPECT_EQ(ListName(&object),
              static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(&object)));
}

/// Writes its number into a common log when it is drawn, and negative when it goes.
class Logged : public CGLObject {
public:
    Logged(std::vector<int>& log, int number) : log_(log), number_(number) {}
    ~Logged() override { log_.push_back(-number_); }
    void Draw() override { log_.push_back(number_); }

private:
    std::vector<int>& log_;
    int number_;
};

TEST(CGLObject, KeepsItsChildrenInOrderWhileItGrowsAndIsEmptied) {
    std::vector<int> log;
    CGLObject root;
    root.AddChild(std::unique_ptr<Logged>());
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(root.GetChild(0), nullptr);
        std::vector<int> expected;
        for (int i = 1; i <= 40; ++i) {
            expected.push_back(i);
            root.AddChild(std::make_unique<Logged>(log, i));
        }
        for (int i = 40; i >= 1; --i) expected.push_back(-i);
        log.clear();
        root.Draw();
        EXPECT_EQ(root.GetChild(39)->GetParent(), &root);
        EXPECT_EQ(root.GetChild(-1), nullptr);
        EXPECT_EQ(root.GetChild(40), nullptr);
        root.DeleteChildren();
        EXPECT_EQ(log, expected) << "drawn in order, deleted in reverse";
    }
}

class PlanetTest : public GlTest {
protected:
    PlanetTest() {
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
    const PlanetInputs inputs_{detail_, flags_, compression_, time_, none_};
    CPlanet planet_{inputs_};
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

class AtmosphereTest : public PlanetTest {
protected:
    AtmosphereTest() { Upload(); }
    /// Compiles and draws `planet`, which must show all its `layers`. @return how many shells were
    /// recorded
    int Look(CPlanet& planet, int layers) {
        const int listsBefore = Gl().newLists;
        planet.Compile();
        Gl().spheres.clear();
        planet.Draw();
        ExpectShells(layers);
        return Gl().newLists - listsBefore - kBodyAndCities;
    }
    static void ExpectShells(int layers) {
        std::vector<testing::Matcher<double>> radii;
        for (int i = 1; i <= layers; ++i)
            radii.push_back(testing::DoubleEq(1.0 + 0.025 * i * i / (layers * layers)));
        EXPECT_THAT(Gl().spheres, testing::ElementsAreArray(radii));
    }

    static constexpr int kBodyAndCities = 2;
};

TEST_F(AtmosphereTest, ShellsAreRecordedOnceAndAgainOnlyWhereTheDetailDiffers) {
    EXPECT_EQ(Look(planet_, 10), 10);
    EXPECT_EQ(Look(planet_, 10), 0) << "the Sun moves without them";
    detail_.sphereSlices = 120;
    EXPECT_EQ(Look(planet_, 10), 10);
    detail_.atmosphereLayers = 5;
    EXPECT_EQ(Look(planet_, 5), 5);
    EXPECT_EQ(std::ssize(Gl().lists), kBodyAndCities + 5) << "of shells that nobody calls";
    planet_.SetTexture(nullptr);
    EXPECT_EQ(Look(planet_, 1), 1);
    Upload();
    detail_.atmosphereLayers = 21;
    EXPECT_EQ(Look(planet_, 21), 20) << "more than there are records for";
}

TEST_F(AtmosphereTest, ShellThatCouldNotBeRecordedIsDrawnAllTheSameAndTriedAgain) {
    for (const bool noQuadric : {false, true}) {
        for (int failing = 1; failing <= 10; ++failing) {
            CPlanet planet(inputs_);
            ASSERT_EQ(planet.SetTexture(pointers_), 0U);
            (noQuadric ? Gl().failingQuadric : Gl().failingList) =
                (noQuadric ? Gl().quadrics : Gl().newLists) + failing;
            Gl().errors = {GL_STACK_UNDERFLOW};  // of somebody else
            EXPECT_EQ(Look(planet, 10), 10);
            EXPECT_EQ(std::ssize(Gl().lists), kBodyAndCities + 9) << "a half recorded list";
            EXPECT_EQ(Look(planet, 10), 1);
            EXPECT_EQ(Look(planet, 10), 0);
        }
        EXPECT_THAT(Gl().lists, IsEmpty()) << "deleted with the planet";
    }
}

TEST_F(AtmosphereTest, BodyThatIsDrawnDirectlyHasTheShellsOfThePresentDetail) {
    planet_.Draw();
    ExpectShells(10);
    Look(planet_, 10);
    detail_.atmosphereLayers = 5;
    Gl().spheres.clear();
    planet_.RenderBody();
    ExpectShells(5);
}

}  // namespace
