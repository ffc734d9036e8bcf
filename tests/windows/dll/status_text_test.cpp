// What the window writes, and the detail that it chooses by its own speed and by the settings.
#include <gmock/gmock.h>

#include <atomic>

#include "image/gdiplus_win.h"
#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// A library whose pictures take as long as the test says.
class StatusTextTest : public MapHostTest {
protected:
    StatusTextTest() {
        SpiedGl().keepCalls = false;
        SpiedGl().keepTexts = true;
        PutPatternMap(64, 32);
        Init();
    }

    /// A window that has its tiles and has measured itself.
    HWND CreateMeasuredMap() {
        SpiedGl().uploads.clear();
        const HWND window = CreateMap();
        EXPECT_TRUE(WaitForTiles());
        PumpPending();
        return window;
    }
    /// The texts of one picture.
    static std::vector<std::string> TextsOf(HWND window) {
        SpiedGl().texts.clear();
        Paint(window);
        return SpiedGl().texts;
    }
    /// The factors in the texts of all pictures since `texts` was emptied, each change once.
    static std::vector<std::string> ShownFactors() {
        std::vector<std::string> factors;
        for (const std::string& text : SpiedGl().texts) {
            if (!text.starts_with("per. factor: ")) continue;
            const std::string factor = text.substr(13, text.find('%') - 13);
            if (factors.empty() || factors.back() != factor) factors.push_back(factor);
        }
        return factors;
    }

    DWORD frameMs = 50;  ///< between two looks at the clock; a picture takes two

private:
    DWORD now_ = 0;
    FakedImport<"GetTickCount", decltype(GetTickCount)> clock_{library.module,
                                                               [this] { return now_ += frameMs; }};
};

TEST_F(StatusTextTest, KeyFShowsHowLongThePaintingTook) {
    const HWND window = CreateMeasuredMap();
    EXPECT_THAT(TextsOf(window), ElementsAre(StartsWith("Lat "))) << "only the readout";
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
    Key(window, 'F');
    const struct {
        DWORD ms;
        const char* text;
    } cases[] = {{40, "25.0 FPS"}, {300, "3.3 FPS"}, {1, "1000.0 FPS"}, {0, "FPS N/A"}};
    for (const auto& c : cases) {
        frameMs = c.ms;
        Paint(window);  // the picture that is measured
        EXPECT_THAT(TextsOf(window), Contains(c.text));
        EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE)) << "the rate is followed";
    }
    Key(window, 'F');
    EXPECT_THAT(TextsOf(window), ElementsAre(StartsWith("Lat ")));
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

TEST_F(StatusTextTest, LoadingAndSplittingAreShownInRedWhileTheyRun) {
    using Open = FakedImport<"GdipCreateBitmapFromFile",
                             decltype(Gdiplus::DllExports::GdipCreateBitmapFromFile)>;
    using Allocate = FakedImport<"malloc", void*(std::size_t)>;
    const FakedImport<"CreateThread", decltype(CreateThread)> threads(library.module);
    std::atomic<int> reached = 0;  // 1 for the load, 2 for the split
    std::atomic<int> passed = 0;
    const auto wait = [&](int stage) {
        reached = stage;
        while (passed < stage) Sleep(1);
    };
    const Open slow(library.module, [&](const WCHAR* path, Gdiplus::GpBitmap** bitmap) {
        if (std::filesystem::path(path) == MapPath()) wait(1);
        return Open::Real(path, bitmap);
    });
    const DWORD windowThread = GetCurrentThreadId();
    const Allocate slower(library.module, [&](std::size_t bytes) {
        if (threads.Calls() == 2 && GetCurrentThreadId() != windowThread) wait(2);
        return Allocate::Real(bytes);
    });
    SpiedGl().uploads.clear();
    const HWND window = CreateMap();
    for (const char* line : {"Loading texture...", "Rescaling and splitting textures..."}) {
        EXPECT_TRUE(PumpUntil([&] { return reached == passed + 1; }));
        SpiedGl().keepCalls = true;
        SpiedGl().calls.clear();
        EXPECT_THAT(TextsOf(window), ElementsAre(StartsWith("Lat "), line));
        EXPECT_THAT(SpiedCalls("glColor3d"), ElementsAre("glColor3d 1 1 1", "glColor3d 1 0 0"));
        SpiedGl().keepCalls = false;
        ++passed;
    }
    EXPECT_TRUE(WaitForTiles());
    PumpPending();
    EXPECT_THAT(TextsOf(window), ElementsAre(StartsWith("Lat ")));
}

TEST_F(StatusTextTest, SlowPicturesLowerTheDetailStepByStep) {
    const struct {
        DWORD ms;
        int loads;
        std::vector<std::string> factors;
    } cases[] = {
        {100, 1, {"100"}},  // exactly 10 a second are enough
        {150, 4, {"100", "200", "400", "800"}},
    };
    for (const auto& c : cases) {
        frameMs = c.ms;
        library.FreeMap();  // the picture is loaded anew
        Init();
        SpiedGl().uploads.clear();
        SpiedGl().texts.clear();
        const HWND window = CreateMap();
        Key(window, 'I');
        ASSERT_TRUE(WaitForTiles(static_cast<std::size_t>(c.loads) * 8)) << "each step loads anew";
        PumpPending();
        EXPECT_EQ(ShownFactors(), c.factors);
        EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE)) << "nothing is measured any more";
        // One picture to warm up, three that count.
        for (const char* step : {", test 0/3", ", test 1/3", ", test 2/3"})
            EXPECT_THAT(SpiedGl().texts, Contains(HasSubstr(step)));
        EXPECT_THAT(TextsOf(window), testing::Not(Contains(HasSubstr(", test "))));
        Key(window, 'I');
        DestroyWindow(window);
    }
}

TEST_F(StatusTextTest, SettingsReachTheWindow) {
    const struct {
        const char* settings;
        const char* line;
        GLint textureSize = 128;  ///< what GL answers
    } cases[] = {
        {"lag_factor=2\r\n", "per. factor: 200%, atmo layers: 5, slices: 180, stacks 90,"},
        {"texScalerX=0\r\n", "per. factor: 200%,"},  // a missing key keeps what is held
        {"lag_factor=99\r\ntexScalerX=-9\r\n",
         "per. factor: 800%, atmo layers: 1, slices: 36, stacks 30, "
         "texture size 16x32(max 512x256)"},
        {"texScalerX=9\r\ntexScalerY=-9\r\n", "texture size 64x16(max 512x256)"},
        {"lag_factor=-9\r\n", "per. factor: 50%, atmo layers: 20, slices: 180, stacks 120,"},
        {"", "(max 512x256)", -1},  // GL does not answer: the size from before holds
    };
    for (const auto& c : cases) {
        SpiedGl().maxTextureSize = c.textureSize;
        PutSettings(c.settings);
        library.FreeMap();  // the picture is loaded anew
        Init();
        const HWND window = CreateMeasuredMap();
        Key(window, 'I');
        EXPECT_THAT(TextsOf(window), Contains(HasSubstr(c.line))) << c.settings;
        Key(window, 'I');
        DestroyWindow(window);
    }
}

/// Windows hands out timers only when nothing needs painting.
TEST_F(StatusTextTest, FlightGoesOnWhileTheFrameRateShows) {
    const HWND window = CreateMeasuredMap();
    Key(window, 'F');
    const LPARAM offCentre = MAKELPARAM(250, 150);  // of 400 x 300, on the globe
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, offCentre);
    SendMessageW(window, WM_LBUTTONUP, 0, offCentre);
    const FakedImport<"KillTimer", decltype(KillTimer)> landed(library.module);
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (landed.Calls() == 0 && std::chrono::steady_clock::now() < end) {
        MSG message;
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    EXPECT_EQ(landed.Calls(), 1) << "the flight never ended";
    Key(window, 'F');
}

}  // namespace
