// Map windows come and go: nothing of them may stay behind, whatever their size.
#include <gmock/gmock.h>
// shlobj.h needs windows.h before it, which gmock.h brings.
#include <shlobj.h>

#include "support/import_table_win.h"
#include "support/map_play_win.h"
#include "support/resource_count_win.h"

namespace {

class LifecycleTest : public MapPlay {};

TEST_F(LifecycleTest, WindowsAndLibrariesLeaveNothingBehind) {
    constexpr std::size_t kLives = 10;
    // Two windows of one library; the one ends in a flight, the other resting on a city.
    const std::string life =
        "cities; create a; settle; click 100,70; runs flight; close; create b; settle; move Here;"
        "runs hover; close; free; no timers";
    AddCity(L"First", L"", 40.0, 100.0);
    AddCity(L"Here", L"", 40.0, 0.001);
    for (int i = 0; i < 4; ++i) Play(life);
    const ResourceCount before = CountResources();
    const ImportLedger ledger(library.module);
    for (std::size_t i = 0; i < kLives; ++i) Play(life);
    EXPECT_EQ(ledger.HeldObjects(), ImportLedger::Counts{});
    EXPECT_EQ(ledger.Made().at("gl context"), 2 * kLives);
    const ResourceCount after = CountResources();
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
    EXPECT_EQ(after.kernelHandles, before.kernelHandles);
    // Bytes. Wine and Mesa themselves keep some kilobytes of every window with a context.
    EXPECT_LT(after.privateBytes, before.privateBytes + (2U << 20));
}

TEST_F(LifecycleTest, AWindowIsMadeAsTheHostAsksForIt) {
    Init();
    const HWND map = library.CreateMapWindow(host, 30, 70, 160, 120, nullptr);
    RECT place = {};
    GetWindowRect(map, &place);
    MapWindowPoints(nullptr, host, reinterpret_cast<POINT*>(&place), 2);
    const RECT wanted = {30, 70, 30 + 160, 70 + 120};
    EXPECT_TRUE(EqualRect(&place, &wanted)) << place.left << ' ' << place.top;
    wchar_t title[32] = {};
    GetWindowTextW(map, title, 32);
    EXPECT_STREQ(title, L"GL Map");
    EXPECT_EQ(GetWindowLongPtrW(map, GWL_STYLE),
              WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP);
    EXPECT_EQ(SendMessageW(map, WM_ERASEBKGND, 0, 0), 1) << "erasing would flicker";
}

TEST_F(LifecycleTest, TheDataFolderMayHaveAnyName) {
    const std::filesystem::path root =
        std::filesystem::temp_directory_path() / L"\x0416-\x00E9-\x5730";
    std::filesystem::create_directories(root / L"Zelmo" / L"Horivo");
    std::filesystem::rename(MapPath(), root / L"Zelmo" / L"Horivo" / L"map.jpg");
    const FakedImport<"SHGetFolderPathW", decltype(SHGetFolderPathW)> folder(
        library.module, [&](HWND, int, HANDLE, DWORD, wchar_t* path) {
            std::wcscpy(path, root.c_str());
            return S_OK;
        });
    Play("cities; create a; settle; tiles 1");
    std::filesystem::remove_all(root);
}

TEST_F(LifecycleTest, WindowsOfAnySizeLiveAndChangeIt) {
    Play("cities");
    SpiedGl().keepFrame = true;
    for (const std::string size : {"0 0", "0 50", "50 0", "1 500", "1500 1", "8192 4096"}) {
        const bool shows = size.find("0 ") > 1 && !size.ends_with(" 0");
        Play("create a " + size + (shows ? "; lives" : "; paint") + "; size 160 120; lives");
        EXPECT_EQ(SpiedGl().frame.width, 160);
        EXPECT_EQ(SpiedGl().frame.height, 120);
        Play("size " + size + (shows ? "; lives; close" : "; paint; no repaint; close"));
    }
}

}  // namespace
