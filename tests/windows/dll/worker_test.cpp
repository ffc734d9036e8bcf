// Worker threads that take their time: whatever happens to window, library and picture meanwhile,
// nothing is harmed and one right set of tiles comes out in the end.
#include <gmock/gmock.h>

#include <thread>

#include "base/handles_win.h"
#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"
#include "support/worker_watch_win.h"

namespace {

using At = WorkerWatch::At;

constexpr UINT kStageDone = WM_USER + 1;
constexpr WPARAM kLoad = 0;
constexpr WPARAM kSplit = 1;
constexpr DWORD kWorkerWait = 5000;
constexpr DWORD kWindowWait = 1000;
constexpr DWORD kReleaseWait = 300000;

class WorkerTest : public MapHostTest {
protected:
    WorkerTest() {
        PutPatternMap(512, 256);
        PutSettings("lag_factor=2\r\n");  // two steps of detail on each side
        Init();
        SpiedGl().keepCalls = false;
        SpiedGl().keepPixels = true;
    }

    bool Settle() const { return MapHostTest::Settle(workers); }
    bool PumpUntilHeldUp() const {
        return PumpUntil([this] { return workers.IsHeldUp(); });
    }
    void DestroyMapsBut(HWND kept) const {
        HWND next = nullptr;
        for (HWND child = GetWindow(host, GW_CHILD); child != nullptr; child = next) {
            next = GetWindow(child, GW_HWNDNEXT);
            if (child != kept) DestroyWindow(child);
        }
    }
    /// Destroys a window while its worker stands at `place`.
    void LoseWindowAt(At place) {
        workers.HoldUp(place);
        const HWND window = CreateMap();
        ASSERT_TRUE(PumpUntilHeldUp());
        DestroyWindow(window);
    }
    static std::size_t Uploads() { return SpiedGl().uploads.size(); }

    /// A window with its tiles, which are kept to compare later ones with.
    HWND CreateLoadedMap() {
        const HWND window = CreateMap(160, 120);
        EXPECT_TRUE(Settle());
        EXPECT_EQ(Uploads(), 8U);
        right = SpiedGl().uploads;
        return window;
    }
    /// Every set that was uploaded since: the right tiles, whole and in order.
    void ExpectOnlyRightSets(const char* why) const {
        const auto& uploads = SpiedGl().uploads;
        EXPECT_EQ(uploads.size() % 8, 0U) << why;
        for (std::size_t i = 0; i < uploads.size(); ++i) {
            EXPECT_EQ(uploads[i].width, right[i % 8].width) << why << ", upload " << i;
            EXPECT_TRUE(uploads[i].pixels == right[i % 8].pixels) << why << ", upload " << i;
        }
    }
    void ExpectLives(HWND window, const char* why) const {
        const int before = SpiedGl().frames;
        Paint(window);
        EXPECT_GT(SpiedGl().frames, before) << why;
    }

    int boxes = 0;
    std::vector<SpiedUpload> right;
    WorkerWatch workers{library.module};

private:
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> box_{library.module,
                                                           [this](HWND, LPCWSTR, LPCWSTR, UINT) {
                                                               ++boxes;
                                                               return IDOK;
                                                           }};
};

// ---- Workers that outlive what they work for --------------------------------------------------

TEST_F(WorkerTest, TheWindowDiesUnderItsWorker) {
    for (const At place : {At::LoadLock, At::Decode, At::SplitLock}) {
        LoseWindowAt(place);
        workers.LetGo();
        EXPECT_TRUE(Settle());
        EXPECT_EQ(Uploads(), 0U);
        EXPECT_NE(library.FreeMap(), 0U);
        Init();
        // FreeMap waits for a worker that holds the picture.
        LoseWindowAt(place);
        workers.LetGoAtWait(kReleaseWait);
        EXPECT_NE(library.FreeMap(), 0U);
        workers.LetGo();
        EXPECT_TRUE(Settle());
        Init();
    }
    EXPECT_EQ(boxes, 0);
    CreateLoadedMap();
}

TEST_F(WorkerTest, AWorkerThatComesAfterFreeMapTouchesNothing) {
    LoseWindowAt(At::LoadLock);
    EXPECT_NE(library.FreeMap(), 0U);
    workers.LetGo();
    EXPECT_TRUE(Settle());
    EXPECT_EQ(workers.MostDecoding(), 0) << "nobody would free it any more";

    Init();
    LoseWindowAt(At::SplitLock);
    EXPECT_NE(library.FreeMap(), 0U);
    Init();
    const HWND next = CreateMap();  // its load is through before the old split gets its turn
    ASSERT_TRUE(PumpUntil([this] { return Uploads() == 8; }));
    right = SpiedGl().uploads;
    workers.LetGo();
    EXPECT_TRUE(Settle());
    Key(next, 'L');
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Uploads(), 16U);
    EXPECT_EQ(boxes, 0);
    ExpectOnlyRightSets("after the old worker");
}

TEST_F(WorkerTest, ALibraryFreedInVainKeepsNewWorkersFromTheOldOnesPicture) {
    LoseWindowAt(At::Decode);
    workers.Shorten(kReleaseWait);
    EXPECT_NE(library.FreeMap(), 0U) << "gives up waiting";
    EXPECT_EQ(Init(), HORIVO_OK);
    CreateMap();
    ASSERT_EQ(workers.Started(), 2);
    workers.LetGo();
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Uploads(), 8U);
    EXPECT_EQ(workers.MostDecoding(), 1) << "two at once would write into each other's pixels";
}

TEST_F(WorkerTest, AHostMayForgetToFreeWhatItUnloads) {
    LoseWindowAt(At::SplitLock);
    library.Unload();
    EXPECT_NE(GetModuleHandleW(L"horivo_map.dll"), nullptr);
    workers.LetGo();
    EXPECT_TRUE(workers.WaitUntilAllLeft());
    EXPECT_EQ(GetModuleHandleW(L"horivo_map.dll"), nullptr);
}

// ---- Several loads under way ------------------------------------------------------------------

TEST_F(WorkerTest, LoadsUnderWayEndInOneRightSet) {
    const HWND window = CreateLoadedMap();
    const struct {
        const char* why;
        const char* keys;
    } cases[] = {{"coarser twice", "LL"}, {"finer and back", "HL"}};
    for (const auto& c : cases) {
        for (const At place : {At::Nowhere, At::Decode, At::SplitLock}) {
            workers.HoldUp(place);
            for (const char* key = c.keys; *key != '\0'; ++key) Key(window, *key);
            workers.LetGo();
            ASSERT_TRUE(Settle()) << c.why;
            ExpectOnlyRightSets(c.why);
            EXPECT_GE(Uploads(), 16U) << c.why << ": nothing attached";
            SpiedGl().uploads.resize(8);
            for (const char* key = c.keys; *key != '\0'; ++key) Key(window, *key ^ 'H' ^ 'L');
            ASSERT_TRUE(Settle()) << c.why;
            SpiedGl().uploads.resize(8);
        }
    }
    EXPECT_EQ(boxes, 0);
}

TEST_F(WorkerTest, AWindowOpenedWhileTheFirstStillLoadsGetsItsTilesToo) {
    CreateLoadedMap();
    enum class Dies { None, First, Second };
    for (const Dies dies : {Dies::None, Dies::First, Dies::Second}) {
        for (const bool secondLoadIsLost : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << "dies " << static_cast<int>(dies) << ", lost " << secondLoadIsLost);
            DestroyMapsBut(nullptr);
            library.FreeMap();
            Init();
            SpiedGl().uploads.clear();
            workers.HoldUp(At::Decode);
            const HWND first = CreateMap(160, 120);
            ASSERT_TRUE(PumpUntilHeldUp());
            if (secondLoadIsLost) workers.Shorten(kWorkerWait);
            const int before = workers.Started();
            const HWND second = CreateMap(120, 160);
            EXPECT_EQ(workers.Started(), before + 1) << "a load of its own";
            // A load that waits in vain has left when only the first worker is still there.
            if (secondLoadIsLost) {
                ASSERT_TRUE(PumpUntil([this] { return workers.Inside() == 1; }));
            }
            workers.WaitAsAsked();
            if (dies == Dies::First) DestroyWindow(first);
            if (dies == Dies::Second) DestroyWindow(second);
            workers.LetGo();
            ASSERT_TRUE(Settle());
            EXPECT_GE(Uploads(), 8U) << "the globe stays bare";
            ExpectOnlyRightSets("two windows");
        }
    }
    EXPECT_EQ(boxes, 0);
}

TEST_F(WorkerTest, InstallMapTakesItsTurnBehindALoadUnderWay) {
    workers.HoldUp(At::Decode);
    CreateMap();
    ASSERT_TRUE(PumpUntilHeldUp());
    PutPatternMap(256, 128);
    workers.LetGoAtWait(kReleaseWait);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    EXPECT_EQ(Uploads(), 8U) << "the test window's";
    EXPECT_TRUE(Settle());
    EXPECT_GE(Uploads(), 16U);
    EXPECT_THAT(SpiedGl().uploads, testing::Each(testing::Field(&SpiedUpload::width, 64)));
    EXPECT_EQ(workers.MostDecoding(), 1);
    EXPECT_EQ(boxes, 0);
}

// ---- Workers that cannot work -----------------------------------------------------------------

TEST_F(WorkerTest, AWorkerThatCannotBeStartedIsReported) {
    const HWND window = CreateLoadedMap();
    for (const int start : {1, 2}) {
        SpiedGl().uploads.resize(8);
        boxes = 0;
        workers.FailStart(start);
        Key(window, 'L');
        ASSERT_TRUE(PumpUntil([this] { return boxes > 0; }));
        EXPECT_TRUE(Settle());
        EXPECT_EQ(boxes, 1);
        EXPECT_EQ(Uploads(), 8U);
        ExpectLives(window, "after the box");
        Key(window, 'H');
        EXPECT_TRUE(Settle());
        EXPECT_EQ(Uploads(), 16U) << "the next load";
        ExpectOnlyRightSets("the next load");
    }
}

/// The library's lock at hand, and in the hands of another thread when a test wants it.
class LockTest : public WorkerTest {
protected:
    LockTest() {
        for (const DWORD wait : {kWorkerWait, kWindowWait, kReleaseWait}) workers.Shorten(wait);
    }
    /// A library without a picture.
    void Restart() {
        DestroyMapsBut(nullptr);
        library.FreeMap();
        SpiedGl().uploads.clear();
        boxes = 0;
        using Make = FakedImport<"CreateMutexW", decltype(CreateMutexW)>;
        const Make make(library.module,
                        [this](auto... arguments) { return lock_ = Make::Real(arguments...); });
        Init();
    }
    /// Does `act` while another thread holds the lock, which then gives it back or just dies.
    void WhileLocked(const std::function<void()>& act, bool dies = false) {
        std::thread holder([this, dies] {
            WaitForSingleObject(lock_, INFINITE);
            SetEvent(taken_.get());
            WaitForSingleObject(done_.get(), INFINITE);
            if (!dies) ReleaseMutex(lock_);
        });
        WaitForSingleObject(taken_.get(), INFINITE);
        act();
        SetEvent(done_.get());
        holder.join();
    }

private:
    HANDLE lock_ = nullptr;
    const UniqueHandle taken_{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    const UniqueHandle done_{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
};

TEST_F(LockTest, WhoeverWaitsTooLongGivesUpAndTheNextLoadWorks) {
    enum class Waits { Load, Split, Window };
    const struct {
        Waits who;
        int boxes;  // a load is lost without a word, a split is reported
    } cases[] = {{Waits::Load, 0}, {Waits::Split, 1}, {Waits::Window, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.who));
        Restart();
        HWND window = nullptr;
        const auto settle = [this] { EXPECT_TRUE(Settle()); };
        if (c.who == Waits::Load) {
            WhileLocked([&] {
                window = CreateMap(160, 120);
                settle();
            });
        } else {
            workers.HoldUp(At::SplitLock);
            window = CreateMap(160, 120);
            ASSERT_TRUE(PumpUntilHeldUp());
        }
        if (c.who == Waits::Split) {
            WhileLocked([&] {
                workers.LetGo();
                settle();
            });
        } else if (c.who == Waits::Window) {
            workers.LetGo();
            ASSERT_TRUE(workers.WaitUntilAllLeft());
            WhileLocked([] { PumpPending(); });
        }
        EXPECT_EQ(boxes, c.boxes);
        EXPECT_EQ(Uploads(), 0U);
        ExpectLives(window, "without a picture");
        Key(window, 'L');
        settle();
        EXPECT_EQ(Uploads(), 8U);
    }
    DestroyMapsBut(nullptr);
    WhileLocked([this] { EXPECT_NE(library.FreeMap(), 0U) << "it never waits for ever"; });
}

TEST_F(LockTest, ALockLeftByADeadThreadIsStillALock) {
    Restart();
    WhileLocked([] {}, true);
    const HWND window = CreateLoadedMap();
    Key(window, 'L');
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Uploads(), 16U) << "the lock was given back";
}

// ---- Messages that nobody expects -------------------------------------------------------------

TEST_F(WorkerTest, SuccessThatIsNoLongerTrueAttachesNothing) {
    workers.Shorten(kWindowWait);
    workers.HoldUp(At::Decode);
    const HWND window = CreateMap(160, 120);
    ASSERT_TRUE(PumpUntilHeldUp());
    SendMessageW(window, kStageDone, kSplit, TRUE);
    EXPECT_EQ(Uploads(), 0U) << "while the newer load reads";
    workers.LetGo();
    ASSERT_TRUE(workers.WaitUntilAllLeft());
    SendMessageW(window, kStageDone, kSplit, TRUE);
    EXPECT_EQ(Uploads(), 0U) << "the whole map must not pass for its first tile";
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Uploads(), 8U);
    EXPECT_EQ(boxes, 0);
}

TEST_F(WorkerTest, MessagesNobodySentDoNoHarm) {
    const HWND window = CreateLoadedMap();
    const struct {
        WPARAM stage;
        LPARAM success;
        bool box;
    } cases[] = {
        {kLoad, 1, false}, {kSplit, 1, false},     {kSplit, -1, false},
        {2, 1, false},     {~WPARAM{0}, 1, false}, {WPARAM{1} << 32, 1, false},
        {kLoad, 0, true},  {kSplit, 0, true},      {12345, 0, true},
    };
    for (const auto& c : cases) {
        const std::string why = std::to_string(c.stage) + ", " + std::to_string(c.success);
        boxes = 0;
        SendMessageW(window, kStageDone, c.stage, c.success);
        EXPECT_TRUE(Settle()) << why;
        EXPECT_EQ(boxes, c.box ? 1 : 0) << why;
        ExpectOnlyRightSets(why.c_str());
        ExpectLives(window, why.c_str());
        const std::size_t before = Uploads();
        DestroyWindow(CreateMap(50, 50));
        EXPECT_EQ(Uploads(), before + 8) << why << ": the tiles are gone";
    }
}

TEST_F(WorkerTest, AMessageAfterTheWindowsDestructionDoesNothing) {
    static WNDPROC mapProc = nullptr;
    CreateLoadedMap();  // lives on, or is the last, by turns
    for (const bool last : {false, true}) {
        const HWND window = CreateMap(160, 120);
        if (last) DestroyMapsBut(window);
        const auto afterDestroy = [](HWND hwnd, UINT message, WPARAM w, LPARAM l) -> LRESULT {
            const LRESULT answer = CallWindowProcW(mapProc, hwnd, message, w, l);
            if (message != WM_DESTROY) return answer;
            for (const UINT late :
                 {UINT{WM_SIZE}, UINT{WM_PAINT}, UINT{WM_MOUSEMOVE}, UINT{WM_LBUTTONDOWN},
                  UINT{WM_LBUTTONUP}, UINT{WM_MOUSEWHEEL}, UINT{WM_MOUSELEAVE}, kStageDone,
                  UINT{HORIVO_MSG_CITY}, UINT{HORIVO_MSG_PHOTOS_CHANGED}, UINT{WM_DESTROY}}) {
                for (const WPARAM wParam : {0, 1})
                    CallWindowProcW(mapProc, hwnd, late, wParam, MAKELPARAM(80, 60));
            }
            for (const WPARAM key : {WPARAM{VK_LEFT}, WPARAM{VK_HOME}, WPARAM{'L'}, WPARAM{'I'}})
                CallWindowProcW(mapProc, hwnd, WM_KEYDOWN, key, 0);
            for (const WPARAM timer : {1, 2, 3, 4})
                CallWindowProcW(mapProc, hwnd, WM_TIMER, timer, 0);
            return answer;
        };
        mapProc = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
            window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>(afterDestroy))));
        const int started = workers.Started();
        DestroyWindow(window);
        EXPECT_TRUE(Settle());
        EXPECT_EQ(workers.Started(), started);
        EXPECT_EQ(boxes, 0);
    }
    const HWND next = CreateMap(160, 120);
    ExpectLives(next, "afterwards");
    ExpectOnlyRightSets("afterwards");
    DestroyWindow(next);
    EXPECT_NE(library.FreeMap(), 0U);
}

}  // namespace
