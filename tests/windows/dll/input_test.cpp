// Keys, wheel and pointer: where camera and globe stand afterwards, as the picture shows it. Also
// input that goes astray: a capture that somebody takes, a quit that passes by, a window that goes
// from under the pointer.
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
                 {"nearer", "key plus 2; repaint; view 40 0 -12"},
                 {"farther", "key minus 2; repaint; view 40 0 -12.4"},
                 {"start", "key up 5; key left 5; key plus 5; key clear; repaint; view 40 0"},
                 {"a notch", "wheel -120; repaint; view 40 0 -12.1"},
                 {"less than a notch", "wheel -119; view 40 0"},
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
    PlayRows("home; mark",
             {{"along the equator, and beside the globe it holds still",
               "key down 40; press centre; capture; unpainted; drag 290,149; repaint;"
               "same 290,149 0:0; drag -3000,-3000; same 290,149 0:0; drag centre; view 0 0;"
               "release centre; no capture; stops flight"},
              {"down the middle, upside down",
               "key up 80; press centre; drag 200,89; same 200,89 120:0; release 200,89"},
              {"out of the window",
               "key plus 60; press centre; drag 200,-20; same 200,-20 40:0; release 3,3"},
              {"pressed in space", "press 3,3; drag 200,150; at mark; release 230,160"},
              {"the button is up", "press 200,150; release 200,150; home; drag 230,160; at mark"},
              {"the button went down for something else",
               "press 200,150; take capture; drag 240,150; at mark; release 240,150"}});
}

TEST_F(InputTest, ClickFliesThePointToTheCentreUntilAKey) {
    PlayRows(
        "home; press 280,150; focus; drag 280,150; release 280,150; runs flight 20; tick flight",
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
}

TEST_F(InputTest, LeavingIsNoticedByAWindowMadeAnew) {
    const FakedImport<"TrackMouseEvent", decltype(TrackMouseEvent)> tracks(library.module);
    Play("move 200,150; move 201,150; passing window; move 202,150");
    EXPECT_EQ(tracks.Calls(), 1) << "another window's end is nothing to this one";
    Play("leave; move 200,150; close; create again; move 80,60");
    EXPECT_EQ(tracks.Calls(), 3);
}

}  // namespace
