// The names of the running DLL's display lists and textures, and its lamp over the pointer.
#include <gmock/gmock.h>

#include <cmath>

#include "support/gl_listing_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"
#include "support/seen_view_win.h"

namespace {

constexpr unsigned kFontLists = 256;

class GlNames : public MapHostTest {
protected:
    /// The first name of the font's lists, as the last text used it.
    static unsigned FontBase() {
        const auto calls = SpiedCalls("glListBase");
        return calls.empty() ? 0U : static_cast<unsigned>(SpiedNumbers(calls.back()).at(0));
    }
};

}  // namespace

TEST_F(GlNames, NothingNamedOutlivesItsWindow) {
    unsigned bases[2] = {};
    for (unsigned& base : bases) {
        SpiedGl().calls.clear();
        const HWND map = CreateTexturedMap();
        Paint(map);
        base = FontBase();
        const GlobeLists lists = LastGlobeLists(SpiedGl().calls);
        EXPECT_EQ(lists.cities, lists.body + 1);
        EXPECT_TRUE(lists.cities < base || lists.body - base >= kFontLists) << "no name twice";

        SpiedGl().calls.clear();
        DestroyWindow(map);
        const auto deleted = SpiedCalls("glDeleteLists");
        EXPECT_THAT(deleted,
                    testing::UnorderedElementsAre(GlCall("glDeleteLists", lists.cities, 1),
                                                  GlCall("glDeleteLists", lists.body, 1),
                                                  GlCall("glDeleteLists", base, kFontLists)));
        EXPECT_THAT(SpiedCalls("glDeleteTextures"),
                    testing::Contains(GlCall("glDeleteTextures", 8, GlAddress())));
        library.FreeMap();
    }
    EXPECT_EQ(bases[0], bases[1]) << "the font keeps its names for the life of the process";
}

TEST_F(GlNames, LampHangsOverThePlaceThatThePointerShows) {
    const HWND map = CreateTexturedMap();
    const struct {
        int key;   ///< pressed before, 0 for none
        int x, y;  ///< client coordinates
    } cases[] = {{0, 200, 150}, {0, 295, 120}, {VK_LEFT, 120, 90}, {VK_UP, 240, 200}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.x);
        if (c.key != 0) Key(map, c.key);
        SendMessageW(map, WM_MOUSEMOVE, 0, MAKELPARAM(c.x, c.y));
        SpiedGl().calls.clear();
        Paint(map);
        const GlListing at = SpiedCalls(GlCall("glLightfv", GL_LIGHT1, GL_POSITION));
        ASSERT_EQ(at.size(), 1U);
        const auto lamp = SpiedNumbers(at[0]);  // behind the light and the property
        EXPECT_EQ(lamp.at(5), 1.0) << "a lamp in a place, not a direction";
        const double height = std::hypot(lamp[2], lamp[3], lamp[4]);
        EXPECT_NEAR(height, 3.6, 1e-5) << "1.2 globe radii from the centre";
        const GlobeDirection over = {lamp[2] / height, lamp[3] / height, lamp[4] / height};
        const auto place = PlaceUnder(ViewOfPicture(SpiedGl().calls), c.x, c.y);
        ASSERT_TRUE(place);
        EXPECT_LT(AngleBetween(over, *place), 0.01);
        const GlListing beam = SpiedCalls(GlCall("glLightfv", GL_LIGHT1, GL_SPOT_DIRECTION));
        GlWalk walk(beam);
        walk.ExpectNear("glLightfv", {GL_LIGHT1, GL_SPOT_DIRECTION, -over.x, -over.y, -over.z, 1.0},
                        1e-6);
    }
}
