// Windows and libraries come and go, in any order and also when things fail: nothing of them may
// stay behind, and the exports answer as promised. The public header comes first: it must compile
// before windows.h.
#include "horivo_map.h"
// The order is tested, too.
#include <gtest/gtest.h>

#include <thread>

#include "support/import_table_win.h"
#include "support/jpeg_bytes.h"
#include "support/map_play_win.h"

namespace {

class LifecycleTest : public MapPlay {
protected:
    /// Creates a window, and tests a picture, while one function of Windows fails.
    template <FunctionName Name, class Result, class... Arguments>
    void ExpectRefusal(Result(WINAPI*)(Arguments...), std::uint32_t code) {
        SCOPED_TRACE(Name.View());
        const ImportLedger ledger(library.module);
        const FakedImport<Name, Result(Arguments...), LifecycleTest> failing(
            library.module, [this](Arguments...) {
                SetLastError(reason);
                return Result{};
            });
        ++reason;
        EXPECT_EQ(CreateMap(), nullptr);
        EXPECT_EQ(status, code);
        EXPECT_EQ(library.GetLastSysError(), reason);
        EXPECT_EQ(wglGetCurrentContext(), nullptr);
        ++reason;
        EXPECT_EQ(library.InstallMap(), code != HORIVO_OK ? code : HORIVO_CLASS_FAILED);
        EXPECT_EQ(library.GetLastSysError(), reason);
        EXPECT_EQ(ledger.HeldObjects(), ImportLedger::Counts{});
    }

    DWORD reason = 4321;  // a system error that nobody else reports; another for each refusal
};

TEST_F(LifecycleTest, WindowsAndLibrariesLeaveNothingBehind) {
    // Two windows of one library; the one ends in a flight, the other resting on a city.
    const std::string life =
        "cities; create a; settle; click 100,70; runs flight; close; create b; settle; move Here;"
        "runs hover; close; free; no timers";
    AddCity(L"First", L"", 40.0, 100.0);
    AddCity(L"Here", L"", 40.0, 0.001);
    Play(life, "makes what is made once");
    const ImportLedger ledger(library.module);
    for (int i = 0; i < 10; ++i) Play(life);
    EXPECT_EQ(ledger.HeldObjects(), ImportLedger::Counts{});
    EXPECT_EQ(ledger.Made().at("gl context"), 20U);
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
    const std::wstring root = (DataFolder() / L"\x0416-\x00E9-\x5730").wstring();
    std::filesystem::create_directories(root + L"\\Zelmo\\Horivo");
    std::filesystem::rename(MapPath(), root + L"\\Zelmo\\Horivo\\map.jpg");
    const FakedImport<"SHGetFolderPathW", decltype(SHGetFolderPathW)> folder(
        library.module, [&](HWND, int, HANDLE, DWORD, wchar_t* path) {
            std::wcscpy(path, root.c_str());
            return S_OK;
        });
    Play("cities; create a; settle; tiles 1");
}

TEST_F(LifecycleTest, WindowsOfAnySizeLiveAndChangeIt) {
    for (const std::string size : {"0 0", "0 50", "50 0", "1 500", "1500 1", "8192 4096"}) {
        const bool shows = !size.starts_with("0 ") && !size.ends_with(" 0");
        const std::string seen = shows ? "; lives" : "; paint; no repaint";
        Play("cities; create a " + size + seen + "; size 160 120; lives");
        Play("size " + size + seen + "; close");
    }
}

TEST_F(LifecycleTest, RefusedWindowsSayWhyAndLeaveNothingBehind) {
    Init();
    library.InstallMap();  // makes what is made once
    ExpectRefusal<"ChoosePixelFormat">(ChoosePixelFormat, HORIVO_NO_PIXEL_FORMAT);
    ExpectRefusal<"SetPixelFormat">(SetPixelFormat, HORIVO_PIXEL_FORMAT_REFUSED);
    ExpectRefusal<"wglMakeCurrent">(wglMakeCurrent, HORIVO_CONTEXT_FAILED);
    ExpectRefusal<"wglCreateContext">(wglCreateContext, HORIVO_CONTEXT_FAILED);
    ExpectRefusal<"CreateWindowExW">(CreateWindowExW, HORIVO_OK);
    EXPECT_EQ(library.CreateMapWindow(nullptr, 0, 0, 100, 100, &status), nullptr)
        << "a child needs a parent";
    EXPECT_NE(library.GetLastSysError(), reason);
    Play("install; create a; lives; settle; boxes 0; error some", "success wipes no error");
    FailingImports text(library.module, kTextCalls);
    text.FailFrom(1, kAllThatFollow);
    Play("create b; lives; close all", "Windows tells nothing about languages, fonts and settings");
}

TEST_F(LifecycleTest, CallsBeforeInitAndAfterFreeAreRefused) {
    library.SetLocalString(2, std::wstring(100000, L'x').c_str());
    library.SetLocalString(INT32_MIN, nullptr);
    Play(
        "error none; refused; error some; free again; install no-copy;"
        "error no-path; no cities; create a; lives; close; free",
        "no folder is known yet; a host without cities");
    Play("refused; install no-class; free again; init none; create a; lives",
         "a library that was freed starts again");
}

TEST_F(LifecycleTest, SecondInitReplacesTheCitiesAndReportsTheClass) {
    AddCity(L"", L"", 10.0, 10.0);
    AddCity(L"", L"", 10.0, 10.0);
    const ImportLedger ledger(library.module);
    EXPECT_EQ(library.InitMap(&cities[0], 1), HORIVO_OK);
    EXPECT_EQ(library.InitMap(&cities[1], 1), HORIVO_CLASS_FAILED);
    EXPECT_EQ(ledger.Made().at("kernel handle"), 1U) << "a second lock would leak the first";
    Play("error 1410; create a; lives", "the class exists already");
    EXPECT_EQ(cities[0].markerPoint[3], 0.0) << "no longer the library's";
    EXPECT_EQ(cities[1].markerPoint[3], 1.0);
}

TEST_F(LifecycleTest, WithoutAnyMemoryCallsAreRefusedOnEveryThreadAndALifeFollows) {
    FailingImports memory(library.module, kMemoryCalls);
    const auto expectRefusal = [&] {
        memory.FailFrom(1, kAllThatFollow);
        Play("init no-class; error no-memory");
    };
    expectRefusal();
    std::thread(expectRefusal).join();  // another thread's first exception
    memory.Stop();
    Play("init none");
    expectRefusal();
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, std::wstring(100, L'x').c_str());
    Play("refused; error no-memory; install bad");
    memory.Stop();
    Play("create a; lives");
}

TEST_F(LifecycleTest, WithoutALockOrADataFolderTheWindowStillLives) {
    {
        const FakedImport<"SHGetFolderPathW", decltype(SHGetFolderPathW)> none(
            library.module, [](auto...) { return E_FAIL; });
        Play(
            "init none; install no-copy; error no-path; create a; lives; when box close; settle;"
            "when box; gone; free; started any",
            "a host may do away with the window while the user still reads");
    }
    const FakedImport<"CreateMutexW", decltype(CreateMutexW)> none(
        library.module, [](auto...) { return HANDLE{}; });
    Play("init none; create a; install; tiles 1; lives; started 0; close; free",
         "nothing loads, but the self-test needs no lock");
}

TEST_F(LifecycleTest, MapThatCannotBeLoadedShowsOneBoxAndABareGlobe) {
    Init();
    std::ofstream(MapPath(), std::ios::binary) << JpegHeaderBytes(64, 32, 3);
    Play("create a; when box stage 0 0; settle; boxes 1; tiles 0; lives; key h; settle; boxes 1",
         "loads that fail while the user still reads pile up no boxes; asked again, told again");
}

}  // namespace
