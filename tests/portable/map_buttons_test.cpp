#include "photos/map_buttons.h"

#include <gmock/gmock.h>

#include "photos/button_sheet.h"
#include "support/gl_recorder.h"
#include "support/table.h"

namespace {

using testing::ElementsAre;

constexpr int kWidth = 800;

/// A window of 800 x 600 pixels with lines of 13 pixels.
class MapButtonsTest : public GlTest {
protected:
    MapButtonsTest() : sheet_(kSheetBytes) {
        font_.maxHeight = 13;
        for (auto& width : font_.charWidth) width = 8;
        for (std::size_t i = 0; i < sheet_.size(); ++i) sheet_[i] = static_cast<unsigned char>(i);
        buttons_.CreateButtons(sheet_.data());
    }
    void Layout(const ButtonLayout& layout, const HorivoWideChar* hint = nullptr) {
        ForgetCalls();
        buttons_.LayoutButtons(layout, font_, hint);
        EXPECT_EQ(Gl().modelviewDepth, 1);
    }
    int HitTest(int x, int y) { return buttons_.HitTestButtons(x, y, false, kWidth); }

    ButtonLayout everything_ = {kWidth, 600, 5, 5, 20, true};
    CGLFont font_;
    std::vector<unsigned char> sheet_;
    MapButtons buttons_;
};

TEST_F(MapButtonsTest, SheetBecomesOneTextureThatGoesWithTheButtons) {
    EXPECT_EQ(Gl().uploads.at(0).pixels, sheet_);
    EXPECT_EQ(Gl().uploads[0].width, kSheetWidth);
    buttons_.CreateButtons(sheet_.data());  // a new window: the old texture must not stay behind
    EXPECT_EQ(Gl().textures.size(), 1U);
    buttons_.DestroyButtons();
    buttons_.DestroyButtons();
    EXPECT_TRUE(Gl().textures.empty());
    EXPECT_EQ(CountCalls("glDeleteTextures"), 2U);
    buttons_.CreateButtons(nullptr);
    Layout(everything_, u"Add photos");
    EXPECT_EQ(CountCalls("glVertex3f") + Gl().texts.size(), 0U) << "without a sheet: no buttons";
    EXPECT_EQ(HitTest(746, 54), 0);
}

TEST_F(MapButtonsTest, EachButtonIsHitAndDrawnInItsPlaceWithItsOwnPartOfTheSheet) {
    Layout(everything_);
    EXPECT_THAT(CallsTo("glTranslatef"), ElementsAre("glTranslatef 692 0 0"));
    const auto corners = CallsTo("glTexCoord2d");
    const auto vertices = CallsTo("glVertex3f");
    std::size_t corner = 0;
    for (const Row& row : Table("button_places")) {
        const int id = std::stoi(row.why);
        const int x = row.Int(0);
        const int y = row.Int(1);
        EXPECT_EQ(HitTest(x, y), id);
        EXPECT_NE(HitTest(x - 1, y), id) << id;
        EXPECT_NE(HitTest(x, y - 1), id) << id;
        EXPECT_NE(HitTest(x + row.Int(2), y), id) << id;
        EXPECT_NE(HitTest(x, y + row.Int(3)), id) << id;
        const auto low = Numbers(corners.at(corner));
        const auto high = Numbers(corners.at(corner + 2));
        EXPECT_THAT(low, ElementsAre(row.Real(4) / 128.0, row.Real(5) / 256.0)) << id;
        EXPECT_EQ((high[0] - low[0]) * 128.0, row.Real(2)) << id;
        EXPECT_EQ((high[1] - low[1]) * 256.0, row.Real(3)) << id;
        EXPECT_THAT(Numbers(vertices.at(corner)), ElementsAre(x - 692, y, 0.0)) << id;
        corner += 4;
    }
    EXPECT_EQ(corners.size(), corner);
    // Where the next button reaches behind the photos button, the later of the two answers.
    EXPECT_EQ(HitTest(755, 545), 34);
    EXPECT_EQ(HitTest(755, 551), 45);
    EXPECT_EQ(HitTest(400, 300), 0);
}

TEST_F(MapButtonsTest, OnlyTheButtonUnderThePointerIsLitUntilItIsCleared) {
    const auto litCorners = [this] {
        Layout(everything_);
        int lit = 0;
        for (const auto& call : CallsTo("glTexCoord2d")) lit += Numbers(call)[1] < 0.5 ? 1 : 0;
        return lit;
    };
    EXPECT_EQ(litCorners(), 0);
    HitTest(746, 54);
    EXPECT_EQ(litCorners(), 4);
    HitTest(400, 300);
    EXPECT_EQ(litCorners(), 0);
    HitTest(746, 54);
    EXPECT_EQ(buttons_.HitTestButtons(746, 54, true, kWidth), 0);
    EXPECT_EQ(litCorners(), 0);
}

TEST_F(MapButtonsTest, PhotoButtonsShowOnlyWhereTheyLeadSomewhere) {
    for (const Row& row : Table("photo_buttons")) {
        Layout({kWidth, 600, row.Int(0), row.Int(1), row.Int(2), row.Int(3) != 0});
        EXPECT_EQ(HitTest(700, 550) == 45, row.Int(4) != 0) << row.why;
        EXPECT_EQ(HitTest(735, 525) == 33, row.Int(5) != 0) << row.why;
        EXPECT_EQ(HitTest(755, 525) == 34, row.Int(6) != 0) << row.why;
    }
}

TEST_F(MapButtonsTest, HintStandsLeftOfThePanelWhileThePhotosButtonIsLit) {
    const std::u16string wide(200, u'W');
    const char16_t* const hint = u"Add photos";
    const struct {
        const char16_t* hint;
        int x;
        bool offer;
        std::vector<std::string> drawn;
    } cases[] = {
        // Right edge 1 pixel left of the panel at 692, 10 letters of 8 pixels; 542 + 4 + 11 / 2.
        {hint, 700, true, {"glRasterPos3f 611 551.5 0"}},
        {wide.c_str(), 700, true, {"glRasterPos3f 0 551.5 0"}},
        {hint, 400, true, {}},
        {hint, 700, false, {}},  // hidden since
        {nullptr, 700, true, {}},
        {u"", 700, true, {}},
    };
    for (const auto& c : cases) {
        everything_.offerPhotos = true;
        Layout(everything_);
        HitTest(c.x, 550);
        everything_.offerPhotos = c.offer;
        Layout(everything_, c.hint);
        EXPECT_EQ(CallsTo("glRasterPos3f"), c.drawn) << &c - cases;
    }
}

}  // namespace
