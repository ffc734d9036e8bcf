#include "photos/photo_panel.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "support/gl_stand_in.h"
#include "support/photo_tree.h"

namespace {

using testing::ElementsAre;
using Span = std::pair<int, int>;

// A window of 800 x 600 with a font of 13 pixels: the strip of titles is 85 high, the photos begin
// at y = 515 and may come down to y = 108.
constexpr PanelArea kArea = {800, 600, 13};
constexpr std::int32_t kLeft = 692;

class PhotoPanelTest : public GlTest {
protected:
    PhotoPanelTest() {
        Tree().Reset();
        font_.built = true;
        font_.maxHeight = 13;
        std::fill(std::begin(font_.charWidth), std::end(font_.charWidth), std::int16_t{6});
        pointer_.valid = true;
        PointAt(kLeft + 1, 450);
    }
    CityTable Cities() { return {records_, 2}; }
    /// Photos of Paris, numbered downward from the number of heights, so that they are shown in the
    /// order of `heights`.
    void Show(const std::vector<std::int32_t>& heights, WideView key = u"Paris",
              std::int32_t width = 100) {
        std::string index;
        auto number = static_cast<int>(heights.size());
        for (const std::int32_t height : heights) {
            const std::string text = std::to_string(number--);
            Tree().AddPhoto(WidenAscii("France\\Paris\\" + text + ".jpg"), width, height);
            index += text + "\tParis\t\tCaption " + text + "\tCaption " + text + "\n";
        }
        Tree().AddIndex(u"France\\Paris\\index.tsv", index);
        Tree().AddIndex(u"France\\index.tsv", index);
        ResizePhotoPanel(panel_, kArea);
        ShowPhotoPanel(panel_, Cities(), u"France", WideString(key));
    }
    const std::vector<std::string>& Draw(const PanelArea& area = kArea) {
        Gl().texts.clear();
        DrawPhotoPanel(panel_, area, Cities(), font_, pointer_);
        return Gl().texts;
    }
    void PointAt(std::int32_t x, std::int32_t y) {
        pointer_.mouseX = x;
        pointer_.mouseY = y;
    }
    /// Lower and upper edge of each image, window pixels.
    std::vector<Span> Spans() const {
        std::vector<Span> spans;
        for (const PanelImage& entry : panel_.images) {
            const int y = panel_.panelY + static_cast<int>(entry.image->position.y);
            spans.emplace_back(y, y + static_cast<int>(entry.image->size.height));
        }
        return spans;
    }

    CityRecord records_[2] = {MakeCity(u"Lyon", u"France"), MakeCity(u"Paris", u"France")};
    PhotoPanel panel_;
    CGLFont font_;
    CGeoPoint pointer_;
};

TEST_F(PhotoPanelTest, StacksPhotosBelowTheTitlesAndAboveTheButtons) {
    Show({100, 200, 80, 60});
    const auto placed = ElementsAre(Span{415, 515}, Span{211, 411}, Span{127, 207}, Span{708, 768});
    EXPECT_THAT(Spans(), placed) << "before the first frame a click must find them in place";
    Draw();
    EXPECT_THAT(Spans(), placed);
    EXPECT_EQ(panel_.shownCount, 3) << "the fourth would reach among the buttons";
    Draw({800, 1000, 13});
    EXPECT_EQ(panel_.shownCount, 4) << "a higher window has room";
    Draw({800, 100, 13});
    EXPECT_EQ(panel_.shownCount, 0);
    Show({250, 200, 10});
    EXPECT_EQ(panel_.shownCount, 1) << "a small photo never slips in out of order";
    Show({200, 203});
    EXPECT_EQ(panel_.shownCount, 2) << "down to the last pixel";
    Show({200, 204});
    EXPECT_EQ(panel_.shownCount, 1);
}

TEST_F(PhotoPanelTest, SurvivesAShrunkTableLongNamesAndAPhotoWithoutCaption) {
    Show({100}, u"");
    Gl().texts.clear();
    DrawPhotoPanel(panel_, kArea, CityTable{}, font_, pointer_);
    EXPECT_THAT(Gl().texts, ElementsAre("France", "Caption 1", "Click to enlarge"));
    panel_.photoSet.photos[0]->caption.clear();
    EXPECT_THAT(Draw(), ElementsAre("France", "Paris, France", "Click to enlarge"));
    panel_.placeName = WideString(5000, u'n');
    std::fill(std::begin(records_[1].cityName), std::end(records_[1].cityName), u'c');
    EXPECT_EQ(Draw().at(1), std::string(64, 'c') + ", " + std::string(189, 'n'));
}

TEST_F(PhotoPanelTest, PagesThroughManyPhotosAndPastThoseThatCannotBeShown) {
    std::vector<std::int32_t> heights(40, 75);  // 5 of 79 pixels fit into 407
    heights[20] = 300;                          // too high to load
    Show(heights);
    EXPECT_FALSE(PageBack(panel_, Cities())) << "the first page";
    const auto turn = [this](bool changed) {
        EXPECT_TRUE(changed);
        ShowPhotoPanel(panel_, Cities(), u"France", u"Paris");
        return panel_.photoSet.firstShown;
    };
    EXPECT_EQ(turn(PageForward(panel_)), 16);
    EXPECT_EQ(turn(PageForward(panel_)), 32);
    EXPECT_EQ(turn(PageForward(panel_)), 39) << "three more than have room follow";
    EXPECT_FALSE(PageForward(panel_)) << "the last photo is shown";
    for (const std::int32_t first : {34, 29, 24, 18}) {
        EXPECT_EQ(turn(PageBack(panel_, Cities())), first) << "five with room, measured in files";
    }
    panel_.photoSet.firstShown = 0;
    Show(heights);
    panel_.photoSet.firstShown = 1000;
    Tree().photos.clear();
    EXPECT_TRUE(PageBack(panel_, Cities()));
    EXPECT_EQ(panel_.photoSet.firstShown, 24) << "from the last photo, at most a page";
}

}  // namespace
