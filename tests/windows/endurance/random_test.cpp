// Everything that may happen to a map, in random order, against workers that dawdle: windows,
// messages, loads, rewritten tables, failing calls, unloading. Judged whenever all is at rest. Each
// test is a choice of what may happen.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "support/frame_compare_win.h"
#include "support/gl_spy_win.h"
#include "support/resource_count_win.h"
#include "watched_library.h"

namespace {

using std::chrono::steady_clock;

constexpr UINT kStageDone = WM_USER + 1;
constexpr SYSTEMTIME kNoonInJuly = {2024, 7, 1, 1, 12, 0, 0, 0};
constexpr WPARAM kSunTimer = 4;
constexpr int kMapWidth = 512;
constexpr std::size_t kTiles = 8;
constexpr std::size_t kListsOfAMap = 255 + 2 + 1;  // codes, body and cities, one shell
constexpr const char* kKindNames[] = {"windows", "messages", "detail",   "workers",
                                      "clock",   "tables",   "failures", "unloads"};

/// The kinds that HORIVO_ACTIONS names; all when it is not there.
unsigned KindsWanted() {
    const char* wanted = std::getenv("HORIVO_ACTIONS");
    unsigned kinds = 0;
    for (unsigned i = 0; i < std::size(kKindNames); ++i) {
        if (wanted == nullptr || std::strstr(wanted, kKindNames[i]) != nullptr) kinds |= 1U << i;
    }
    return kinds;
}

/// The time zone of a record without sense.
DYNAMIC_TIME_ZONE_INFORMATION* NonsenseZone() {
    static DYNAMIC_TIME_ZONE_INFORMATION zone;
    std::memset(&zone, 0xA5, sizeof zone);
    return &zone;
}

/// Kinds of action; a profile is a sum of them.
enum ActionKind : unsigned {
    kWindowActions = 1,
    kMessageActions = 2,
    kDetailActions = 4,
    kWorkerActions = 8,
    kClockActions = 16,
    kTableActions = 32,
    kFailureActions = 64,
    kUnloadActions = 128,
    kAllActions = 255,
};

class RandomTest : public LongRunTest {
protected:
    RandomTest() {
        SpiedGl().keepPixels = true;
        watched_.emplace(library.module, dice_, slow_);
    }
    ~RandomTest() override {
        slow_ = false;
        DestroyAll();
        library.FreeMap();
        Settle(watched_->workers);
        watched_.reset();
    }

    /// Runs actions of these kinds for twenty seconds, or ten minutes; HORIVO_ACTIONS in the
    /// environment names those that are left in ("windows,failures").
    /// @param slow  see WatchedLibrary
    void Run(unsigned kinds, bool slow) {
        kinds_ = kinds & KindsWanted();
        slowRun_ = slow;
        LiveOnce();
        Judge();
        const ResourceCount before = CountResources();
        const auto end = steady_clock::now() + std::chrono::seconds(LengthOfRun(600, 20));
        int rounds = 0;
        for (; steady_clock::now() < end && !HasFailure(); ++rounds) {
            slow_ = slow;
            resting_ = false;
            inOrder_ = (kinds_ & (kMessageActions | kTableActions)) == 0;
            if (IsExact()) BringTilesIntoMemory();
            for (int i = dice_.Roll(IsExact() ? 12 : 60); i >= 0; --i) {
                Act(kinds_);
                if (!IsExact()) continue;
                ASSERT_TRUE(Settle(watched_->workers)) << history_;
                JudgeWindows();
            }
            Judge();
        }
        const ResourceCount after = CountResources();
        std::printf(
            "%d rounds, %d steps, kernel handles %zu to %zu, GDI objects %zu to %zu, "
            "committed KiB %zu to %zu\n",
            rounds, dog_.Steps(), before.kernelHandles, after.kernelHandles, before.gdiObjects,
            after.gdiObjects, before.committedBytes / 1024, after.committedBytes / 1024);
        EXPECT_LE(after.kernelHandles, before.kernelHandles + 6);
        // Wine keeps some of a thread's objects that dealt with a window: 3 to 12 more, by chance,
        // after 16 rounds as after 600.
        EXPECT_LE(after.gdiObjects, before.gdiObjects + 30);
        // Heaps give pages back when they like.
        EXPECT_LE(after.committedBytes, before.committedBytes + (8U << 20));
    }

private:
    struct Slot {
        int width, height;
        HWND window = nullptr;
        SpiedFrame alone = {};  ///< what it shows from the start view while no other window lives
    };
    struct Action {
        const char* name;
        unsigned kind;
        int weight;
        void (RandomTest::*act)(Slot& slot);
    };

    /// The host consents or not, and may have done away with the window meanwhile. At rest it
    /// refuses, since photos would change the picture.
    LRESULT Consent(HWND window) override {
        if (resting_) return 0;
        if ((kinds_ & kWindowActions) != 0 && dice_.OneIn(30)) DestroyWindow(window);
        return dice_.Roll(3);
    }

    // ---- What may happen ----------------------------------------------------------------------

    /// Does one action of these kinds, on a window or a place for one.
    void Act(unsigned kinds) {
        static constexpr Action kActions[] = {
            {"make", kWindowActions, 20, &RandomTest::MakeWindow},
            {"destroy", kWindowActions, 8, &RandomTest::DestroyOne},
            {"move", kWindowActions, 6, &RandomTest::Move},
            {"install", kWindowActions, 4, &RandomTest::Install},
            {"paint", kAllActions, 10, &RandomTest::PaintOne},
            {"key", kMessageActions, 25, &RandomTest::PressKey},
            {"pointer", kMessageActions, 25, &RandomTest::UsePointer},
            {"host message", kMessageActions, 6, &RandomTest::SendHostMessage},
            {"message", kMessageActions, 10, &RandomTest::SendAnything},
            {"detail", kDetailActions, 25, &RandomTest::ChangeDetail},
            {"stage", kWorkerActions, 6, &RandomTest::ForgeStage},
            {"pump", kWorkerActions | kMessageActions | kDetailActions, 16, &RandomTest::Pump},
            {"hold lock", kWorkerActions, 4, &RandomTest::HoldLock},
            {"free", kWorkerActions, 4, &RandomTest::FreeAndInit},
            {"tick", kClockActions, 25, &RandomTest::TickClock},
            {"rewrite", kTableActions, 8, &RandomTest::RewriteTable},
            {"hand over", kTableActions, 4, &RandomTest::HandOverTable},
            {"fail at", kFailureActions, 40, &RandomTest::Fail},
            {"unload", kUnloadActions, 1, &RandomTest::Unload},
        };
        int sum = 0;
        const Action* chosen = nullptr;
        for (const Action& action : kActions) {
            if ((action.kind & kinds) == 0) continue;
            sum += action.weight;
            if (dice_.Roll(sum) < action.weight) chosen = &action;
        }
        Slot& slot = slots_[dice_.Roll(static_cast<int>(std::size(slots_)))];
        history_ +=
            std::string(" ") + static_cast<char>('0' + (&slot - slots_)) + ' ' + chosen->name;
        dog_.Step(chosen->name);
        (this->*chosen->act)(slot);
        for (Slot& each : slots_) {
            if (!IsWindow(each.window)) each.window = nullptr;
        }
    }

    /// A window is refused only where a call has failed.
    void MakeWindow(Slot& slot) {
        if (slot.window != nullptr) return;
        slot.window = Make(slot.width, slot.height);
        EXPECT_TRUE(slot.window != nullptr || !unharmed_) << "refused after" << history_;
    }

    void DestroyOne(Slot& slot) {
        if (slot.window != nullptr) DestroyWindow(slot.window);
    }

    void Move(Slot& slot) {
        MoveWindow(slot.window, 0, 0, dice_.Roll(300), dice_.Roll(300), FALSE);
        if (dice_.OneIn(2)) PaintOne(slot);
    }

    void PaintOne(Slot& slot) { Paint(slot.window); }

    void Install(Slot&) {
        const std::uint32_t code = library.InstallMap();
        EXPECT_TRUE(code == HORIVO_OK || !unharmed_) << code << history_;
    }

    void PressKey(Slot& slot) {
        constexpr int kKeys[] = {VK_LEFT,  VK_RIGHT,  VK_UP,  VK_DOWN,     VK_HOME,
                                 VK_CLEAR, VK_ADD,    VK_ADD, VK_SUBTRACT, VK_PRIOR,
                                 VK_NEXT,  VK_INSERT, 'I'};
        const int key = dice_.OneIn(20) ? dice_.Roll(256) : dice_.Any(kKeys);
        if (key == 'H') return;  // finer pictures take too long to see many
        // Twice: while the frame rate shows, painting never ends.
        if (key == 'F') Key(slot.window, key);
        SendMessageW(slot.window, WM_KEYDOWN, static_cast<WPARAM>(key),
                     key != 'F' && dice_.OneIn(4) ? 1 << 30 : 1);
    }

    void UsePointer(Slot& slot) {
        constexpr UINT kMessages[] = {WM_MOUSEMOVE,     WM_MOUSEMOVE, WM_MOUSEMOVE,  WM_LBUTTONDOWN,
                                      WM_LBUTTONUP,     WM_LBUTTONUP, WM_MOUSELEAVE, WM_RBUTTONDOWN,
                                      WM_LBUTTONDBLCLK, WM_MOUSEWHEEL};
        constexpr WPARAM kButtons[] = {0, MK_LBUTTON, MK_LBUTTON | MK_CONTROL, MK_RBUTTON};
        const int x = dice_.Roll(slot.width + 100) - 50;
        const int y = dice_.Roll(slot.height + 100) - 50;
        SendMessageW(slot.window, dice_.Any(kMessages), dice_.Any(kButtons) | dice_.Number() << 16,
                     MAKELPARAM(x, y));
        if (dice_.OneIn(12)) SetCapture(host);
        if (dice_.OneIn(12)) ReleaseCapture();
    }

    void SendHostMessage(Slot& slot) {
        const auto city = static_cast<WPARAM>(dice_.Roll(static_cast<int>(sane.size())));
        if (dice_.OneIn(2)) {
            SendMessageW(slot.window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&sane[city]));
        } else {
            SendMessageW(slot.window, HORIVO_MSG_PHOTOS_CHANGED, dice_.OneIn(2) ? city : 0 - city,
                         1);
        }
    }

    /// A message of the map's own with numbers from anywhere.
    void SendAnything(Slot& slot) {
        constexpr UINT kMessages[] = {HORIVO_MSG_CITY,  HORIVO_MSG_PHOTOS_CHANGED,
                                      WM_DISPLAYCHANGE, WM_SETCURSOR,
                                      WM_MOUSEWHEEL,    WM_TIMER,
                                      WM_CREATE,        WM_SIZE,
                                      WM_MOUSEMOVE,     WM_ERASEBKGND};
        static constexpr std::uint64_t kEdges[] = {
            0, 1, 2, 3, 4, 32, 0x7FFFFFFF, 0x80000000U, ~0ULL, 0xFFFFFFFF00000000};
        const auto number = [&] { return dice_.OneIn(2) ? dice_.Any(kEdges) : dice_.Number(); };
        const UINT message = dice_.Any(kMessages);
        const LPARAM lParam = message == WM_SIZE ? MAKELPARAM(dice_.Roll(400), dice_.Roll(400))
                                                 : static_cast<LPARAM>(number());
        SendMessageW(slot.window, message, message == WM_TIMER ? dice_.Number() % 6 : number(),
                     lParam);
    }

    void ChangeDetail(Slot& slot) { Key(slot.window, dice_.OneIn(2) ? 'L' : 'H'); }

    void ForgeStage(Slot& slot) {
        if (slot.window != nullptr)
            PostMessageW(slot.window, kStageDone, dice_.Number() % 3, dice_.Roll(2));
    }

    /// Takes whatever messages are there, but not for ever.
    void Pump(Slot&) {
        MSG message;
        for (int i = 0; i < 20 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
            DispatchMessageW(&message);
    }

    /// Another thread of the host has got hold of the lock for a while.
    void HoldLock(Slot&) {
        std::thread([this] {
            if (WaitForSingleObject(watched_->Mutex(), 50) != WAIT_OBJECT_0) return;
            Sleep(static_cast<DWORD>(dice_.Roll(15)));
            ReleaseMutex(watched_->Mutex());
        }).join();
    }

    void FreeAndInit(Slot&) {
        if (dice_.OneIn(2)) DestroyAll();
        library.FreeMap();
        InitCities();
    }

    void TickClock(Slot& slot) {
        SYSTEMTIME& clock = FixedClock();
        clock.wMinute = static_cast<WORD>(dice_.Roll(60));
        clock.wHour = static_cast<WORD>(dice_.Roll(24));
        clock.wDay = static_cast<WORD>(1 + dice_.Roll(28));
        SendMessageW(slot.window, WM_TIMER, kSunTimer, 0);
    }

    /// Anything that the memory of a record may hold; a zone's address is the host's promise.
    void Scribble(CityRecord& city) {
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        const double kPlaces[] = {std::nan(""), kInfinity, -kInfinity, 1e308, 5e-324, 725.0, 42.0};
        std::memset(static_cast<void*>(&city), dice_.Roll(255) + 1, sizeof city);
        if (dice_.OneIn(4)) city.cityName[dice_.Roll(64)] = L'\0';
        city.latitude = dice_.Any(kPlaces);
        city.longitude = dice_.Any(kPlaces);
        city.timeZoneId =
            static_cast<std::uint32_t>(dice_.Number() % (dice_.OneIn(3) ? ~0U : 150U));
        city.timeZone = dice_.OneIn(8) ? NonsenseZone() : nullptr;
        for (double& coordinate : city.markerPoint) coordinate = dice_.Any(kPlaces);
        for (double& coordinate : city.windowPoint) coordinate = dice_.Any(kPlaces);
        city.distanceSq = dice_.Any(kPlaces);
    }

    void RewriteTable(Slot&) {
        for (CityRecord& city : cities) {
            if (dice_.OneIn(4)) Scribble(city);
        }
    }

    void HandOverTable(Slot&) {
        std::shuffle(sane.begin() + 1, sane.end(),
                     std::mt19937(static_cast<unsigned>(dice_.Roll(1000))));
        cities.swap(other_);
        cities = sane;
        cities.resize(static_cast<std::size_t>(dice_.Roll(41)));
        const auto count = static_cast<std::int32_t>(cities.size());
        library.InitMap(dice_.OneIn(5) ? nullptr : cities.data(), dice_.OneIn(5) ? -count : count);
    }

    /// Another action, during which a call of one family fails, or no memory is left at all.
    void Fail(Slot& slot) {
        const unsigned family = IsExact()        ? unsigned{kRefusingCalls}
                                : dice_.OneIn(3) ? unsigned{kThreadCalls}
                                                 : 1U << dice_.Roll(8);
        FailingImports failing(library.module, family);
        unharmed_ = inOrder_ = false;
        const bool all = family == kMemoryCalls && dice_.OneIn(2);
        failing.FailFrom(1 + dice_.Roll(IsExact() || dice_.OneIn(3) ? 60 : 5),
                         all ? kAllThatFollow : 1);
        if (IsExact()) {
            MakeWindow(slot);
        } else {
            Act(kinds_ & ~(kFailureActions | kUnloadActions));
        }
        failing.Stop();
        history_ += failing.Failed() != nullptr ? std::string(" (") + failing.Failed() + ')' : "";
    }

    /// Unloads the library, perhaps unfreed and under its workers, and loads it anew.
    void Unload(Slot&) {
        Reload(dice_.OneIn(2));
        InitCities();
    }

    // ---- What must hold -----------------------------------------------------------------------

    void InitCities() {
        const std::uint32_t code = Init();
        EXPECT_THAT(code, testing::AnyOf(HORIVO_OK, HORIVO_CLASS_FAILED)) << history_;
    }

    void DestroyAll() {
        while (const HWND child = GetWindow(host, GW_CHILD)) DestroyWindow(child);
        for (Slot& slot : slots_) slot.window = nullptr;
    }

    void Reload(bool freed) {
        DestroyAll();
        if (freed) library.FreeMap();
        library.Unload();
        ASSERT_TRUE(PumpUntil([] { return GetModuleHandleW(L"horivo_map.dll") == nullptr; }))
            << "a worker keeps the library after" << history_;
        auto held = watched_->ledger.Held();
        if (!freed) {  // GDI+ must not be ended under the loader's lock; the picture is not kept
            for (const char* kept : {"use of gdi+", "window class", "heap block"}) held.erase(kept);
            EXPECT_LT(watched_->ledger.HeldBytes(), 64U << 10) << history_;
        }
        EXPECT_EQ(held, ImportLedger::Counts{}) << (freed ? "freed" : "unfreed") << history_;
        watched_.reset();
        library.Load();
        Watch();
        watched_.emplace(library.module, dice_, slow_);
        unharmed_ = true;
    }

    static SpiedFrame StartView(HWND window) {
        Key(window, VK_HOME);
        FixedClock() = kNoonInJuly;
        SendMessageW(window, WM_TIMER, kSunTimer, 0);
        SpiedGl().keepFrame = true;
        SpiedGl().frame = {};
        Paint(window);
        Paint(window);
        SpiedGl().keepFrame = false;
        return SpiedGl().frame;
    }

    /// Whether only windows come and go, perhaps refused: each looks as if it were alone then.
    bool IsExact() const { return (kinds_ & ~(kWindowActions | kFailureActions)) == 0; }

    /// Each window that lives can be painted and says nothing of a load; where only windows come
    /// and go, it looks as if it were alone.
    void JudgeWindows() {
        std::size_t living = 0;
        for (Slot& slot : slots_) {
            if (slot.window == nullptr) continue;
            ++living;
            MoveWindow(slot.window, 0, 0, slot.width, slot.height, FALSE);
            const int frames = SpiedGl().frames;
            SpiedGl().keepTexts = true;
            Paint(slot.window);
            SpiedGl().keepTexts = false;
            EXPECT_TRUE(SpiedGl().frames > frames || !unharmed_) << "not painted after" << history_;
            EXPECT_THAT(SpiedGl().texts, testing::Each(testing::Not(testing::EndsWith("..."))))
                << history_;
            SpiedGl().texts.clear();
            if (!IsExact()) continue;
            EXPECT_LE(DifferentPixels(StartView(slot.window), slot.alone),
                      slot.width * slot.height / 500)
                << &slot - slots_ << " after" << history_;
        }
        auto held = watched_->ledger.Held();
        EXPECT_EQ(held["reference to the library"], 0U) << history_;
        if (!unharmed_ && !IsExact()) return;
        EXPECT_EQ(held["gl context"], std::min<std::size_t>(living, 1)) << history_;
        EXPECT_EQ(held["dc"], living) << history_;
        const bool tiled = held["gl texture"] >= kTiles || living == 0;
        EXPECT_TRUE(tiled || slowRun_ || (kinds_ & kWorkerActions) != 0)
            << "a bare globe after" << history_;
        if (!IsExact()) return;
        EXPECT_EQ(held["gl list"], living > 0 ? kListsOfAMap : 0) << history_;
        EXPECT_EQ(held["gl texture"], living > 0 ? kTiles : 0) << history_;
    }

    /// The life of one window in a library just initialised: nothing that went before is to be
    /// seen.
    void LiveOnce() {
        PutFiles(kMapWidth);
        cities = sane;
        SpiedGl().uploads.clear();
        ASSERT_EQ(Init(), HORIVO_OK) << history_;
        for (Slot& slot : slots_) {
            if (!slot.alone.pixels.empty() && &slot != &slots_[0]) continue;
            MakeWindow(slot);
            ASSERT_NE(slot.window, nullptr) << library.GetLastSysError() << history_;
            ASSERT_TRUE(Settle(watched_->workers)) << "a worker hangs after" << history_;
            SendMessageW(slot.window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(cities.data()));
            Paint(slot.window);
            EXPECT_NE(cities[0].timeZone, nullptr) << "its label tells the time" << history_;
            const SpiedFrame frame = StartView(slot.window);
            if (slot.alone.pixels.empty()) slot.alone = frame;
            EXPECT_TRUE(DifferentPixels(frame, slot.alone) == 0 || !inOrder_) << history_;
            DestroyAll();
        }
        if (right_.empty()) right_.assign(SpiedGl().uploads.begin(), SpiedGl().uploads.begin() + 8);
        EXPECT_GE(SpiedGl().uploads.size(), kTiles) << "nothing loads any more after" << history_;
        EXPECT_NE(library.FreeMap(), 0U) << history_;
        for (const CityRecord& city : cities)
            EXPECT_EQ(city.timeZone, nullptr) << "the library's own is left in the host's record";
    }

    /// A load that fails would leave the globe bare, which is another picture.
    void BringTilesIntoMemory() {
        MakeWindow(slots_[0]);
        Settle(watched_->workers);
        DestroyAll();
    }

    /// Lets all come to rest. What was made is right, what is left is given back.
    void Judge() {
        dog_.Step("rest");
        slow_ = false;
        resting_ = true;
        ASSERT_TRUE(Settle(watched_->workers)) << "a worker hangs after" << history_;
        JudgeWindows();
        if (unharmed_) {
            const auto& uploads = SpiedGl().uploads;
            for (std::size_t i = 0, tile = 0; i < uploads.size(); ++i) {
                if (uploads[i].width != right_[0].width) continue;  // a photo or a button
                EXPECT_EQ(uploads[i].pixels, right_[tile++ % kTiles].pixels)
                    << "upload " << i << history_;
            }
        }
        DestroyAll();
        Init();  // takes over what a FreeMap that gave up waiting has left
        library.FreeMap();
        EXPECT_EQ(watched_->ledger.HeldObjects(), ImportLedger::Counts{}) << history_;
        if (!inOrder_ || dice_.OneIn(4)) Reload(true);
        inOrder_ = true;
        LiveOnce();
        history_.clear();
        PutFiles(kMapWidth);
        SpiedGl().uploads.clear();
        InitCities();
    }

    Dice dice_;
    Watchdog dog_;
    std::vector<CityRecord> other_;  ///< the table handed over before `cities`
    std::atomic<bool> slow_ = false;
    std::optional<WatchedLibrary> watched_;
    Slot slots_[3] = {{200, 150}, {110, 180}, {160, 90}};
    std::vector<SpiedUpload> right_;  ///< a whole set of tiles
    unsigned kinds_ = 0;
    bool slowRun_ = false;
    bool resting_ = true;
    bool unharmed_ = true;  ///< no call has failed since the library was loaded
    bool inOrder_ = true;   ///< it is as it was when it was loaded: the same look is due
    std::string history_;   ///< of the actions since the last rest
};

TEST_F(RandomTest, Anything) { Run(kAllActions, true); }
TEST_F(RandomTest, Races) {
    Run(kWindowActions | kDetailActions | kWorkerActions | kUnloadActions, true);
}
TEST_F(RandomTest, Unloads) { Run(kWindowActions | kUnloadActions, true); }
TEST_F(RandomTest, Windows) { Run(kWindowActions, false); }
TEST_F(RandomTest, RefusedWindows) { Run(kWindowActions | kFailureActions, false); }
TEST_F(RandomTest, RefusedLoads) { Run(kWindowActions | kDetailActions | kFailureActions, false); }
TEST_F(RandomTest, Failures) { Run(kAllActions & ~kUnloadActions, false); }
TEST_F(RandomTest, Messages) { Run(kWindowActions | kMessageActions, false); }
TEST_F(RandomTest, Tables) { Run(kWindowActions | kMessageActions | kTableActions, false); }
TEST_F(RandomTest, ClockAndDetail) { Run(kWindowActions | kClockActions | kDetailActions, false); }

}  // namespace
