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

TEST_F(MapButtonsTest, PhotoButtonsShowOnlyWhereTheyLeadSomewhere) {
    for (const Row& row : Table("photo_buttons")) {
        Layout({kWidth, 600, row.Int(0), row.Int(1), row.Int(2), row.Int(3) != 0});
        EXPECT_EQ(HitTest(700, 550) == 45, row.Int(4) != 0) << row.why;
        EXPECT_EQ(HitTest(735, 525) == 33, row.Int(5) != 0) << row.why;
        EXPECT_EQ(HitTest(755, 525) == 34, row.Int(6) != 0) << row.why;
    }
}

}  // namespace
