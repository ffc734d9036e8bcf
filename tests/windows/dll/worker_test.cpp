// Worker threads that take their time: whatever happens to window, library and picture meanwhile,
// nothing is harmed and one right set of tiles comes out in the end.
#include "support/import_table_win.h"
#include "support/map_play_win.h"

namespace {

class WorkerTest : public MapPlay {
protected:
    WorkerTest() {
        PutPatternMap(512, 256);
        PutSettings("lag_factor=2\r\n");  // two steps of detail on each side
        Init();
        SpiedGl().keepPixels = true;
    }
};

TEST_F(WorkerTest, WhatDiesOrIsFreedUnderAWorkerIsNotTouched) {
    Play("hold load; create a; held; close; free; go; settle; decoded at once 0; cities",
         "nobody would free any more what is decoded now");
    for (const std::string place : {"load", "decode", "split"}) {
        Play("hold " + place + "; create a; held; close; go; settle; tiles 0; restart", place);
        Play("hold " + place + "; create a; held; close; go at wait; free; go; settle; cities",
             "FreeMap waits for a worker that holds the picture: " + place);
    }
    Play("boxes 0; create a; settle; tiles 1; restart");
    PlayRows("", {{"the next window's load is through before the old split gets its turn",
                   "hold split; create a; held; restart; create b; inside 1; settle tiles; tiles 1;"
                   "go; settle; key l; settle; tiles 1; boxes 0; restart"},
                  {"FreeMap gave up: two at once would write into each other's pixels",
                   "hold decode; create a; held; close; wait hurried; free; wait patient; cities;"
                   "create b; go; settle; tiles 1; decoded at once 1; restart"},
                  {"a second FreeMap waits for the worker that the first gave up on",
                   "hold decode; create a; held; close; wait hurried; free; wait patient;"
                   "go at wait; free again; inside 0 unheard; cities; create b; settle; tiles 1"}});
}

TEST_F(WorkerTest, AHostMayForgetToFreeWhatItUnloads) {
    Play("hold split; create a; held; close");
    library.Unload();
    EXPECT_NE(GetModuleHandleW(L"horivo_map.dll"), nullptr);
    Play("go; inside 0 unheard");
    EXPECT_EQ(GetModuleHandleW(L"horivo_map.dll"), nullptr);
}

TEST_F(WorkerTest, AWindowOpenedWhileTheFirstStillLoadsGetsItsTilesToo) {
    const FakedImport<"GdiplusShutdown", void(ULONG_PTR)> end(library.module);
    Play("create a; settle; tiles 1");
    EXPECT_EQ(end.Calls(), 0) << "the map itself still uses GDI+";
    for (const std::string dies : {"", "use a; close;", "use b; close;"}) {
        const std::string first = "restart; hold decode; create a; held;";
        Play(first + "create b 120 160;" + dies + "go; settle; tiles some", "dies: " + dies);
        // A load that waits in vain has left when only the first worker is still there.
        Play(first + "wait hurried; create b 120 160; inside 1; wait patient;" + dies +
                 "go; settle; tiles some; boxes 0",
             "the second load is lost, dies: " + dies);
    }
    Play(
        "restart; create a; settle; tiles 1; create b 50 50; tiles 1; hold split; use a; key l;"
        "held; go; inside 0 unheard; hold decode; use b; key h; held unheard; close; go; settle; "
        "tiles 1",
        "the tiles are there, nobody has been told, and now they are cleared again");
}

TEST_F(WorkerTest, InstallMapTakesItsTurnBehindALoadUnderWay) {
    Play("hold decode; create a; held; go at wait");
    PutPatternMap(256, 128);
    Play("install; settle; tiles some; decoded at once 1; boxes 0", "the live window has it, too");
    EXPECT_EQ(rightTiles[0].width, 64);
}

TEST_F(WorkerTest, AWorkerThatCannotBeStartedIsReported) {
    const ImportLedger memory(library.module);
    Play("create b 50 50; settle; create a; tiles 2");
    std::map<HWND, int> repainted;
    const FakedImport<"InvalidateRect", decltype(InvalidateRect)> invalidate(
        library.module, [&](HWND which, const RECT* part, BOOL erase) {
            ++repainted[which];
            return decltype(invalidate)::Real(which, part, erase);
        });
    for (const std::string start : {"1", "2"}) {
        Play("start fails " + start + "; key l; settle; boxes 1; tiles 0; lives");
        EXPECT_LT(memory.HeldBytes(), 3U * 512 * 256) << "the picture that nobody will cut";
        EXPECT_EQ(repainted.erase(windows["b"]), 1U) << "it may say that a picture is being loaded";
        Play("key h; settle; tiles 1", "the next load");
        EXPECT_EQ(repainted.erase(windows["b"]), 1U) << "it has new tiles too";
    }
    Play("close all; free; inside 0 unheard");
    FreeLibrary(std::exchange(library.module, nullptr));
    EXPECT_EQ(GetModuleHandleW(L"horivo_map.dll"), nullptr) << "a worker that never was uses it";
}

TEST_F(WorkerTest, WhoeverWaitsTooLongGivesUpAndTheNextLoadWorks) {
    const std::string next = "wait hurried; tiles 0; lives; key l; settle; tiles 1; restart";
    PlayRows(
        "wait hurried",
        {{"the load", "wait vain; create a; settle; boxes 0;" + next},
         {"the split, which alone is reported",
          "hold split; create a; held; wait vain; go; settle; boxes 1;" + next},
         {"the window",
          "hold split; create a; held; go; inside 0 unheard; wait vain; settle; boxes 0;" + next},
         {"nobody: a lock left by a dead thread is still a lock and is given back",
          "wait orphaned; create a; settle; tiles 1; key l; settle; tiles 1; restart"},
         {"FreeMap, which never waits for ever", "wait vain; free"}});
}

TEST_F(WorkerTest, MessagesNobodySentDoNoHarm) {
    PlayRows(
        "", {{"tiles wait for a context that can be used",
              "hold split; create a; held; context lost; go; settle; tiles 0; context back;"
              "lives; tiles 1; lives; tiles 0; restart"},
             {"a failure spares the picture of a newer load that nobody has been told of",
              "hold split; create a; held; key l; inside 1 unheard; stage 1 0; boxes 1; go;"
              "settle; tiles some; boxes 0; restart"},
             {"while the newer load reads, and a whole map must not pass for its first tile",
              "hold decode; create a; held; wait hurried; stage 1 1; tiles 0; go; inside 0 unheard;"
              "stage 1 1; tiles 0; settle; tiles 1; boxes 0; wait patient"}});
    for (const std::string stage : {"0", "1", "2", "-1", "4294967296"}) {
        Play("stage " + stage + " -1; settle; boxes 0; stage " + stage +
                 " 0; settle; boxes 1; tiles any; passing window; tiles 1",
             "the tiles are gone");
    }
}

TEST_F(WorkerTest, AMessageAfterTheWindowsDestructionDoesNothing) {
    const UINT lateMessages[] = {WM_SIZE,        WM_PAINT,        WM_MOUSEMOVE,
                                 WM_LBUTTONDOWN, WM_LBUTTONUP,    WM_MOUSEWHEEL,
                                 WM_MOUSELEAVE,  WM_TIMER,        WM_KEYDOWN,
                                 WM_USER + 1,    HORIVO_MSG_CITY, HORIVO_MSG_PHOTOS_CHANGED,
                                 WM_DESTROY};
    Play("create a");
    const HWND dead = window;
    const auto proc = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    for (const std::string other : {"create b; settle", "close"}) {
        Play("close; settle; started any;" + other + "; started any");
        for (const UINT late : lateMessages) {
            for (const WPARAM wParam : {0, 1, 2, 3, 4, VK_LEFT, VK_HOME, int{'L'}, int{'I'}})
                CallWindowProcW(proc, dead, late, wParam, MAKELPARAM(80, 60));
        }
        Play("settle; started 0; boxes 0");
    }
    Play("create a; settle; lives; tiles some");
}

}  // namespace
