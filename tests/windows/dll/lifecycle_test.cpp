// Map windows come and go: nothing of them may stay behind, whatever their size.
#include <gmock/gmock.h>

#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/import_table_win.h"
#include "support/map_host_win.h"
// shlobj.h needs windows.h before it.
#include <shlobj.h>

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 120;
// Bytes. Wine and Mesa themselves keep some kilobytes of every window with a context.
constexpr std::size_t kMemoryNoise = 2U << 20;

class LifecycleTest : public MapHostTest {
protected:
    LifecycleTest() {
        PutPatternMap(512, 256);
        PutSettings("lag_factor=8\r\n");
        // The second stands in the middle of the start view: the first never starts a hover.
        cities.resize(2);
        cities[0].latitude = cities[1].latitude = 40.0;
        cities[0].longitude = 100.0;
        cities[1].longitude = 0.001;
        SpiedGl().keepCalls = false;
    }

    /// Two windows of one library; the one ends in a flight, the other resting on a city.
    void Live() {
        Init();
        for (const bool flies : {false, true}) {
            SpiedGl().uploads.clear();
            const HWND window = CreateMap(kWidth, kHeight);
            ASSERT_TRUE(WaitForTiles());
            Paint(window);
            const LPARAM beside = MAKELPARAM(kWidth / 2 + 20, kHeight / 2 + 10);
            if (flies) {
                SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, beside);
                SendMessageW(window, WM_LBUTTONUP, 0, beside);
            } else {
                SendMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(kWidth / 2, kHeight / 2));
            }
            DestroyWindow(window);
        }
        EXPECT_NE(library.FreeMap(), 0U);
        PumpPending();
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

}  // namespace

TEST_F(LifecycleTest, WindowsAndLibrariesLeaveNothingBehind) {
    constexpr int kLives = 10;
    for (int i = 0; i < 4; ++i) Live();
    const ImportLedger ledger(library.module);
    for (int i = 0; i < kLives; ++i) Live();
    EXPECT_EQ(ledger.HeldObjects(), ImportLedger::Counts{});
    EXPECT_EQ(ledger.Made().at("gl context"), 2U * kLives);
    EXPECT_EQ(ledger.Made().at("timer"), 4U * kLives) << "the Sun's, and one more a window";
    EXPECT_LT(ledger.HeldBytes(), kMemoryNoise);
}

TEST_F(LifecycleTest, AWindowIsMadeAsTheHostAsksForIt) {
    Init();
    const HWND window = library.CreateMapWindow(host, 30, 70, kWidth, kHeight, nullptr);
    RECT place = {};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, host, reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(place.left, 30);
    EXPECT_EQ(place.top, 70);
    EXPECT_EQ(place.right, 30 + kWidth);
    EXPECT_EQ(place.bottom, 70 + kHeight);
    wchar_t title[32] = {};
    GetWindowTextW(window, title, 32);
    EXPECT_STREQ(title, L"GL Map");
    EXPECT_EQ(GetWindowLongPtrW(window, GWL_STYLE),
              WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP);
    EXPECT_EQ(SendMessageW(window, WM_ERASEBKGND, 0, 0), 1) << "erasing would flicker";
}

TEST_F(LifecycleTest, TheDataFolderMayHaveAnyName) {
    const std::filesystem::path root =
        std::filesystem::temp_directory_path() / L"\x0416-\x00E9-\x5730";
    std::filesystem::create_directories(root / L"Zelmo" / L"Horivo");
    CopyFileW(MapPath().c_str(), (root / L"Zelmo" / L"Horivo" / L"map.jpg").c_str(), FALSE);
    const FakedImport<"SHGetFolderPathW", decltype(SHGetFolderPathW)> folder(
        library.module, [&](HWND, int, HANDLE, DWORD, wchar_t* path) {
            root.wstring().copy(path, MAX_PATH);
            path[root.wstring().size()] = L'\0';
            return S_OK;
        });
    Init();
    CreateMap(kWidth, kHeight);
    EXPECT_TRUE(WaitForTiles());
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}

TEST_F(LifecycleTest, WindowsOfAnySizeLiveAndChangeIt) {
    Init();
    SpiedGl().keepFrame = true;
    for (const POINT& size : {POINT{0, 0}, {0, 50}, {50, 0}, {1, 500}, {1500, 1}, {8192, 4096}}) {
        SCOPED_TRACE(testing::Message() << size.x << " x " << size.y);
        const HWND window = CreateMap(size.x, size.y);
        EXPECT_EQ(Shows(window, size.x, size.y), size.x > 0 && size.y > 0);
        MoveWindow(window, 0, 0, kWidth, kHeight, FALSE);
        EXPECT_TRUE(Shows(window, kWidth, kHeight));
        MoveWindow(window, 0, 0, size.x, size.y, FALSE);
        EXPECT_EQ(Shows(window, size.x, size.y), size.x > 0 && size.y > 0);
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
        DestroyWindow(window);
    }
}
