#include <gmock/gmock.h>

#include "render/gl_font.h"
#include "render/overlay_button.h"
#include "render/overlay_image.h"
#include "support/gl_recorder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OverlayItemsTest : public GlTest {
protected:
    /// s and t of the lower-left and upper-right corner of the quad that `item` draws.
    static std::vector<double> ShownRegion(CGLObject& item) {
        ForgetCalls();
        item.Draw();
        const auto corners = CallsTo("glTexCoord2d");
        if (corners.size() != 4) return {};
        std::vector<double> region = Numbers(corners[0]);
        for (const double value : Numbers(corners[2])) region.push_back(value);
        return region;
    }
};

TEST_F(OverlayItemsTest, EachKindShowsItsPartOfTheTexture) {
    C2DImage image;
    image.position = {3.0F, 5.0F, -0.5F};
    image.size = {96.0F, 48.0F};
    image.SetTexture(7, 128, 64);
    EXPECT_THAT(ShownRegion(image), ElementsAre(0, 0, 0.75, 0.75));
    EXPECT_THAT(CallsTo("glVertex3f"),
                ElementsAre("glVertex3f 3 5 -0.5", "glVertex3f 99 5 -0.5", "glVertex3f 99 53 -0.5",
                            "glVertex3f 3 53 -0.5"));
    image.SetTexture(7, 65536, 65536);
    EXPECT_FALSE(ShownRegion(image).empty()) << "a product of 2^32 is not nothing";

    C2DButton strip;
    strip.position = {32.0F, 16.0F, 0.0F};
    strip.size = {16.0F, 32.0F};
    strip.SetTextures(4, 5, 64, 64);
    EXPECT_THAT(ShownRegion(strip), ElementsAre(0.5, 0.25, 0.75, 0.75));
    EXPECT_EQ(Gl().boundTexture, 4U);
    strip.highlighted = true;
    ShownRegion(strip);
    EXPECT_EQ(Gl().boundTexture, 5U);
    strip.SetTextures(4, 0, 64, 64);
    ShownRegion(strip);
    EXPECT_EQ(Gl().boundTexture, 4U) << "no second look";

    C2DButton2 sheet;
    sheet.size = {32.0F, 16.0F};
    sheet.SetImage(9, 64, 32, 128, 256);
    EXPECT_THAT(ShownRegion(sheet), ElementsAre(0.5, 0.625, 0.75, 0.6875));
    sheet.highlighted = true;
    EXPECT_THAT(ShownRegion(sheet), ElementsAre(0.5, 0.125, 0.75, 0.1875));
    sheet.highlighted = false;
    sheet.SetImage(9, 0, 0, 4, 5);
    EXPECT_EQ(ShownRegion(sheet).at(1), 0.4) << "an odd height: the lower of the middle rows";
}

TEST_F(OverlayItemsTest, TextsAreCutAtTheirBufferAndMeasuredByTheirCharacters) {
    CGLFont font;
    std::fill(std::begin(font.charWidth), std::end(font.charWidth), std::int16_t{1000});
    font.charWidth['a'] = 5;
    font.charWidth['b'] = 7;
    const std::u16string longText(5000, u'a');
    font.DrawText(1.0F, 2.0F, 0.5F, "ab", 1);
    font.DrawTextW(0.0F, 0.0F, 0.0F, u"a\u00B0\u4E2D");
    font.DrawTextW(0.0F, 0.0F, 0.0F, longText.c_str());
    font.DrawTextW(0.0F, 0.0F, 0.0F, longText.c_str(), 4000);
    font.DrawTextW(0.0F, 0.0F, 0.0F, nullptr);
    font.DrawTextW(0.0F, 0.0F, 0.0F, u"");
    const std::string cut(2047, 'a');
    EXPECT_THAT(Gl().texts, ElementsAre("a", "a\xB0?", cut, cut));
    EXPECT_EQ(Gl().modelviewDepth, 1);
    font.DrawText(0.0F, 0.0F, 0.0F, nullptr, 3);
    font.DrawText(0.0F, 0.0F, 0.0F, "abc", 0);
    EXPECT_EQ(Gl().modelviewDepth, 3) << "an empty text leaves its level";
    EXPECT_EQ(font.GetTextWidth("ab"), 12);
    EXPECT_EQ(font.GetTextWidth("ab", 1), 5);
    EXPECT_EQ(font.GetTextWidth("a\0ab", 4), 5) << "a zero byte ends it";
    EXPECT_EQ(font.GetTextWidth("a\xB0\xFF\x80"), 5) << "bytes above 127 count nothing";
    EXPECT_EQ(font.GetTextWidth(nullptr) + font.GetTextWidthW(nullptr), 0);
    EXPECT_EQ(font.GetTextWidthW(longText.c_str()), 2047 * 5);
}

}  // namespace
