// Worker threads that take their time: whatever happens to window, library and picture meanwhile,
// nothing is harmed and one right set of tiles comes out in the end.
#include <gmock/gmock.h>

#include <future>
#include <thread>

#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"
#include "support/memory_ledger_win.h"
#include "support/worker_watch_win.h"

namespace {

using At = WorkerWatch::At;

constexpr UINT kStageDone = WM_USER + 1;
constexpr WPARAM kLoad = 0;
constexpr WPARAM kSplit = 1;
constexpr int kWidth = 512;  // of the picture, pixels
constexpr int kHeight = 256;
constexpr std::size_t kPictureBytes = std::size_t{3} * kWidth * kHeight;

class WorkerTest : public MapHostTest {
protected:
    WorkerTest() {
        PutPatternMap(kWidth, kHeight);
        PutSettings("lag_factor=2\r\n");  // two steps of detail on each side
        Init();
        SpiedGl().keepCalls = false;
        SpiedGl().keepPixels = true;
    }

    bool Settle() const { return MapHostTest::Settle(workers); }
    /// A library without windows and without a picture.
    void Restart() {
        while (const HWND map = GetWindow(host, GW_CHILD)) DestroyWindow(map);
        EXPECT_NE(library.FreeMap(), 0U);
        SpiedGl().uploads.clear();
        Init();
    }
    /// A window whose worker stands at `place`.
    HWND CreateHeldUp(At place) {
        workers.HoldUp(place);
        const HWND window = CreateMap(160, 120);
        EXPECT_TRUE(PumpUntil([this] { return workers.IsHeldUp(); }));
        return window;
    }
    /// A window with its tiles, which are kept to compare later ones with.
    HWND CreateLoadedMap() {
        const HWND window = CreateMap(160, 120);
        EXPECT_TRUE(Settle());
        EXPECT_EQ(Uploads(), 8U);
        right = SpiedGl().uploads;
        return window;
    }
    void KeyAndSettle(HWND window, char key) const {
        Key(window, key);
        EXPECT_TRUE(Settle());
    }
    /// Does `act` while another thread holds the lock, which then gives it back or just dies.
    void WhileLocked(const std::function<void()>& act, bool dies = false) const {
        std::promise<void> taken;
        std::promise<void> done;
        std::thread holder([&] {
            WaitForSingleObject(lock_, INFINITE);
            taken.set_value();
            done.get_future().wait();
            if (!dies) ReleaseMutex(lock_);
        });
        taken.get_future().wait();
        act();
        done.set_value();
        holder.join();
    }
    static std::size_t Uploads() { return SpiedGl().uploads.size(); }
    int TakeBoxes() { return std::exchange(boxes_, 0); }

    /// Every set that was uploaded since: the right tiles, whole and in order.
    void ExpectOnlyRightSets(const char* why) const {
        const auto& uploads = SpiedGl().uploads;
        EXPECT_EQ(uploads.size() % 8, 0U) << why;
        for (std::size_t i = 0; i < uploads.size(); ++i)
            EXPECT_TRUE(uploads[i].pixels == right[i % 8].pixels) << why << ", upload " << i;
    }
    void ExpectLives(HWND window, const char* why) const {
        const int before = SpiedGl().frames;
        Paint(window);
        EXPECT_GT(SpiedGl().frames, before) << why;
    }

    std::vector<SpiedUpload> right;
    WorkerWatch workers{library.module};

private:
    HANDLE lock_ = nullptr;
    int boxes_ = 0;
    using MakeLock = FakedImport<"CreateMutexW", decltype(CreateMutexW)>;
    const MakeLock makeLock_{library.module,
                             [this](auto... args) { return lock_ = MakeLock::Real(args...); }};
    const FakedImport<"MessageBoxW", decltype(MessageBoxW)> box_{
        library.module, [this](HWND, LPCWSTR, LPCWSTR, UINT) { return ++boxes_; }};
};

// ---- Workers that outlive what they work for --------------------------------------------------

TEST_F(WorkerTest, TheWindowDiesUnderItsWorker) {
    for (const At place : {At::LoadLock, At::Decode, At::SplitLock}) {
        DestroyWindow(CreateHeldUp(place));
        workers.LetGo();
        EXPECT_TRUE(Settle());
        EXPECT_EQ(Uploads(), 0U);
        Restart();
        // FreeMap waits for a worker that holds the picture.
        DestroyWindow(CreateHeldUp(place));
        workers.LetGoAtWait();
        EXPECT_NE(library.FreeMap(), 0U);
        workers.LetGo();
        EXPECT_TRUE(Settle());
        Init();
    }
    EXPECT_EQ(TakeBoxes(), 0);
    CreateLoadedMap();
}

TEST_F(WorkerTest, AWorkerThatComesAfterFreeMapTouchesNothing) {
    DestroyWindow(CreateHeldUp(At::LoadLock));
    EXPECT_NE(library.FreeMap(), 0U);
    workers.LetGo();
    EXPECT_TRUE(Settle());
    EXPECT_EQ(workers.MostDecoding(), 0) << "nobody would free it any more";

    Init();
    CreateHeldUp(At::SplitLock);
    Restart();
    const HWND next = CreateMap();  // its load is through before the old split gets its turn
    ASSERT_TRUE(WaitForTiles());
    right = SpiedGl().uploads;
    workers.LetGo();
    EXPECT_TRUE(Settle());
    KeyAndSettle(next, 'L');
    EXPECT_EQ(Uploads(), 16U);
    EXPECT_EQ(TakeBoxes(), 0);
    ExpectOnlyRightSets("after the old worker");
}

TEST_F(WorkerTest, ALibraryFreedInVainKeepsNewWorkersFromTheOldOnesPicture) {
    DestroyWindow(CreateHeldUp(At::Decode));
    workers.HurryWaits(true);
    EXPECT_NE(library.FreeMap(), 0U) << "gives up waiting";
    workers.HurryWaits(false);
    Init();
    CreateMap();
    workers.LetGo();
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Uploads(), 8U);
    EXPECT_EQ(workers.MostDecoding(), 1) << "two at once would write into each other's pixels";
}

TEST_F(WorkerTest, ASecondFreeMapWaitsForTheWorkerThatTheFirstGaveUpOn) {
    DestroyWindow(CreateHeldUp(At::Decode));
    workers.HurryWaits(true);
    library.FreeMap();
    workers.HurryWaits(false);
    workers.LetGoAtWait();
    library.FreeMap();
    EXPECT_TRUE(workers.WaitUntilAllLeft());
    Init();
    CreateLoadedMap();
}

TEST_F(WorkerTest, AHostMayForgetToFreeWhatItUnloads) {
    DestroyWindow(CreateHeldUp(At::SplitLock));
    library.Unload();
    EXPECT_NE(GetModuleHandleW(L"horivo_map.dll"), nullptr);
    workers.LetGo();
    EXPECT_TRUE(workers.WaitUntilAllLeft());
    EXPECT_EQ(GetModuleHandleW(L"horivo_map.dll"), nullptr);
}

// ---- Several loads under way ------------------------------------------------------------------

TEST_F(WorkerTest, AWindowOpenedWhileTheFirstStillLoadsGetsItsTilesToo) {
    CreateLoadedMap();
    enum class Dies { None, First, Second };
    for (const Dies dies : {Dies::None, Dies::First, Dies::Second}) {
        for (const bool secondLoadIsLost : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << "dies " << static_cast<int>(dies) << ", lost " << secondLoadIsLost);
            Restart();
            const HWND first = CreateHeldUp(At::Decode);
            workers.HurryWaits(secondLoadIsLost);
            const int before = workers.Started();
            const HWND second = CreateMap(120, 160);
            EXPECT_EQ(workers.Started(), before + 1) << "a load of its own";
            // A load that waits in vain has left when only the first worker is still there.
            ASSERT_TRUE(PumpUntil([&] { return !secondLoadIsLost || workers.Inside() == 1; }));
            workers.HurryWaits(false);
            if (dies == Dies::First) DestroyWindow(first);
            if (dies == Dies::Second) DestroyWindow(second);
            const bool nobodyLeft = dies == Dies::First && secondLoadIsLost;
            EXPECT_EQ(workers.Started(), before + (nobodyLeft ? 2 : 1)) << "a load for nothing";
            workers.LetGo();
            ASSERT_TRUE(Settle());
            EXPECT_GE(Uploads(), 8U) << "the globe stays bare";
            ExpectOnlyRightSets("two windows");
        }
    }
    EXPECT_EQ(TakeBoxes(), 0);
}

TEST_F(WorkerTest, ALoadThatOutlivesItsWindowLeavesNoOtherBare) {
    const HWND window = CreateLoadedMap();
    const HWND other = CreateMap(50, 50);
    const std::size_t before = Uploads();
    workers.HoldUp(At::SplitLock);
    Key(window, 'L');
    ASSERT_TRUE(PumpUntil([this] { return workers.IsHeldUp(); }));
    workers.LetGo();
    ASSERT_TRUE(workers.WaitUntilAllLeft());
    // The tiles are there, nobody has been told, and now they are cleared again.
    workers.HoldUp(At::Decode);
    Key(other, 'H');
    while (!workers.IsHeldUp()) Sleep(1);
    DestroyWindow(other);
    workers.LetGo();
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Uploads(), before + 8);
}

TEST_F(WorkerTest, InstallMapTakesItsTurnBehindALoadUnderWay) {
    CreateHeldUp(At::Decode);
    PutPatternMap(256, 128);
    workers.LetGoAtWait();
    // The split of the load that was under way comes before the new load: it finds no picture.
    using Destroy = FakedImport<"DestroyWindow", decltype(DestroyWindow)>;
    const Destroy destroy(library.module, [this](HWND testWindow) {
        workers.HoldUp(At::LoadLock);
        return Destroy::Real(testWindow);
    });
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    EXPECT_EQ(Uploads(), 8U) << "the test window's";
    while (!workers.IsHeldUp()) Sleep(1);
    const int loads = workers.Started();
    EXPECT_TRUE(PumpUntil([&] { return workers.Started() > loads && workers.Inside() == 1; }));
    PumpPending();
    workers.LetGo();
    EXPECT_TRUE(Settle());
    EXPECT_GE(Uploads(), 16U) << "the live window shows the new picture";
    EXPECT_THAT(SpiedGl().uploads, testing::Each(testing::Field(&SpiedUpload::width, 64)));
    EXPECT_EQ(workers.MostDecoding(), 1);
    EXPECT_EQ(TakeBoxes(), 0);
}

// ---- Workers that cannot work -----------------------------------------------------------------

TEST_F(WorkerTest, AWorkerThatCannotBeStartedIsReported) {
    const MemoryLedger memory(library.module);
    const HWND window = CreateLoadedMap();
    const HWND other = CreateMap(50, 50);
    SpiedGl().uploads.resize(8);
    int repaints = 0;  // of the other window
    using Invalidate = FakedImport<"InvalidateRect", decltype(InvalidateRect)>;
    const Invalidate invalidate(library.module, [&](HWND asked, const RECT* part, BOOL erase) {
        if (asked == other) ++repaints;
        return Invalidate::Real(asked, part, erase);
    });
    for (const int start : {1, 2}) {
        repaints = 0;
        workers.FailStart(start);
        Key(window, 'L');
        EXPECT_TRUE(Settle());
        EXPECT_EQ(TakeBoxes(), 1);
        EXPECT_GT(repaints, 0) << "it may say that a picture is being loaded";
        EXPECT_LT(memory.HeldBytes(), kPictureBytes) << "the picture that nobody will cut";
        EXPECT_EQ(Uploads(), 8U);
        ExpectLives(window, "after the box");
        KeyAndSettle(window, 'H');
        EXPECT_EQ(Uploads(), 16U) << "the next load";
        ExpectOnlyRightSets("the next load");
        SpiedGl().uploads.resize(8);
    }
}

TEST_F(WorkerTest, WhoeverWaitsTooLongGivesUpAndTheNextLoadWorks) {
    workers.HurryWaits(true);
    enum class Waits { Load, Split, Window };
    for (const Waits who : {Waits::Load, Waits::Split, Waits::Window}) {
        SCOPED_TRACE(static_cast<int>(who));
        Restart();
        HWND window = nullptr;
        if (who != Waits::Load) window = CreateHeldUp(At::SplitLock);
        if (who == Waits::Window) {
            workers.LetGo();
            ASSERT_TRUE(workers.WaitUntilAllLeft());
        }
        WhileLocked([&] {
            if (who == Waits::Load) window = CreateMap(160, 120);
            workers.LetGo();
            EXPECT_TRUE(Settle());
        });
        EXPECT_EQ(TakeBoxes(), who == Waits::Split ? 1 : 0) << "only a split is reported";
        EXPECT_EQ(Uploads(), 0U);
        ExpectLives(window, "without a picture");
        KeyAndSettle(window, 'L');
        EXPECT_EQ(Uploads(), 8U);
    }
    Restart();
    WhileLocked([this] { EXPECT_NE(library.FreeMap(), 0U) << "it never waits for ever"; });
}

TEST_F(WorkerTest, TilesWaitForAContextThatCanBeUsed) {
    const HWND window = CreateHeldUp(At::SplitLock);
    wglMakeCurrent(nullptr, nullptr);
    {
        const FakedImport<"wglMakeCurrent", decltype(wglMakeCurrent)> lost(
            library.module, [](HDC, HGLRC) { return FALSE; });
        workers.LetGo();
        EXPECT_TRUE(Settle());
        EXPECT_EQ(Uploads(), 0U);
    }
    for (const char* why : {"the first picture brings them", "once"}) {
        ExpectLives(window, why);
        EXPECT_EQ(Uploads(), 8U) << why;
    }
}

TEST_F(WorkerTest, ALockLeftByADeadThreadIsStillALock) {
    workers.HurryWaits(true);
    WhileLocked([] {}, true);
    KeyAndSettle(CreateLoadedMap(), 'L');
    EXPECT_EQ(Uploads(), 16U) << "the lock was given back";
}

TEST_F(WorkerTest, AFailureSparesThePictureOfANewerLoad) {
    const HWND window = CreateHeldUp(At::SplitLock);
    Key(window, 'L');
    // The picture is there, and nobody has been told.
    while (workers.Inside() > 1) Sleep(10);
    SendMessageW(window, kStageDone, kSplit, FALSE);
    EXPECT_EQ(TakeBoxes(), 1);
    workers.LetGo();
    EXPECT_TRUE(Settle());
    EXPECT_GE(Uploads(), 8U) << "the globe stays bare";
    EXPECT_EQ(TakeBoxes(), 0);
}

// ---- Messages that nobody expects -------------------------------------------------------------

TEST_F(WorkerTest, SuccessThatIsNoLongerTrueAttachesNothing) {
    const HWND window = CreateHeldUp(At::Decode);
    workers.HurryWaits(true);
    SendMessageW(window, kStageDone, kSplit, TRUE);
    EXPECT_EQ(Uploads(), 0U) << "while the newer load reads";
    workers.LetGo();
    ASSERT_TRUE(workers.WaitUntilAllLeft());
    SendMessageW(window, kStageDone, kSplit, TRUE);
    EXPECT_EQ(Uploads(), 0U) << "the whole map must not pass for its first tile";
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Uploads(), 8U);
    EXPECT_EQ(TakeBoxes(), 0);
}

TEST_F(WorkerTest, MessagesNobodySentDoNoHarm) {
    const HWND window = CreateLoadedMap();
    const WPARAM stages[] = {kLoad, kSplit, 2, ~WPARAM{0}, WPARAM{1} << 32};
    for (const WPARAM stage : stages) {
        for (const LPARAM success : {-1, 0}) {
            const std::string why = std::to_string(stage) + ", " + std::to_string(success);
            SendMessageW(window, kStageDone, stage, success);
            EXPECT_TRUE(Settle()) << why;
            EXPECT_EQ(TakeBoxes(), success != 0 ? 0 : 1) << why;
            ExpectOnlyRightSets(why.c_str());
            const std::size_t before = Uploads();
            DestroyWindow(CreateMap(50, 50));
            EXPECT_EQ(Uploads(), before + 8) << why << ": the tiles are gone";
        }
    }
}

TEST_F(WorkerTest, AMessageAfterTheWindowsDestructionDoesNothing) {
    const UINT lateMessages[] = {WM_SIZE,        WM_PAINT,        WM_MOUSEMOVE,
                                 WM_LBUTTONDOWN, WM_LBUTTONUP,    WM_MOUSEWHEEL,
                                 WM_MOUSELEAVE,  WM_TIMER,        WM_KEYDOWN,
                                 kStageDone,     HORIVO_MSG_CITY, HORIVO_MSG_PHOTOS_CHANGED,
                                 WM_DESTROY};
    const HWND other = CreateLoadedMap();
    for (const bool last : {false, true}) {
        const HWND window = CreateMap(160, 120);
        const auto proc = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
        if (last) DestroyWindow(other);
        DestroyWindow(window);
        const int started = workers.Started();
        for (const UINT late : lateMessages) {
            for (const WPARAM wParam : {0, 1, 2, 3, 4, VK_LEFT, VK_HOME, int{'L'}, int{'I'}})
                CallWindowProcW(proc, window, late, wParam, MAKELPARAM(80, 60));
        }
        EXPECT_TRUE(Settle());
        EXPECT_EQ(workers.Started(), started);
        EXPECT_EQ(TakeBoxes(), 0);
    }
    ExpectLives(CreateMap(160, 120), "afterwards");
    ExpectOnlyRightSets("afterwards");
}

}  // namespace
