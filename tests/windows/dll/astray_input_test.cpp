// Input that goes astray: a capture that somebody takes, a quit that passes by, a window that goes
// from under the pointer.
#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

namespace {

class AstrayInputTest : public DrivenMapTest {
protected:
    AstrayInputTest() { Open(400, 300); }
    void ExpectDragTurnsNothing(POINT to, const char* why) {
        const SeenView before = LookAtView();
        cursor = to;
        Drag(to);
        const SeenView after = LookAtView();
        EXPECT_EQ(after.tilt, before.tilt) << why;
        EXPECT_EQ(after.spin, before.spin) << why;
    }
};

TEST_F(AstrayInputTest, AQuitWaitsForTheHostsLoop) {
    Key(window, 'F');  // frame after frame: the map looks for due timers itself
    PostQuitMessage(7);
    for (int i = 0; i < 3; ++i) Paint(window);
    MSG message = {};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(AstrayInputTest, LeavingIsNoticedByAWindowMadeAnew) {
    const FakedImport<"TrackMouseEvent", decltype(TrackMouseEvent)> tracks(
        library.module, [](TRACKMOUSEEVENT*) { return TRUE; });
    Hover({200, 150});
    Hover({201, 150});
    EXPECT_EQ(tracks.Calls(), 1);
    DestroyWindow(CreateMap(100, 100));
    Hover({202, 150});
    EXPECT_EQ(tracks.Calls(), 1) << "another window's end is nothing to this one";
    DestroyWindow(window);
    window = CreateMap(400, 300);
    Hover({200, 150});
    EXPECT_EQ(tracks.Calls(), 2);
}

TEST_F(AstrayInputTest, ACaptureThatSomebodyTookEndsTheDrag) {
    Press({200, 150});
    SetCapture(host);
    ExpectDragTurnsNothing({240, 150}, "the button went down for something else");
    Release({240, 150});
    Press({200, 150});
    const SeenView before = LookAtView();
    Drag({240, 150});
    EXPECT_NE(LookAtView().spin, before.spin) << "the next press drags";
}

TEST_F(AstrayInputTest, AKeyThatStopsAFlightUnderAHeldButtonLetsItGrabAnew) {
    Click({260, 100});
    for (int i = 0; i < 3; ++i) Tick(kFlightTimer);
    cursor = {150, 170};
    Press(cursor);
    for (int i = 0; i < 10; ++i) Tick(kFlightTimer);
    ASSERT_TRUE(Runs(kFlightTimer));
    Key(window, 'I');
    ASSERT_FALSE(Runs(kFlightTimer));
    const SeenView before = LookAtView();
    Drag({151, 170});
    const SeenView after = LookAtView();
    EXPECT_NEAR(after.tilt, before.tilt, 1.0) << "a pixel is less than a degree";
    EXPECT_NEAR(after.spin, before.spin, 1.0);
}

}  // namespace
