// Keys, wheel and pointer: where camera and globe stand afterwards, as the picture shows it. Also
// input that goes astray: a capture that somebody takes, a quit that passes by, a window that goes
// from under the pointer.
#include <cmath>

#include "support/map_play_win.h"

namespace {

class InputTest : public MapPlay {
protected:
    InputTest() { Open(400, 300); }
};

TEST_F(InputTest, KeysTurnAndZoomTheWayTheyPushAndTheWheelToTheLimits) {
    PlayRows("home; unpainted",
             {
                 {"up", "key up 3; repaint; view 43 0"},
                 {"down, past 0", "key down 41; repaint; view 359 0"},
                 {"left", "key left 2; repaint; view 40 2"},
                 {"right, past 0", "key right 2; repaint; view 40 358"},
                 {"upside down from 90", "key up 50; key left; view 90 359"},
                 {"upside down up to 270", "key up 230; key right; view 270 1"},
                 {"upright again", "key up 231; key right; view 271 359"},
                 {"nearer", "key plus 2; repaint; view 40 0 -12"},
                 {"farther", "key minus 2; repaint; view 40 0 -12.4"},
                 {"start", "key up 5; key left 5; key plus 5; key clear; repaint; view 40 0"},
                 {"a notch", "wheel -120; repaint; view 40 0 -12.1"},
                 {"less than a notch", "wheel -119; view 40 0"},
                 {"the farthest", "wheel 32767; repaint; view 40 0 -28.5"},
                 {"the nearest", "wheel -32768; repaint; view 40 0 -4.1"},
                 {"the night moves on, and one more frame follows a change of size",
                  "runs sun 5000; size 420 310; paint; repaint; paint; no repaint; size 400 300"},
                 {"a held key repeats only where that makes sense",
                  "started any; held key f 5; held key h 5; held key i 5; held key l 5;"
                  "held key insert 5; started 0; opened none; labels none;"
                  "held key up 5; held key left 5; held key plus 5; view 45 5 -11.7"},
             });
}

TEST_F(InputTest, DragKeepsTheGrabbedPointUnderThePointer) {
    points["centre"] = {200, 149};  // to the pixel
    const struct {
        const char* why;
        const char* keys;
        POINT to;
        double pixels;  // by which the way may miss: along no circle of the globe it is not exact
    } cases[] = {
        {"down the middle, upside down", "key up 80", {200, 89}, 0.6},
        {"along the equator", "key down 40", {290, 149}, 0.6},
        {"anywhere upside down", "key up 140", {230, 239}, 40.0},
        {"out of the window", "key plus 60", {200, -20}, 0.6},
    };
    for (const auto& c : cases) {
        points["to"] = c.to;
        points["level"] = {c.to.x, 149};
        Play(std::string("home;") + c.keys, c.why);
        const SeenView start = LookAtView();
        Play("press centre; capture; drag level; unpainted; drag to; repaint; mark", c.why);
        const POINT now = PixelOfPlace(marked, start.tilt, -start.spin);
        EXPECT_LT(std::hypot(now.x - c.to.x, now.y - c.to.y), c.pixels) << c.why;
        Play("drag -3000,-3000; at mark; drag centre", "beside the globe a drag holds still");
        marked = start;
        Play("at mark; release centre; no capture; stops flight", "a drag is no click");
    }
    PlayRows(
        "home; mark",
        {{"pressed in space", "press 3,3; drag 200,150; at mark; release 230,160; stops flight"},
         {"the button is up", "press 200,150; release 200,150; home; drag 230,160; at mark"},
         {"the button went down for something else",
          "press 200,150; take capture; drag 240,150; at mark; release 240,150"}});
    Play("home; mark; press 200,150");
    Pointer(WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, {240, 170});
    Play("at mark; release 200,150; runs flight", "not the left button alone: nothing was dragged");
}

TEST_F(InputTest, ClickFliesThePointToTheCentreUntilAKey) {
    for (const POINT& click : {POINT{260, 150}, {150, 200}}) {
        points["to"] = click;
        // Windows sends moves that move nothing.
        Play("mark; press to; focus; drag to; release to; runs flight 20; fly");
        const SeenView end = LookAtView();
        const POINT clicked = PixelOfPlace(marked, end.tilt, -end.spin);
        EXPECT_TRUE(clicked.x == click.x && clicked.y == click.y) << clicked.x << ' ' << clicked.y;
    }
    PlayRows(
        "home; click 280,150; runs flight; tick flight",
        {
            {"a tick that was under way", "key up; stops flight; mark; tick flight; at mark"},
            {"zoom", "key plus; stops flight"},
            {"a key without a meaning, a press; a flight paints by its own steps",
             "key z; runs flight; press 3,3; runs flight; release 3,3; unpainted; move 100,100;"
             "no repaint; tick flight; repaint; runs flight"},
            {"a drag under a flight that a key stops grabs anew: a pixel is less than a degree",
             "home; click 260,100; tick flight 3; press 150,170; tick flight 10; runs flight;"
             "key i; stops flight; mark; drag 151,170; at mark 1; release 3,3; home"},
            {"the timer goes with its window", "close; no timers"},
        });
}

TEST_F(InputTest, AQuitWaitsForTheHostsLoop) {
    PostQuitMessage(7);
    Play("key f; paint; paint; key f", "frame after frame the map itself looks for due timers");
    MSG message = {};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(InputTest, LeavingIsNoticedByAWindowMadeAnew) {
    const FakedImport<"TrackMouseEvent", decltype(TrackMouseEvent)> tracks(
        library.module, [](TRACKMOUSEEVENT*) { return TRUE; });
    Play("move 200,150; move 201,150; passing window; move 202,150");
    EXPECT_EQ(tracks.Calls(), 1) << "another window's end is nothing to this one";
    Play("close; create again; move 200,150");
    EXPECT_EQ(tracks.Calls(), 2);
}

}  // namespace
