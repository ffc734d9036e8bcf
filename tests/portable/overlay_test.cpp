// Buttons, images and texts drawn flat over the globe, and the lamp above it.
#include <gmock/gmock.h>

#include "render/gl_font.h"
#include "render/lamp.h"
#include "render/overlay_button.h"
#include "render/overlay_image.h"
#include "support/gl_fake.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OverlayTest : public GlTest {
protected:
    static std::vector<double> Sent(CGLObject& object) {
        Gl().sent.clear();
        object.Draw();
        return Gl().sent;
    }
};

TEST_F(OverlayTest, ButtonsShowTheirPartOfTheTextureAndOwnTheirLowerLeftEdges) {
    C2DButton button;
    button.position = {16.0F, 32.0F, 0.0F};
    button.size = {48.0F, 16.0F};
    button.SetTextures(5, 6, 128, 64);
    EXPECT_THAT(Sent(button), ElementsAre(5, 0.125, 0.5, 16, 32, 0, 0.5, 0.5, 64, 32, 0,  //
                                          0.5, 0.75, 64, 48, 0, 0.125, 0.75, 16, 48, 0));
    button.highlighted = true;
    EXPECT_EQ(Sent(button).at(0), 6);
    button.SetTextures(5, 0, 128, 64);
    EXPECT_EQ(Sent(button).at(0), 5) << "no texture of its own";
    EXPECT_TRUE(button.HitTest(16, 32) && button.HitTest(63, 47));
    EXPECT_FALSE(button.HitTest(15, 32) || button.HitTest(64, 32));
    EXPECT_FALSE(button.HitTest(16, 31) || button.HitTest(16, 48));
    C2DButton2 ofSheet;
    ofSheet.SetImage(7, 32, 64, 128, 256);
    EXPECT_EQ(Sent(ofSheet).at(2), 0.75) << "the normal picture is in the upper half";
    ofSheet.highlighted = true;
    EXPECT_EQ(Sent(ofSheet).at(2), 0.25);
    C2DImage image;
    EXPECT_THAT(Sent(image), IsEmpty()) << "no texture";
    image.SetTexture(8, 40, 80);
    EXPECT_EQ(Sent(image).at(12), 0.25) << "20 of 80 pixels";
}

TEST_F(OverlayTest, LampShinesFromItsPlaceToTheCentre) {
    CLamp lamp(GL_LIGHT1);
    lamp.lightPosition[1] = 3.0;
    lamp.lightPosition[2] = 4.0;
    EXPECT_THAT(Sent(lamp), ElementsAre(0, 3, 4, -0.0, -0.6F, -0.8F));
}

TEST_F(OverlayTest, TextsAreMeasuredByTheirAsciiCharactersAndDrawnToTheirLength) {
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

}  // namespace
