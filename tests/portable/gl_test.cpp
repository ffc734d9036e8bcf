// What the drawn objects ask of OpenGL and what they do with its answers: extensions, names, the
// tree of objects, buttons, texts, the planet where an upload or the recording of a list fails.
#include "globe/planet.h"
#include "render/gl_font.h"
#include "render/lamp.h"
#include "render/list_name.h"
#include "render/overlay_button.h"
#include "render/overlay_image.h"
#include "support/gl_fake.h"
#include "support/memory_picture.h"
#include "window/status_lines.h"

namespace {

using testing::Each;
using testing::ElementsAre;

TEST(GlNames, GiveExtensionsAndTheGenericRendererAndDoNotMeet) {
    const std::pair<const char*, int> cases[] = {
        {"GL_EXT_separate_specular_color GL_EXT_bgra", 1},
        {"GL_EXT_bgra GL_ARB_multitexture", 2},
        {"GL_ARB_multitexture_extended", 2},  // as a part of a longer name
        {"GL_ARB_texture_compression GL_EXT_texture_edge_clamp", 12},
        {"GL_SGIS_texture_edge_clamp GL_EXT_multitexture", 0},
        {"", 0}};
    ExtensionFlags flags;  // one for all: what is gone from the string must be gone here
    for (const auto& [extensions, bits] : cases) {
        DetectExtensionFlags(extensions, flags);
        EXPECT_EQ(bits, flags.hasSeparateSpecularColor + flags.hasMultitexture * 2 +
                            flags.hasTextureCompression * 4 + flags.hasTextureEdgeClamp * 8);
    }
    EXPECT_TRUE(IsGenericRenderer("GDI Generic"));
    EXPECT_FALSE(IsGenericRenderer("llvmpipe GDI ") || IsGenericRenderer(nullptr));
    char field[256];
    CopyGlString(std::string(1000, 'x').c_str(), field);
    EXPECT_EQ(field, std::string(255, 'x'));
    // Names of lists are addresses and meet also across the wrap.
    EXPECT_TRUE(ListNamesOverlap(100, 256, 355, 2) && !ListNamesOverlap(100, 256, 356, 2));
    EXPECT_TRUE(ListNamesOverlap(100, 256, 99, 2) && !ListNamesOverlap(100, 256, 98, 2));
    EXPECT_TRUE(ListNamesOverlap(0xFFFFFFFFU, 256, 0, 2));
}

/// Sends its number when it is drawn, and the negative number when it goes.
struct Numbered : CGLObject {
    explicit Numbered(int i) : number(i) {}
    ~Numbered() override { Gl().sent.push_back(-number); }
    void Draw() override { Gl().sent.push_back(number); }
    int number;
};

TEST_F(GlTest, ChildrenAreDrawnInOrderAndDeletedInReverse) {
    CGLObject root;
    for (int i = 1; i <= 3; ++i) root.AddChild(std::make_unique<Numbered>(i));
    EXPECT_EQ(root.AddChild(std::unique_ptr<Numbered>()), nullptr);
    root.Draw();
    EXPECT_EQ(root.GetChild(2)->GetParent(), &root);
    EXPECT_TRUE(root.GetChild(-1) == nullptr && root.GetChild(3) == nullptr);
    root.DeleteChildren();
    EXPECT_THAT(Gl().sent, ElementsAre(1, 2, 3, -3, -2, -1));
}

std::vector<double> Sent(CGLObject& object) {
    Gl().sent.clear();
    object.Draw();
    return Gl().sent;
}

TEST_F(GlTest, ButtonsShowTheirPartOfTheTextureAndOwnTheirLowerLeftEdges) {
    C2DButton button;
    button.position = {16.0F, 32.0F, 0.0F};
    button.size = {48.0F, 16.0F};
    button.SetTextures(5, 6, 128, 64);
    EXPECT_THAT(Sent(button), ElementsAre(5, 0.125, 0.5, 16, 32, 0, 0.5, 0.5, 64, 32, 0,  //
                                          0.5, 0.75, 64, 48, 0, 0.125, 0.75, 16, 48, 0));
    button.highlighted = true;
    EXPECT_EQ(Sent(button).at(0), 6);
    EXPECT_TRUE(button.HitTest(16, 32) && button.HitTest(63, 47));
    EXPECT_FALSE(button.HitTest(15, 32) || button.HitTest(64, 32) || button.HitTest(16, 31));
    EXPECT_FALSE(button.HitTest(16, 48));
    C2DButton2 ofSheet;
    ofSheet.SetImage(7, 32, 64, 128, 256);
    EXPECT_EQ(Sent(ofSheet).at(2), 0.75) << "the normal picture is in the upper half";
    ofSheet.highlighted = true;
    EXPECT_EQ(Sent(ofSheet).at(2), 0.25);
    C2DImage image;
    image.SetTexture(8, 40, 80);
    EXPECT_EQ(Sent(image).at(12), 0.25) << "20 of 80 pixels";
    CLamp lamp(GL_LIGHT1);
    lamp.lightPosition[1] = 3.0;
    lamp.lightPosition[2] = 4.0;
    EXPECT_THAT(Sent(lamp), ElementsAre(0, 3, 4, -0.0, -0.6F, -0.8F)) << "towards the centre";
}

TEST_F(GlTest, TextsAreMeasuredByTheirAsciiCharactersAndDrawnToTheirLength) {
    CGLFont font;
    std::fill(std::begin(font.charWidth), std::end(font.charWidth), 8);
    EXPECT_EQ(font.GetTextWidth("a\xE9z"), 16) << "what is not ASCII counts as nothing";
    EXPECT_EQ(font.GetTextWidthW(u"Lima, Peru", 4), 32);
    font.DrawTextW(0.0F, 0.0F, 0.0F, u"Lima, Peru", 4);
    font.DrawTextW(0.0F, 0.0F, 0.0F, u"", 4);
    EXPECT_THAT(Gl().texts, ElementsAre("Lima"));
    EXPECT_EQ(Gl().matrixDepth, 1);
    font.DrawText(0.0F, 0.0F, 0.0F, "");
    EXPECT_EQ(Gl().matrixDepth--, 2) << "an empty text leaves its matrix";
}

TEST_F(GlTest, StatusLinesStandAboveEachOther) {
    CGLFont font;
    font.maxHeight = 13;
    font.charWidth[' '] = 5;
    CGeoPoint point;
    LevelOfDetail detail;
    detail.StartMeasuring();
    detail.AddFrame(false, 5);
    StatusLines lines{point, detail, true, true, true, 130, 67, 4096, "", "1.1", "V", true, true};
    DrawStatusLines(lines, font);
    EXPECT_THAT(Gl().texts,
                ElementsAre(testing::StartsWith("Lat  0"),
                            "per. factor: 100%, atmo layers: 10, slices: 180, stacks 120, texture "
                            "size 512x128(max 16384x8192), test 0/3",
                            "Renderer: ", ", Version: ", "1.1", "Vendor: ", "V", "200.0 FPS",
                            "Loading texture...", "Rescaling and splitting textures..."));
    EXPECT_THAT(Gl().sent, ElementsAre(4, 4, 4, 19, 4, 38, 9, 38, 9, 38, 19, 38, 4, 53, 9, 53,  //
                                       4, 68, 4, 83, 4, 98));
}

class PlanetTest : public GlTest {
protected:
    PlanetTest() {
        for (std::size_t i = 0; i < kTileCount; ++i) {
            LoadImage(tiles_[i], NoiseImage(16, 8));
            pointers_[i] = &tiles_[i];
        }
    }
    std::uint32_t Upload() { return planet_->SetTexture(pointers_); }

    /// Compiles and draws the planet, which must show all its `layers`. @return how many shells
    /// were recorded
    int Look(int layers) {
        const int listsBefore = Gl().newLists;
        planet_->Compile();
        Gl().spheres.clear();
        planet_->Draw();
        EXPECT_EQ(std::ssize(Gl().spheres), layers);
        return Gl().newLists - listsBefore - kBodyAndCities;
    }

    static constexpr int kBodyAndCities = 2;
    MeshDetail detail_;
    ExtensionFlags flags_;
    std::int32_t compression_ = 1;
    SYSTEMTIME time_{2024, 3, 3, 20, 12, 0, 0, 0};
    CityTable none_;
    CGLTexture tiles_[kTileCount];
    const CGLTexture* pointers_[kTileCount];
    const PlanetInputs inputs_{detail_, flags_, compression_, time_, none_};
    std::unique_ptr<CPlanet> planet_ = std::make_unique<CPlanet>(inputs_);
};

TEST_F(PlanetTest, FailureOfAnyUploadLeavesNoTextureBehind) {
    for (int failing = 1; failing <= kTileCount; ++failing) {
        Gl() = {};
        Gl().failingUpload = failing;
        EXPECT_EQ(Upload(), GLenum{GL_OUT_OF_MEMORY});
        EXPECT_THAT(planet_->textureNames, Each(0U));
        EXPECT_TRUE(Gl().textures.empty() && planet_->tileWidth == 0);
    }
    Gl().errors = {GL_INVALID_ENUM, GL_STACK_UNDERFLOW};
    EXPECT_EQ(Upload(), 0U) << "older errors are not blamed on a tile";
    Gl().errors.resize(9999, GL_INVALID_OPERATION);  // the context is lost
    EXPECT_EQ(Upload(), GLenum{GL_INVALID_OPERATION});
}

TEST_F(PlanetTest, ShellsAreRecordedOnceAndAgainWhereTheDetailDiffersOrTheListFailed) {
    Upload();
    planet_->Draw();
    EXPECT_EQ(Gl().spheres.size(), 10U) << "drawn directly";
    Gl().failingList = 7;
    Gl().errors = {GL_STACK_UNDERFLOW};  // of somebody else
    EXPECT_EQ(Look(10), 10);
    EXPECT_EQ(std::ssize(Gl().lists), kBodyAndCities + 9) << "a half recorded list";
    EXPECT_EQ(Look(10), 1);
    EXPECT_EQ(Look(10), 0) << "the Sun moves without them";
    detail_.sphereSlices = 120;
    EXPECT_EQ(Look(10), 10);
    detail_.atmosphereLayers = 5;
    EXPECT_EQ(Look(5), 5);
    EXPECT_EQ(std::ssize(Gl().lists), kBodyAndCities + 5) << "of shells that nobody calls";
    planet_->SetTexture(nullptr);
    EXPECT_EQ(Look(1), 1);
    Upload();
    detail_.atmosphereLayers = 21;
    EXPECT_EQ(Look(21), 20) << "more than there are records for";
    planet_.reset();
    EXPECT_TRUE(Gl().lists.empty() && Gl().textures.empty());
}

}  // namespace
