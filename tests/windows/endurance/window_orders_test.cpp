// Windows made, refused, painted, moved and destroyed in any order: each always looks as if it were
// alone, and the names in OpenGL are those of one map.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "long_run.h"
#include "support/call_ledger_win.h"
#include "support/failing_imports_win.h"
#include "support/frame_compare_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"
#include "support/worker_watch_win.h"

namespace {

constexpr ImportFailure kRefusals[] = {{"ChoosePixelFormat"}, {"SetPixelFormat"},
                                       {"wglCreateContext"},  {"wglMakeCurrent"},
                                       {"CreateWindowExW"},   {"malloc"}};
constexpr std::size_t kListsOfAMap = 255 + 2 + 1;  // codes, body, cities, one shell
constexpr std::size_t kTexturesOfAMap = 8;
constexpr WPARAM kSunTimer = 4;

class WindowOrdersTest : public MapHostTest {
protected:
    struct Slot {
        int width, height;
        HWND window = nullptr;
        SpiedFrame alone = {};  ///< what it shows while no other lives
    };
    const WorkerWatch workers{library.module};
    Slot slots[3] = {{200, 150}, {110, 180}, {160, 90}};

    WindowOrdersTest() {
        PutPatternMap(512, 256);
        PutSettings("lag_factor=8\r\n");
        Init();
        SpiedGl().keepCalls = false;
        SpiedGl().keepFrame = true;
        for (Slot& slot : slots) {
            Make(slot);
            EXPECT_TRUE(WaitForTiles());
            slot.alone = FrameOf(slot);
            Destroy(slot);
        }
    }

    int Chance(int count) { return std::uniform_int_distribution<int>(0, count - 1)(chance_); }
    static SpiedFrame FrameOf(const Slot& slot) {
        SpiedGl().frame = {};
        Paint(slot.window);
        Paint(slot.window);
        return SpiedGl().frame;
    }
    void Make(Slot& slot) { slot.window = CreateMap(slot.width, slot.height); }
    static void Destroy(Slot& slot) {
        DestroyWindow(slot.window);
        slot.window = nullptr;
    }
    /// Makes a window while one call on the way fails; it may be refused or come off all the same.
    std::string MakeWithFailure(Slot& slot) {
        failing_.FailFrom(1 + Chance(60));
        Make(slot);
        const char* failed = failing_.Failed();
        failing_.FailFrom(0, 0);
        // A globe that found no memory when it was recorded comes with the next look at the clock.
        for (const Slot& each : slots) SendMessageW(each.window, WM_TIMER, kSunTimer, 0);
        return failed != nullptr ? failed : "nothing";
    }
    std::string Act(Slot& slot) {
        if (slot.window == nullptr) {
            if (Chance(3) == 0) return "fail at " + MakeWithFailure(slot);
            Make(slot);
            return "make";
        }
        switch (Chance(5)) {
            case 0:
                MoveWindow(slot.window, 0, 0, Chance(300), Chance(300), FALSE);
                if (Chance(2) == 0) Paint(slot.window);
                MoveWindow(slot.window, 0, 0, slot.width, slot.height, FALSE);
                return "move";
            case 1:
                EXPECT_EQ(library.InstallMap(), HORIVO_OK);
                return "install";
            default:
                Destroy(slot);
                return "destroy";
        }
    }
    int Living() const {
        return static_cast<int>(
            std::count_if(std::begin(slots), std::end(slots),
                          [](const Slot& slot) { return slot.window != nullptr; }));
    }
    void ExpectEachAsIfAlone(const std::string& actions) {
        std::shuffle(std::begin(order_), std::end(order_), chance_);
        for (const int i : order_) {
            if (slots[i].window == nullptr) continue;
            const int different = DifferentPixels(FrameOf(slots[i]), slots[i].alone);
            EXPECT_LE(different, slots[i].width * slots[i].height / 500)
                << i << " after" << actions;
        }
        auto held = ledger_.Held();
        const std::size_t maps = Living() > 0 ? 1 : 0;
        EXPECT_EQ(held["gl context"], maps) << actions;
        EXPECT_EQ(held["gl list"], maps * kListsOfAMap) << actions;
        EXPECT_EQ(held["gl texture"], maps * kTexturesOfAMap) << actions;
        EXPECT_EQ(held["dc"], static_cast<std::size_t>(Living())) << actions;
    }

private:
    std::mt19937 chance_{SeedOfRun()};
    int order_[3] = {0, 1, 2};
    const CallLedger ledger_{library.module};
    FailingImports failing_{library.module, kRefusals};
};

TEST_F(WindowOrdersTest, EachLooksAsIfItWereAlone) {
    const int runs = LengthOfRun(150, 12);
    for (int i = 0; i < runs && !HasFailure(); ++i) {
        std::string actions;
        for (int step = 0; step < 12 && !HasFailure(); ++step) {
            const int slot = Chance(3);
            actions += ' ' + std::to_string(slot) + ' ' + Act(slots[slot]) + ',';
            ASSERT_TRUE(Settle(workers)) << actions;
            ExpectEachAsIfAlone(actions);
        }
        for (Slot& slot : slots) {
            if (slot.window != nullptr) Destroy(slot);
        }
    }
}

}  // namespace
