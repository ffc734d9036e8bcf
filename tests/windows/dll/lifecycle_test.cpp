// Map windows come and go: nothing of them may stay behind, whatever their size and however far
// their creation came.
#include <gmock/gmock.h>

#include "image/gdiplus_win.h"
#include "support/call_ledger_win.h"
#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"
#include "support/resource_count_win.h"

namespace {

// Bytes. Wine and Mesa themselves keep some kilobytes of every window with a context.
constexpr std::size_t kMemoryNoise = 2U << 20;

CityRecord MakeCity(double latitude, double longitude) {
    CityRecord city = {};
    city.cityName[0] = L'C';
    city.countryName[0] = L'L';
    city.latitude = latitude;
    city.longitude = longitude;
    return city;
}

class LifecycleTest : public MapHostTest {
protected:
    static constexpr int kWidth = 160;
    static constexpr int kHeight = 120;

    LifecycleTest() {
        PutPatternMap(512, 256);
        PutSettings("lag_factor=8\r\n");
        // The second stands in the middle of the start view: the first never starts a hover.
        cities = {MakeCity(-50.0, 100.0), MakeCity(40.0, 0.001)};
        Init();
        SpiedGl().keepCalls = false;
    }

    static void Mouse(HWND window, UINT message, WPARAM keys, int x, int y) {
        SendMessageW(window, message, keys, MAKELPARAM(x, y));
    }
    /// Leaves the pointer resting on a city: the hover timer runs.
    static void Rest(HWND window) { Mouse(window, WM_MOUSEMOVE, 0, kWidth / 2, kHeight / 2); }
    /// Clicks beside the middle: the flight timer runs.
    static void Fly(HWND window) {
        Mouse(window, WM_LBUTTONDOWN, MK_LBUTTON, kWidth / 2 + 20, kHeight / 2 + 10);
        Mouse(window, WM_LBUTTONUP, 0, kWidth / 2 + 20, kHeight / 2 + 10);
    }

    /// A whole life of a window, which ends with a timer running.
    void LiveOnce(bool flying) {
        const std::size_t before = SpiedGl().uploads.size();
        const HWND window = CreateMap(kWidth, kHeight);
        ASSERT_NE(window, nullptr);
        ASSERT_TRUE(WaitForTiles(before + 8));
        Paint(window);
        flying ? Fly(window) : Rest(window);
        DestroyWindow(window);
    }
    static void ExpectNoMoreThan(const ResourceCount& before) {
        const ResourceCount after = CountResources();
        EXPECT_EQ(after.gdiObjects, before.gdiObjects);
        EXPECT_EQ(after.kernelHandles, before.kernelHandles);
        EXPECT_LT(after.privateBytes, before.privateBytes + kMemoryNoise);
    }
    void LiveTimes(int count) {
        for (int i = 0; i < count; ++i) LiveOnce(i % 2 == 0);
        PumpPending();
    }
};

TEST_F(LifecycleTest, AHundredWindowsLeaveNothingBehind) {
    const CallLedger ledger(library.module);
    LiveTimes(10);
    EXPECT_EQ(ledger.Held(), CallLedger::Counts{});
    EXPECT_GE(ledger.Made().at("timer"), 20U) << "the Sun's, and one more a window";
    const ResourceCount before = CountResources();
    LiveTimes(90);
    ExpectNoMoreThan(before);
    EXPECT_EQ(ledger.Held(), CallLedger::Counts{});
    EXPECT_EQ(ledger.Made().at("gl context"), 100U);
}

TEST_F(LifecycleTest, InitAndFreeLeaveNothingBehind) {
    const auto liveAndFree = [this](int count) {
        for (int i = 0; i < count; ++i) {
            Init();
            LiveOnce(false);
            EXPECT_NE(library.FreeMap(), 0U);
            PumpPending();
        }
    };
    liveAndFree(4);
    const ResourceCount before = CountResources();
    const FakedImport<"GdiplusStartup", decltype(Gdiplus::GdiplusStartup)> starts(library.module);
    const FakedImport<"GdiplusShutdown", decltype(Gdiplus::GdiplusShutdown)> ends(library.module);
    liveAndFree(12);
    ExpectNoMoreThan(before);
    EXPECT_EQ(starts.Calls(), 12);
    EXPECT_EQ(ends.Calls(), 12);
}

TEST_F(LifecycleTest, WithoutAFontTheWindowLivesWithoutText) {
    const CallLedger ledger(library.module);
    const FakedImport<"CreateFontIndirectW", decltype(CreateFontIndirectW)> noFont(
        library.module, [](const LOGFONTW*) { return HFONT{}; });
    LiveTimes(2);
    EXPECT_GE(SpiedGl().frames, 2);
    EXPECT_EQ(ledger.Held(), CallLedger::Counts{});
}

// ---- Refused windows --------------------------------------------------------------------------

/// Refuses a window while one function of Windows fails, as Windows does.
struct RefusalTest : LifecycleTest {
    static constexpr DWORD kReason = 4321;  // a system error that nobody else reports

    template <FunctionName Name, class Result, class... Arguments>
    void RefuseAt(Result (*)(Arguments...), std::uint32_t code) {
        const FakedImport<Name, Result(Arguments...)> failing(library.module, [](Arguments...) {
            SetLastError(kReason);
            return Result{};
        });
        EXPECT_EQ(CreateMap(), nullptr) << Name.View();
        EXPECT_EQ(status, code) << Name.View();
        EXPECT_EQ(library.GetLastSysError(), kReason) << Name.View();
        EXPECT_EQ(wglGetCurrentContext(), nullptr) << Name.View();
        EXPECT_EQ(ledger.Held(), CallLedger::Counts{}) << Name.View();
    }
    void RefuseAtEachStep() {
        RefuseAt<"ChoosePixelFormat">(ChoosePixelFormat, HORIVO_NO_PIXEL_FORMAT);
        RefuseAt<"SetPixelFormat">(SetPixelFormat, HORIVO_PIXEL_FORMAT_REFUSED);
        RefuseAt<"wglCreateContext">(wglCreateContext, HORIVO_CONTEXT_FAILED);
        RefuseAt<"wglMakeCurrent">(wglMakeCurrent, HORIVO_CONTEXT_FAILED);
    }
    const CallLedger ledger{library.module};
};

TEST_F(RefusalTest, RefusedWindowsSayWhyAndLeaveNothingBehind) {
    RefuseAtEachStep();
    const ResourceCount before = CountResources();
    for (int i = 0; i < 5; ++i) RefuseAtEachStep();
    EXPECT_EQ(ledger.Made().at("gdi object"), 24U) << "each came as far as its font";
    ExpectNoMoreThan(before);
    EXPECT_EQ(FindWindowExW(host, nullptr, nullptr, nullptr), nullptr);
    LiveOnce(false);
    EXPECT_EQ(status, HORIVO_OK);
    EXPECT_EQ(library.GetLastSysError(), kReason) << "success does not wipe the last error";
}

// ---- Sizes ------------------------------------------------------------------------------------

class SizeTest : public LifecycleTest {
protected:
    SizeTest() { SpiedGl().keepFrame = true; }

    /// Everything a user can do to a window, at and beyond its edges.
    static void Handle(HWND window, int width, int height) {
        for (const POINT& at : {POINT{0, 0}, POINT{width / 2, height / 2}, POINT{width, height}}) {
            Mouse(window, WM_MOUSEMOVE, 0, at.x, at.y);
            Mouse(window, WM_LBUTTONDOWN, MK_LBUTTON, at.x, at.y);
            Mouse(window, WM_MOUSEMOVE, MK_LBUTTON, at.x - 3, at.y + 2);
            Mouse(window, WM_LBUTTONUP, 0, at.x - 3, at.y + 2);
        }
        SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
        for (const int key : {VK_LEFT, VK_UP, VK_ADD, VK_SUBTRACT, VK_HOME, VK_NEXT, VK_PRIOR})
            MapHostTest::Key(window, key);
        for (const WPARAM timer : {1, 2, 3, 4}) SendMessageW(window, WM_TIMER, timer, 0);
    }

    /// Paints until the window is content.
    /// @return whether a picture was shown, which then has the window's size
    static bool Shows(HWND window, int width, int height) {
        const int before = SpiedGl().frames;
        Paint(window);
        UpdateWindow(window);
        EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE)) << "painting never ends";
        if (SpiedGl().frames == before) return false;
        EXPECT_EQ(SpiedGl().frame.width, width);
        EXPECT_EQ(SpiedGl().frame.height, height);
        return true;
    }
};

TEST_F(SizeTest, WindowsOfAnySizeLive) {
    const POINT sizes[] = {{0, 0}, {1, 1}, {0, 50}, {50, 0}, {1, 500}, {1500, 1}, {2, 3}};
    for (const POINT& size : sizes) {
        SCOPED_TRACE(testing::Message() << size.x << " x " << size.y);
        const HWND window = CreateMap(size.x, size.y);
        ASSERT_NE(window, nullptr);
        Handle(window, size.x, size.y);
        EXPECT_EQ(Shows(window, size.x, size.y), size.x > 0 && size.y > 0);
        MoveWindow(window, 0, 0, kWidth, kHeight, FALSE);
        EXPECT_TRUE(Shows(window, kWidth, kHeight));
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
        DestroyWindow(window);
    }
}

TEST_F(SizeTest, TwoHundredSizesLaterTheGlobeIsTheSame) {
    const HWND window = CreateMap(kWidth, kHeight);
    ASSERT_TRUE(WaitForTiles());
    ASSERT_TRUE(Shows(window, kWidth, kHeight));
    const SpiedFrame fresh = SpiedGl().frame;
    for (int i = 0; i < 200; ++i) {
        // From nothing at all to a broad and to a high window.
        const int width = i * 37 % 331;
        const int height = i * 53 % 211;
        MoveWindow(window, 0, 0, width, height, FALSE);
        if (i % 10 != 0) continue;
        EXPECT_EQ(Shows(window, width, height), width > 0 && height > 0) << i;
    }
    MoveWindow(window, 0, 0, kWidth, kHeight, FALSE);
    ASSERT_TRUE(Shows(window, kWidth, kHeight));
    EXPECT_TRUE(SpiedGl().frame.pixels == fresh.pixels);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

}  // namespace
