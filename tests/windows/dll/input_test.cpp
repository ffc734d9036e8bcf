// Keys, wheel and pointer: where camera and globe stand afterwards, as the picture shows it.
#include <gmock/gmock.h>

#include <cmath>

#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 300;
constexpr LPARAM kHeldBit = LPARAM{1} << 30;
constexpr double kSamePlace = 0.01;  // degrees; a pixel of the start view is a quarter of one

class InputTest : public DrivenMapTest {
protected:
    InputTest() { Open(kWidth, kHeight); }

    void Keys(int key, int times) {
        for (int i = 0; i < times; ++i) Key(window, key);
    }
    /// Runs a flight. @return its number of steps
    int Fly() {
        int steps = 0;
        for (; Runs(kFlightTimer) && steps < 1000; ++steps) Tick(kFlightTimer);
        return steps;
    }
    void ExpectView(const SeenView& expected, const std::string& why) {
        const SeenView view = LookAtView();
        EXPECT_NEAR(view.tilt, expected.tilt, 1e-3) << why;
        EXPECT_NEAR(view.spin, expected.spin, 1e-3) << why;
        EXPECT_NEAR(view.distance, expected.distance, 1e-3) << why;
    }
};

TEST_F(InputTest, KeysTurnAndZoomTheWayTheyPush) {
    const struct {
        const char* why;
        int raise;  // arrow-up presses before, from tilt 40
        int key;
        int times;
        SeenView after;
    } cases[] = {
        {"up", 0, VK_UP, 3, {-12.2, 43.0, 0.0}},
        {"down, past 0", 0, VK_DOWN, 41, {-12.2, 359.0, 0.0}},
        {"left", 0, VK_LEFT, 2, {-12.2, 40.0, 2.0}},
        {"right, past 0", 0, VK_RIGHT, 2, {-12.2, 40.0, 358.0}},
        {"just upright", 49, VK_LEFT, 1, {-12.2, 89.0, 1.0}},
        {"upside down from 90", 50, VK_LEFT, 1, {-12.2, 90.0, 359.0}},
        {"upside down", 140, VK_RIGHT, 5, {-12.2, 180.0, 5.0}},
        {"upside down up to 270", 230, VK_RIGHT, 1, {-12.2, 270.0, 1.0}},
        {"upright again", 231, VK_RIGHT, 1, {-12.2, 271.0, 359.0}},
        {"nearer", 0, VK_ADD, 2, {-12.0, 40.0, 0.0}},
        {"farther", 0, VK_SUBTRACT, 2, {-12.4, 40.0, 0.0}},
        {"nearest", 0, VK_ADD, 100, {-4.1, 40.0, 0.0}},
        {"farthest", 0, VK_SUBTRACT, 200, {-28.5, 40.0, 0.0}},
    };
    for (const auto& c : cases) {
        Keys(VK_HOME, 1);
        Keys(VK_UP, c.raise);
        ValidateRect(window, nullptr);
        Keys(c.key, c.times);
        EXPECT_TRUE(TakeRepaintRequest()) << c.why;
        ExpectView(c.after, c.why);
    }
    for (const int home : {VK_CLEAR, VK_HOME}) {
        Keys(VK_UP, 5);
        Keys(VK_LEFT, 5);
        Keys(VK_ADD, 5);
        Keys(home, 1);
        ExpectView({-12.2, 40.0, 0.0}, "home");
    }
}

TEST_F(InputTest, HeldKeysRepeatOnlyWhereThatMakesSense) {
    const FakedImport<"CreateThread", decltype(CreateThread)> loads(library.module);
    for (const int key : {int{'F'}, int{'H'}, int{'I'}, int{'L'}, VK_INSERT})
        for (int i = 0; i < 5; ++i)
            SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), kHeldBit | 1);
    EXPECT_EQ(loads.Calls(), 0);
    Paint(window);
    EXPECT_FALSE(TakeRepaintRequest()) << "the frame rate is not shown";
    for (int i = 0; i < 5; ++i) {
        for (const int key : {VK_UP, VK_LEFT, VK_ADD})
            SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), kHeldBit | 1);
    }
    ExpectView({-11.7, 45.0, 5.0}, "held");
}

TEST_F(InputTest, WheelZoomsByWholeNotchesAndNothingPassesTheLimits) {
    const struct {
        const char* why;
        int delta;
        double distance;
    } cases[] = {
        {"towards the user is nearer", -120, -12.1}, {"away", 240, -12.4},
        {"less than a notch", -119, -12.2},          {"the rest of a notch", -359, -12.0},
        {"as far as it goes", 32767, -28.5},         {"as near as it goes", -32768, -4.1},
    };
    for (const auto& c : cases) {
        Keys(VK_HOME, 1);
        ValidateRect(window, nullptr);
        Wheel(c.delta);
        EXPECT_TRUE(TakeRepaintRequest()) << c.why;
        ExpectView({c.distance, 40.0, 0.0}, c.why);
    }
    // Key steps of 0.1 drift, after some forty of them by enough for one step too many.
    for (const int steps : {1, 41, 100, 200}) {
        Wheel(-120 * 100);
        Keys(VK_SUBTRACT, steps);
        Keys(VK_ADD, steps + 1);
        ASSERT_GE(-4.0999, LookAtView().distance) << steps;
    }
}

TEST_F(InputTest, DragKeepsTheGrabbedPointUnderThePointer) {
    const struct {
        const char* why;
        int key;
        int times;
        POINT from;
        POINT to;
    } cases[] = {
        {"down the middle", VK_UP, 0, {200, 100}, {200, 190}},
        {"down the middle, upside down", VK_UP, 80, {200, 180}, {200, 120}},
        {"along the equator", VK_DOWN, 40, {150, 150}, {240, 150}},
        {"anywhere over the equator", VK_DOWN, 40, {160, 100}, {230, 190}},
        {"anywhere upside down", VK_UP, 140, {160, 100}, {230, 190}},
    };
    for (const auto& c : cases) {
        Keys(VK_HOME, 1);
        Keys(c.key, c.times);
        const auto grabbed = PlaceUnder(LookAtView(), c.from.x, c.from.y);
        Press(c.from);
        Drag({(c.from.x + c.to.x) / 2, c.from.y});
        ValidateRect(window, nullptr);
        Drag(c.to);
        EXPECT_TRUE(TakeRepaintRequest()) << c.why;
        const SeenView view = LookAtView();
        const auto under = PlaceUnder(view, c.to.x, c.to.y);
        ASSERT_TRUE(grabbed && under) << c.why;
        // Turning both ways at once is exact where the way is a circle of latitude or longitude.
        const bool oneWay = c.from.x == c.to.x || c.from.y == c.to.y;
        EXPECT_LT(AngleBetween(*grabbed, *under), oneWay ? kSamePlace : 15.0) << c.why;
        Drag(c.from);
        const auto back = PlaceUnder(LookAtView(), c.from.x, c.from.y);
        ASSERT_TRUE(back);
        EXPECT_LT(AngleBetween(*grabbed, *back), kSamePlace) << c.why;
        Release(c.from);
        EXPECT_FALSE(Runs(kFlightTimer)) << c.why << ": a drag is no click";
    }
}

TEST_F(InputTest, DragFollowsThePointerOutOfTheWindowAndBack) {
    Keys(VK_ADD, 60);  // the globe is larger than the window
    const auto grabbed = PlaceUnder(LookAtView(), 200, 5);
    Press({200, 5});
    EXPECT_EQ(GetCapture(), window);
    Drag({200, -20});  // taken as unsigned it would be far below the window
    const auto under = PlaceUnder(LookAtView(), 200, -20);
    ASSERT_TRUE(grabbed && under);
    EXPECT_LT(AngleBetween(*grabbed, *under), kSamePlace);
    const SeenView kept = LookAtView();
    Drag({-3000, -3000});
    ExpectView(kept, "beside the globe a drag holds still");
    Release({-3000, -3000});
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(InputTest, DragTurnsNothingWithoutAHold) {
    const SeenView start = LookAtView();
    Press({3, 3});  // space beside the globe
    Drag({200, 150});
    Drag({230, 160});
    ExpectView(start, "pressed in space");
    Release({230, 160});
    EXPECT_FALSE(Runs(kFlightTimer)) << "it was dragged all the same";

    Press({200, 150});
    Pointer(WM_MOUSEMOVE, MK_LBUTTON | MK_CONTROL, {230, 160});
    Pointer(WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, {240, 170});
    ExpectView(start, "not the left button alone");
    Release({200, 150});
    EXPECT_TRUE(Runs(kFlightTimer)) << "nothing was dragged: a click";
    Keys(VK_HOME, 1);
    Drag({230, 160});
    ExpectView(start, "the button is up");
}

TEST_F(InputTest, ClickFliesThePointToTheCentre) {
    const POINT clicks[] = {{200, 150}, {260, 150}, {200, 80}, {150, 200}};
    for (const POINT& click : clicks) {
        const SeenView start = LookAtView();
        const auto clicked = PlaceUnder(start, click.x, click.y);
        Press(click);
        Drag(click);  // Windows sends moves that move nothing
        Release(click);
        ASSERT_TRUE(Runs(kFlightTimer));
        EXPECT_EQ(timers[kFlightTimer], 20U);
        const int steps = Fly();
        const SeenView end = LookAtView();
        const double tiltWay = std::remainder(end.tilt - start.tilt, 360.0);
        const double spinWay = std::remainder(end.spin - start.spin, 360.0);
        const int expected = static_cast<int>(150.0 * std::hypot(tiltWay, spinWay) / 180.0 + 1e-6);
        EXPECT_EQ(steps, std::max(expected, 2));
        // Between pixel rows: the window's middle is half a pixel above row 150.
        SeenView doubled = end;
        doubled.height = kHeight * 2;
        doubled.width = kWidth * 2;
        const auto centre = PlaceUnder(doubled, kWidth, kHeight - 1);
        ASSERT_TRUE(clicked && centre);
        EXPECT_LT(AngleBetween(*clicked, *centre), kSamePlace);
    }
}

TEST_F(InputTest, FlightEndsByKeysAndNotByPresses) {
    const auto start = [this] {
        Keys(VK_HOME, 1);
        Press({280, 150});
        Release({280, 150});
        EXPECT_TRUE(Runs(kFlightTimer));
        Tick(kFlightTimer);
    };
    for (const int key : {VK_UP, VK_HOME, VK_ADD, int{'I'}}) {
        start();
        Keys(key, 1);
        EXPECT_FALSE(Runs(kFlightTimer)) << key;
        const SeenView stopped = LookAtView();
        Tick(kFlightTimer);  // one that was under way already
        ExpectView(stopped, "stopped");
    }
    start();
    Keys('Z', 1);
    EXPECT_TRUE(Runs(kFlightTimer)) << "a key without a meaning";
    Press({3, 3});
    EXPECT_TRUE(Runs(kFlightTimer)) << "a press";
    Release({3, 3});
    ValidateRect(window, nullptr);
    Hover({100, 100});
    EXPECT_FALSE(TakeRepaintRequest()) << "a flight paints by its own steps";
    Tick(kFlightTimer);
    EXPECT_TRUE(TakeRepaintRequest());
    EXPECT_TRUE(Runs(kFlightTimer));
    DestroyWindow(window);
    EXPECT_FALSE(Runs(kFlightTimer)) << "the timer goes with its window";
}

}  // namespace
