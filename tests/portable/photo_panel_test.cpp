#include "photos/photo_panel.h"

#include <gmock/gmock.h>

#include "support/gl_stand_in.h"
#include "support/photo_tree.h"

namespace {

using testing::ElementsAre;
using Span = std::pair<int, int>;

// A window of 800 x 600 with a font of 13 pixels: the strip of titles is 85 high, the photos begin
// at y = 515 and may come down to y = 108.
constexpr PanelArea kArea = {800, 600, 13};

class PhotoPanelTest : public GlTest {
protected:
    PhotoPanelTest() { Tree().Reset(); }
    CityTable Cities() { return {&paris_, 1}; }
    /// Photos of Paris, numbered downward, so that they are shown in the order of `heights`.
    void Show(const std::vector<std::int32_t>& heights) {
        std::string index;
        auto number = static_cast<int>(heights.size());
        for (const std::int32_t height : heights) {
            const std::string text = std::to_string(number--);
            Tree().AddPhoto(WidenAscii("France\\Paris\\" + text + ".jpg"), 100, height);
            index += text + "\n";
        }
        Tree().AddIndex(u"France\\Paris\\index.tsv", index);
        ResizePhotoPanel(panel_, kArea);
        ShowPhotoPanel(panel_, Cities(), u"France", u"Paris");
    }
    int CountIn(const PanelArea& area) {
        ResizePhotoPanel(panel_, area);
        return panel_.shownCount;
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

    CityRecord paris_ = MakeCity(u"Paris", u"France");
    PhotoPanel panel_;
};

TEST_F(PhotoPanelTest, StacksPhotosBelowTheTitlesAndAboveTheButtons) {
    Show({100, 200, 80, 60});
    EXPECT_THAT(Spans(),
                ElementsAre(Span{415, 515}, Span{211, 411}, Span{127, 207}, Span{708, 768}))
        << "before the first frame a click must find them in place";
    EXPECT_EQ(CountIn(kArea), 3) << "the fourth would reach among the buttons";
    EXPECT_EQ(CountIn({800, 1000, 13}), 4) << "a higher window has room";
    EXPECT_EQ(CountIn({800, 100, 13}), 0);
    Show({250, 200, 10});
    EXPECT_EQ(panel_.shownCount, 1) << "a small photo never slips in out of order";
    Show({200, 203});
    EXPECT_EQ(panel_.shownCount, 2) << "down to the last pixel";
    Show({200, 204});
    EXPECT_EQ(panel_.shownCount, 1);
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
