// Everything that may happen to a map, in random order, against workers that dawdle: windows,
// messages, loads, rewritten tables, failing calls, unloading. Judged whenever all is at rest. Each
// test is a choice of what may happen.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "long_run.h"
#include "support/frame_compare_win.h"
#include "support/gl_spy_win.h"

namespace {

constexpr int kMapWidth = 512;
constexpr std::size_t kTiles = 8;

/// Kinds of action; a profile is a sum of them.
enum ActionKind : unsigned {
    kWindows = 1,
    kMessages = 2,
    kWorkers = 4,  ///< these dawdle as well, and waits give up early
    kFailures = 8,
    kUnloads = 16,
    kAnything = 31,
};

class RandomTest : public LongRunTest {
protected:
    RandomTest() { SpiedGl().keepPixels = SpiedGl().keepTexts = true; }

    /// Runs actions of these kinds for twenty seconds, or ten minutes.
    void Run(unsigned kinds) {
        kinds_ = kinds;
        const ULONGLONG end = GetTickCount64() + (kIsFullRun ? 600000 : 20000);
        while (GetTickCount64() < end && !HasFailure()) {
            LiveOnce();
            if (HasFailure()) return;
            history_.clear();
            resting_ = false;
            slow = (kinds & kWorkers) != 0;
            for (int i = dice.Roll(IsExact() ? 12 : 60); i >= 0; --i) {
                Act(kinds);
                if (IsExact()) JudgeWindows();
            }
            resting_ = true;
            slow = false;
            JudgeWindows();
            JudgeEnd();
        }
    }

private:
    struct Slot {
        int width, height;
        HWND window = nullptr;
        SpiedFrame alone = {};  ///< what it shows from the start view while no other window lives
    };
    struct Action {
        const char* name;
        unsigned kinds;
        int weight;
        std::function<void(Slot& slot)> act;
    };

    /// The host consents or not, and may have done away with the window meanwhile. At rest it
    /// refuses, since photos would change the picture.
    LRESULT Consent(HWND window) override {
        if (resting_) return 0;
        if (dice.OneIn(30)) DestroyWindow(window);
        return dice.Roll(3);
    }

    // ---- What may happen ----------------------------------------------------------------------

    const std::vector<Action> actions_ = {
        {"make", kWindows, 20, [this](Slot& slot) { MakeWindow(slot); }},
        {"destroy", kWindows, 8, [](Slot& slot) { DestroyWindow(slot.window); }},
        {"move", kWindows, 6,
         [this](Slot& slot) {
             MoveWindow(slot.window, 0, 0, dice.Roll(300), dice.Roll(300), dice.Roll(2));
         }},
        {"install", kMessages | kWorkers, 4,
         [this](Slot&) {
             EXPECT_TRUE(library.InstallMap() == HORIVO_OK || !unharmed_) << history_;
         }},
        {"paint", kAnything, 10, [](Slot& slot) { Paint(slot.window); }},
        {"detail", kMessages | kWorkers, 20,
         [this](Slot& slot) { Key(slot.window, dice.OneIn(2) ? 'L' : 'H'); }},
        {"pump", kMessages | kWorkers, 16, [](Slot&) { PumpPending(); }},
        {"free", kWorkers, 4,
         [this](Slot&) {
             library.FreeMap();
             Init();
         }},
        {"message", kMessages, 60, [this](Slot& slot) { SendAnything(slot.window); }},
        {"rewrite", kMessages, 20, [this](Slot&) { RewriteRecord(); }},
        {"hand over", kMessages, 4, [this](Slot&) { HandOverTable(); }},
        {"fail", kFailures, 40, [this](Slot& slot) { Fail(slot); }},
        {"unload", kUnloads, 4,
         [this](Slot&) {
             Reload(dice.OneIn(2));
             Init();
         }},
    };

    /// Does one action of these kinds, on a window or a place for one. HORIVO_ACTIONS in the
    /// environment may name those that are left in ("make,move,paint").
    void Act(unsigned kinds) {
        const char* only = std::getenv("HORIVO_ACTIONS");
        int sum = 0;
        const Action* chosen = nullptr;
        for (const Action& action : actions_) {
            if ((action.kinds & kinds) == 0) continue;
            if (only != nullptr && std::strstr(only, action.name) == nullptr) continue;
            sum += action.weight;
            if (dice.Roll(sum) < action.weight) chosen = &action;
        }
        ASSERT_NE(chosen, nullptr) << "nothing is left in";
        const int place = dice.Roll(static_cast<int>(std::size(slots_)));
        history_ += ' ' + std::to_string(place) + ' ' + chosen->name;
        quietSeconds_ = 0;
        chosen->act(slots_[place]);
        if (GetWindow(host, GW_CHILD) != nullptr) return;
        auto held = watched->ledger.Held();
        for (const char* kind : {"gl context", "gl list", "gl texture", "glu quadric", "dc"})
            EXPECT_EQ(held[kind], 0U) << kind << " without a window after" << history_;
    }

    /// A window is refused only where a call has failed.
    void MakeWindow(Slot& slot) {
        if (IsWindow(slot.window)) return;
        slot.window = Make(slot.width, slot.height);
        EXPECT_TRUE(slot.window != nullptr || !unharmed_) << "refused after" << history_;
    }

    /// A message of the user, the host, a worker or anybody, often with numbers of sense.
    void SendAnything(HWND window) {
        constexpr UINT kAll[] = {WM_MOUSEMOVE,     WM_MOUSEMOVE,     WM_LBUTTONDOWN,
                                 WM_LBUTTONUP,     WM_RBUTTONDOWN,   WM_MOUSEWHEEL,
                                 WM_MOUSELEAVE,    WM_LBUTTONDBLCLK, WM_KEYDOWN,
                                 WM_KEYDOWN,       WM_TIMER,         WM_TIMER,
                                 WM_DISPLAYCHANGE, HORIVO_MSG_CITY,  WM_SIZE,
                                 WM_SETCURSOR,     WM_CREATE,        HORIVO_MSG_PHOTOS_CHANGED,
                                 WM_ERASEBKGND,    WM_USER + 1};
        constexpr int kKeys[] = {VK_LEFT, VK_RIGHT,    VK_UP,    VK_DOWN, VK_HOME,   VK_CLEAR,
                                 VK_ADD,  VK_SUBTRACT, VK_PRIOR, VK_NEXT, VK_INSERT, 'I'};
        const UINT message = dice.Any(kAll);
        auto wParam = static_cast<WPARAM>(message == WM_KEYDOWN ? dice.Any(kKeys) : dice.Roll(6));
        if (dice.OneIn(4)) wParam = dice.Number();
        LPARAM lParam = MAKELPARAM(dice.Roll(250), dice.Roll(250));
        if (message != WM_SIZE && dice.OneIn(4)) lParam = static_cast<LPARAM>(dice.Number());
        const CityRecord* city = &sane[dice.Number() % sane.size()];
        if (message == HORIVO_MSG_CITY) lParam = reinterpret_cast<LPARAM>(city);
        if (message == WM_TIMER) FixedClock().wHour = static_cast<WORD>(dice.Roll(24));
        SendMessageW(window, message, wParam, lParam);
    }

    /// Writes what memory may hold into a record. A zone's address is the host's promise.
    void RewriteRecord() {
        if (cities.empty()) return;
        CityRecord& city = cities[dice.Number() % cities.size()];
        std::memset(static_cast<void*>(&city), dice.Roll(256), sizeof city);
        if (dice.OneIn(3)) city.longitude = dice.OneIn(2) ? HUGE_VAL : -HUGE_VAL;
        city.timeZone = nullptr;
    }

    void HandOverTable() {
        other_ = std::exchange(cities, sane);
        cities.resize(static_cast<std::size_t>(dice.Roll(41)));
        Init();
    }

    /// Another action, during which a call of one family fails, or no memory is left at all.
    void Fail(Slot& slot) {
        const unsigned family = IsExact()       ? unsigned{kRefusingCalls}
                                : dice.OneIn(3) ? unsigned{kThreadCalls}
                                                : 1U << dice.Roll(8);
        FailingImports failing(library.module, family);
        unharmed_ = false;
        failing.FailFrom(1 + dice.Roll(dice.OneIn(2) ? 60 : 5),
                         family == kMemoryCalls && dice.OneIn(2) ? kAllThatFollow : 1);
        if (IsExact()) {
            MakeWindow(slot);
        } else {
            Act(kinds_ & ~(kFailures | kUnloads));
        }
        if (failing.Failed() != nullptr) history_ += std::string(" (") + failing.Failed() + ')';
    }

    // ---- What must hold -----------------------------------------------------------------------

    /// Unloads the library, perhaps unfreed and under its workers, and loads it anew.
    void Reload(bool freed) {
        DestroyAll();
        if (freed) library.FreeMap();
        library.Unload();
        ASSERT_TRUE(PumpUntil([] { return GetModuleHandleW(L"horivo_map.dll") == nullptr; }))
            << "a worker keeps the library after" << history_;
        auto held = watched->ledger.Held();
        if (!freed) {  // GDI+ must not be ended under the loader's lock; the picture is not kept
            for (const char* kept : {"use of gdi+", "heap block"}) held.erase(kept);
            EXPECT_TRUE(watched->ledger.HeldBytes() < 64U << 10 || !unharmed_) << history_;
        }
        EXPECT_EQ(held, ImportLedger::Counts{}) << (freed ? "freed" : "unfreed") << history_;
        watched.reset();
        library.Load();
        Watch();
        watched.emplace(library.module, dice, slow);
    }

    /// The start view at noon in July.
    static SpiedFrame StartView(const Slot& slot) {
        Key(slot.window, VK_HOME);
        FixedClock() = {2024, 7, 1, 1, 12, 0, 0, 0};
        SendMessageW(slot.window, WM_TIMER, 4, 0);  // the Sun moves
        SpiedGl().keepFrame = true;
        Paint(slot.window);
        Paint(slot.window);
        SpiedGl().keepFrame = false;
        return std::exchange(SpiedGl().frame, {});
    }

    /// Whether only windows come and go, perhaps refused: each looks as if it were alone then.
    bool IsExact() const { return (kinds_ & ~(kWindows | kFailures)) == 0; }

    /// Each window that lives can be painted and says nothing of a load.
    void JudgeWindows() {
        Rest();
        std::size_t living = 0;
        for (Slot& slot : slots_) {
            if (!IsWindow(slot.window)) continue;
            ++living;
            MoveWindow(slot.window, 0, 0, slot.width, slot.height, FALSE);
            SpiedGl().texts.clear();
            Paint(slot.window);
            for (const std::string& text : SpiedGl().texts)
                EXPECT_FALSE(text.ends_with("...")) << text << " after" << history_;
            if (!IsExact()) continue;
            EXPECT_LE(DifferentPixels(StartView(slot), slot.alone), slot.width * slot.height / 500)
                << &slot - slots_ << " after" << history_;
        }
        auto held = watched->ledger.Held();
        EXPECT_EQ(held["reference to the library"], 0U) << history_;
        if (living == 0 || (!unharmed_ && !IsExact())) return;
        EXPECT_EQ(held["gl context"], 1U) << history_;
        EXPECT_EQ(held["dc"], living) << history_;
        EXPECT_TRUE(held["gl texture"] >= kTiles || (kinds_ & kWorkers) != 0) << history_;
        EXPECT_TRUE(!IsExact() || held["gl list"] == listsOfOne_) << history_;
    }

    /// Every set of tiles was whole and right, and nothing is left.
    void JudgeEnd() {
        std::size_t tile = 0;
        for (const SpiedUpload& upload : SpiedGl().uploads) {
            if (upload.width != right_[0].width || !unharmed_) continue;  // a photo or a button
            EXPECT_EQ(upload.pixels, right_[tile++ % kTiles].pixels) << history_;
        }
        DestroyAll();
        Init();  // takes over what a FreeMap that gave up waiting has left
        EXPECT_NE(library.FreeMap(), 0U) << history_;
        for (const CityRecord& city : cities)
            EXPECT_EQ(city.timeZone, nullptr) << "the library's own is left in the host's record";
        EXPECT_EQ(watched->ledger.HeldObjects(), ImportLedger::Counts{}) << history_;
        if (!IsExact() || dice.OneIn(4)) Reload(true);
    }

    /// A window in a library just initialised: nothing that went before is to be seen. Its tiles
    /// stay in memory.
    void LiveOnce() {
        unharmed_ = true;
        PutFiles(kMapWidth);
        cities = sane;
        SpiedGl().uploads.clear();
        ASSERT_EQ(Init(), HORIVO_OK) << history_;
        for (Slot& slot : slots_) {
            if (&slot != slots_ && !slot.alone.pixels.empty()) continue;
            MakeWindow(slot);
            Rest();
            SendMessageW(slot.window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(cities.data()));
            Paint(slot.window);
            EXPECT_NE(cities[0].timeZone, nullptr) << "its label tells the time" << history_;
            const SpiedFrame frame = StartView(slot);
            if (slot.alone.pixels.empty()) slot.alone = frame;
            EXPECT_EQ(DifferentPixels(frame, slot.alone), 0) << history_;
            listsOfOne_ = watched->ledger.Held()["gl list"];
            DestroyAll();
        }
        ASSERT_GE(SpiedGl().uploads.size(), kTiles) << "nothing loads any more after" << history_;
        if (right_.empty()) right_.assign(SpiedGl().uploads.begin(), SpiedGl().uploads.begin() + 8);
    }

    std::atomic<int> quietSeconds_ = 0;
    // A deadlock must not pass for patience.
    std::jthread dog_{[this](const std::stop_token& over) {
        for (; !over.stop_requested(); Sleep(1000)) {
            if (++quietSeconds_ < 120) continue;
            std::printf("DEADLOCK after%s\n", history_.c_str());
            std::abort();
        }
    }};
    std::vector<CityRecord> other_;  ///< the table handed over before `cities`
    Slot slots_[3] = {{200, 150}, {110, 180}, {160, 90}};
    std::vector<SpiedUpload> right_;  ///< a whole set of tiles
    std::size_t listsOfOne_ = 0;      ///< held for the sake of one window
    unsigned kinds_ = 0;
    bool resting_ = true;
    bool unharmed_ = true;  ///< no call has failed in this round
    std::string history_;   ///< of the actions since the last rest
};

TEST_F(RandomTest, Anything) { Run(kAnything); }
TEST_F(RandomTest, Races) { Run(kWindows | kWorkers | kUnloads); }
TEST_F(RandomTest, Windows) { Run(kWindows); }
TEST_F(RandomTest, RefusedWindows) { Run(kWindows | kFailures); }
TEST_F(RandomTest, Messages) { Run(kWindows | kMessages); }
TEST_F(RandomTest, Failures) { Run(kWindows | kMessages | kFailures); }

}  // namespace
