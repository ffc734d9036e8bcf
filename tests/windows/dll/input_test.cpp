// Keys, wheel and pointer: where camera and globe stand afterwards, as the picture shows it.
#include <gmock/gmock.h>

#include <cmath>

#include "support/driven_map_win.h"

namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 300;
constexpr POINT kCentre = {kWidth / 2, kHeight / 2 - 1};  // to the pixel

class InputTest : public DrivenMapTest {
protected:
    InputTest() { Open(kWidth, kHeight); }

    void Keys(int key, int times) {
        for (int i = 0; i < times; ++i) Key(window, key);
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
        {"upside down up to 270", 230, VK_RIGHT, 1, {-12.2, 270.0, 1.0}},
        {"upright again", 231, VK_RIGHT, 1, {-12.2, 271.0, 359.0}},
        {"nearer", 0, VK_ADD, 2, {-12.0, 40.0, 0.0}},
        {"farther", 0, VK_SUBTRACT, 2, {-12.4, 40.0, 0.0}},
    };
    for (const auto& c : cases) {
        Home();
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
    constexpr LPARAM kHeldBit = LPARAM{1} << 30;
    for (const int key :
         {int{'F'}, int{'H'}, int{'I'}, int{'L'}, VK_INSERT, VK_UP, VK_LEFT, VK_ADD})
        for (int i = 0; i < 5; ++i)
            SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), kHeldBit | 1);
    EXPECT_EQ(loads.Calls(), 0);
    EXPECT_THAT(opened, testing::IsEmpty());
    EXPECT_THAT(Look().Words(), testing::SizeIs(1)) << "nothing but the readout";
    ExpectView({-11.7, 45.0, 5.0}, "held");
}

TEST_F(InputTest, WheelZoomsByWholeNotchesToTheLimits) {
    const std::pair<int, double> turns[] = {
        {-120, -12.1}, {240, -12.4}, {-119, -12.2}, {32767, -28.5}, {-32768, -4.1}};
    for (const auto& [delta, distance] : turns) {
        Home();
        ValidateRect(window, nullptr);
        Wheel(delta);
        EXPECT_TRUE(TakeRepaintRequest()) << delta;
        ExpectView({distance, 40.0, 0.0}, "wheel " + std::to_string(delta));
    }
}

TEST_F(InputTest, DragKeepsTheGrabbedPointUnderThePointer) {
    const struct {
        const char* why;
        int key, times;
        POINT to;
        double pixels;  // by which the way may miss: along no circle of the globe it is not exact
    } cases[] = {
        {"down the middle", VK_UP, 0, {200, 239}, 0.6},
        {"down the middle, upside down", VK_UP, 80, {200, 89}, 0.6},
        {"along the equator", VK_DOWN, 40, {290, 149}, 0.6},
        {"anywhere upside down", VK_UP, 140, {230, 239}, 40.0},
        {"out of the window", VK_ADD, 60, {200, -20}, 0.6},
    };
    for (const auto& c : cases) {
        Home();
        Keys(c.key, c.times);
        const SeenView start = LookAtView();
        Press(kCentre);
        EXPECT_EQ(GetCapture(), window) << c.why;
        Drag({c.to.x, kCentre.y});
        ValidateRect(window, nullptr);
        Drag(c.to);
        EXPECT_TRUE(TakeRepaintRequest()) << c.why;
        const SeenView turned = LookAtView();
        const POINT now = PixelOfPlace(turned, start.tilt, -start.spin);
        EXPECT_LT(std::hypot(now.x - c.to.x, now.y - c.to.y), c.pixels) << c.why;
        Drag({-3000, -3000});
        ExpectView(turned, std::string("beside the globe a drag holds still: ") + c.why);
        Drag(kCentre);
        ExpectView(start, c.why);
        Release(kCentre);
        EXPECT_EQ(GetCapture(), nullptr) << c.why;
        EXPECT_FALSE(Runs(kFlightTimer)) << c.why << ": a drag is no click";
    }
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
    Home();
    Drag({230, 160});
    ExpectView(start, "the button is up");
}

TEST_F(InputTest, ClickFliesThePointToTheCentre) {
    for (const POINT& click : {POINT{200, 150}, {260, 150}, {200, 80}, {150, 200}}) {
        const SeenView start = LookAtView();
        Press(click);
        Drag(click);  // Windows sends moves that move nothing
        Release(click);
        ASSERT_TRUE(Runs(kFlightTimer));
        EXPECT_EQ(timers[kFlightTimer], 20U);
        EXPECT_LT(Fly(), 100) << "it ends by itself";
        const SeenView end = LookAtView();
        const POINT clicked = PixelOfPlace(start, end.tilt, -end.spin);
        EXPECT_TRUE(clicked.x == click.x && clicked.y == click.y) << clicked.x << ' ' << clicked.y;
    }
}

TEST_F(InputTest, FlightEndsByKeysAndNotByPresses) {
    const auto start = [this] {
        Home();
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
