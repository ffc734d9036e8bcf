// Every call by which the library asks Windows for something fails once: nothing crashes, hangs or
// stays behind, each function answers as promised, and the next life is a whole one.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

#include "long_run.h"
#include "support/gl_spy_win.h"
#include "support/import_table_win.h"
#include "support/resource_count_win.h"
#include "support/worker_watch_win.h"

namespace {

using testing::AnyOf;

constexpr int kMapWidth = 64;
constexpr int kMaxCalls = 20000;
constexpr LPARAM kMiddle = MAKELPARAM(32, 24);
constexpr LPARAM kBelow = MAKELPARAM(32, 28);
constexpr LPARAM kCorner = MAKELPARAM(54, 38);

/// What the window is sent in a life; WM_PAINT stands for a picture, WM_USER for the workers' end,
/// HORIVO_MSG_CITY has the first city.
constexpr struct {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
} kMessages[] = {{WM_USER, 0, 0},
                 {WM_PAINT, 0, 0},
                 {WM_MOUSEMOVE, 0, kMiddle},
                 {HORIVO_MSG_CITY, 0, 0},
                 {WM_PAINT, 0, 0},
                 {HORIVO_MSG_PHOTOS_CHANGED, 0, 2},
                 {WM_KEYDOWN, VK_NEXT, 1},
                 {WM_KEYDOWN, VK_PRIOR, 1},
                 {WM_MOUSEWHEEL, WHEEL_DELTA << 16, 0},
                 {WM_TIMER, 1, 0},
                 {WM_TIMER, 2, 0},
                 {WM_TIMER, 3, 0},
                 {WM_TIMER, 4, 0},
                 {WM_MOUSEMOVE, 0, kCorner},
                 {WM_KEYDOWN, 'I', 1},
                 {WM_PAINT, 0, 0},
                 {WM_KEYDOWN, 'I', 1},
                 {WM_LBUTTONDOWN, MK_LBUTTON, kBelow},
                 {WM_LBUTTONUP, 0, kBelow},
                 {WM_KEYDOWN, 'L', 1},
                 {WM_KEYDOWN, 'H', 1},
                 {WM_USER, 0, 0},
                 {WM_SIZE, 0, MAKELPARAM(72, 54)},
                 {WM_PAINT, 0, 0}};

class FailuresTest : public LongRunTest {
protected:
    /// Calls the map, or waits for its workers. A failure that has begun ends with it.
    void Do(const std::function<void()>& call) {
        call();
        if (failing_->Failed() != nullptr) failing_->Stop();
    }
    void Rest() { ASSERT_TRUE(Settle(workers_)) << "a worker hangs"; }
    void Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_USER) return Rest();
        if (message == WM_PAINT) return Paint(window);
        if (message == HORIVO_MSG_CITY) lParam = reinterpret_cast<LPARAM>(sane.data());
        SendMessageW(window, message, wParam, lParam);
    }
    /// Start, load, split, attach, draw, photos, reload, install, a second window, destroy, free.
    /// @param why  the failure that went before: all has to succeed now; empty: one happens now
    void Live(const std::string& why) {
        PutFiles(kMapWidth);
        HWND window = nullptr;
        HWND second = nullptr;
        std::uint32_t init = HORIVO_OK;
        std::uint32_t install = HORIVO_OK;
        Do([&] { init = Init(); });
        Do([&] { library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, L"Add a photo"); });
        Do([&] { window = Make(kMapWidth, 48); });
        for (const auto& row : kMessages)
            Do([&] { Send(window, row.message, row.wParam, row.lParam); });
        Do([&] { install = library.InstallMap(); });
        Do([&] { second = Make(kMapWidth, 48); });
        Do([&] { Paint(second); });
        EXPECT_TRUE(!why.empty() || AnyCode(init, install)) << init << ", " << install;
        EXPECT_TRUE(why.empty() || (init == HORIVO_OK && install == HORIVO_OK)) << why;
        EXPECT_TRUE(why.empty() || (window != nullptr && second != nullptr)) << why;
        Do([&] { DestroyWindow(second); });
        Do([&] { DestroyWindow(window); });
        Do([&] { library.FreeMap(); });
        Do([&] { Rest(); });
    }
    static bool AnyCode(std::uint32_t init, std::uint32_t install) {
        return (init == HORIVO_OK || init == HORIVO_CLASS_FAILED) &&
               testing::Value(
                   install, AnyOf(HORIVO_OK, HORIVO_COPY_FAILED, HORIVO_BAD_PICTURE,
                                  HORIVO_UNFIT_PICTURE, HORIVO_CLASS_FAILED, HORIVO_NO_PIXEL_FORMAT,
                                  HORIVO_PIXEL_FORMAT_REFUSED, HORIVO_CONTEXT_FAILED));
    }
    /// A life with a failure, then a whole one. @return the function that failed; null when none
    const char* LiveWithFailure(int number, int count) {
        boxes_ = 0;
        failing_->FailFrom(number, count);
        Live("");
        const char* failed = failing_->Failed();
        failing_->FailFrom(0, 0);
        if (failed == nullptr) return nullptr;
        const std::string why = std::string(failed) + ", call " + std::to_string(number);
        EXPECT_LE(boxes_, 4) << why;
        SpiedGl().uploads.clear();
        const int frames = SpiedGl().frames;
        Live(why);
        const auto tiles =
            std::count_if(SpiedGl().uploads.begin(), SpiedGl().uploads.end(),
                          [](const SpiedUpload& upload) { return upload.width == kMapWidth / 4; });
        EXPECT_EQ(tiles % 8, 0) << why;
        EXPECT_GE(tiles, 16) << why << ": a bare globe";
        EXPECT_GE(SpiedGl().frames, frames + 5) << why;
        return failed;
    }
    /// Lets call after call of the families fail, with `count` - 1 more unless the map returns
    /// before, until a life runs through without. A short run takes some of the calls, others each
    /// time.
    void FailEach(unsigned families, int count = 1) {
        failing_.emplace(library.module, families);
        // What is kept for the life of the process is there after a failure and a whole life.
        LiveWithFailure(5, count);
        const int step = std::max(1, failing_->Calls() / LengthOfRun(failing_->Calls(), 20));
        const auto held = ledger_.Held();
        const ResourceCount process = CountResources();
        int rounds = 0;
        int number = 1 + static_cast<int>(SeedOfRun() % static_cast<unsigned>(step));
        for (; number < kMaxCalls && !HasFailure(); number += step, ++rounds) {
            const char* failed = LiveWithFailure(number, count);
            if (failed == nullptr) break;
            EXPECT_EQ(ledger_.Held(), held) << failed << ", call " << number;
        }
        EXPECT_LT(number, kMaxCalls) << "the scenario never ran through";
        const ResourceCount now = CountResources();
        EXPECT_LE(now.kernelHandles, process.kernelHandles + 4);
        EXPECT_LE(now.gdiObjects, process.gdiObjects + 2);
        std::printf("%d failures within %d calls\n", rounds, number - 1);
    }

private:
    int boxes_ = 0;
    ImportLedger ledger_{library.module};
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> box_{library.module,
                                                           [this](HWND, LPCWSTR, LPCWSTR, UINT) {
                                                               ++boxes_;
                                                               return IDOK;
                                                           }};
    FakedImport<"ShellExecuteW", decltype(ShellExecuteW)> browser_{
        library.module, [](auto...) { return HINSTANCE{}; }};
    WorkerWatch workers_{library.module};
    std::optional<FailingImports> failing_;
};

TEST_F(FailuresTest, Gdiplus) { FailEach(kGdiplusCalls); }
TEST_F(FailuresTest, Wgl) { FailEach(kWglCalls); }
TEST_F(FailuresTest, Gl) { FailEach(kGlCalls); }
TEST_F(FailuresTest, ThreadsAndLocks) { FailEach(kThreadCalls); }
TEST_F(FailuresTest, Files) { FailEach(kFileCalls); }
TEST_F(FailuresTest, Windows) { FailEach(kWindowCalls); }
TEST_F(FailuresTest, Texts) { FailEach(kTextCalls); }
TEST_F(FailuresTest, Memory) { FailEach(kMemoryCalls); }
TEST_F(FailuresTest, AllMemory) { FailEach(kMemoryCalls, kAllThatFollow); }

TEST_F(FailuresTest, EveryImportThatMakesSomethingStandsInTheTable) {
    EXPECT_THAT(MakersNotInTable(library.module), testing::IsEmpty());
}

}  // namespace
