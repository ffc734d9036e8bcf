// What the exports answer when things go wrong or come in the wrong order.
#include <gmock/gmock.h>
#include <shlobj.h>

#include <fstream>
#include <thread>

#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/import_table_win.h"
#include "support/jpeg_bytes.h"
#include "support/map_host_win.h"

namespace {

DWORD reason = 4321;  // a system error that nobody else reports; another for each refusal

/// A function of Windows that fails as Windows does, for as long as this lives.
template <FunctionName Name, class Function>
class Failing;
template <FunctionName Name, class Result, class... Arguments>
struct Failing<Name, Result(Arguments...)> : FakedImport<Name, Result(Arguments...)> {
    explicit Failing(HMODULE module)
        : FakedImport<Name, Result(Arguments...)>(module, [](Arguments...) {
              SetLastError(reason);
              return Result{};
          }) {}
};

class ResultCodesTest : public MapHostTest {
protected:
    ResultCodesTest() {
        SpiedGl().keepCalls = false;
        PutPatternMap(64, 32);
    }

    /// Creates a window while one function of Windows fails.
    template <FunctionName Name, class Function>
    void ExpectRefusal(Function*, std::uint32_t code) {
        ++reason;
        const ImportLedger ledger(library.module);
        const Failing<Name, Function> failing(library.module);
        EXPECT_EQ(CreateMap(), nullptr) << Name.View();
        EXPECT_EQ(status, code) << Name.View();
        EXPECT_EQ(library.GetLastSysError(), reason) << Name.View();
        EXPECT_EQ(wglGetCurrentContext(), nullptr) << Name.View();
        EXPECT_EQ(ledger.HeldObjects(), ImportLedger::Counts{}) << Name.View();
    }
    void ExpectWindowLives(HWND window) {
        ASSERT_TRUE(IsWindow(window));
        const int before = SpiedGl().frames;
        Paint(window);
        EXPECT_EQ(SpiedGl().frames, before + 1);
    }

    int boxes = 0;
    std::function<void()> whileBoxIsOpen = [] {};

private:
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> fakeBox_{
        library.module, [this](HWND owner, LPCWSTR text, LPCWSTR caption, UINT style) {
            ++boxes;
            EXPECT_EQ(owner, host);
            EXPECT_STREQ(text,
                         L"Can not load textures.\n Check for the \"map.jpg\" presence or make it "
                         L"smaller.");
            EXPECT_STREQ(caption, L"Error");
            EXPECT_EQ(style, UINT{MB_ICONERROR});
            whileBoxIsOpen();
            return IDOK;
        }};
};

TEST_F(ResultCodesTest, RefusedWindowsSayWhyAndLeaveNothingBehind) {
    Init();
    ExpectRefusal<"ChoosePixelFormat">(ChoosePixelFormat, HORIVO_NO_PIXEL_FORMAT);
    ExpectRefusal<"SetPixelFormat">(SetPixelFormat, HORIVO_PIXEL_FORMAT_REFUSED);
    ExpectRefusal<"wglMakeCurrent">(wglMakeCurrent, HORIVO_CONTEXT_FAILED);
    ExpectRefusal<"wglCreateContext">(wglCreateContext, HORIVO_CONTEXT_FAILED);
    EXPECT_EQ(GetWindow(host, GW_CHILD), nullptr);
    EXPECT_EQ(library.CreateMapWindow(nullptr, 0, 0, 100, 100, &status), nullptr)
        << "a child needs a parent";
    EXPECT_EQ(status, HORIVO_OK) << "an old code is not repeated";
    const DWORD answer = library.GetLastSysError();
    EXPECT_TRUE(answer != 0 && answer != reason) << answer;
    ExpectWindowLives(library.CreateMapWindow(host, 0, 0, 200, 100, nullptr));
    EXPECT_EQ(library.GetLastSysError(), answer) << "success does not wipe the last error";
}

TEST_F(ResultCodesTest, CallsBeforeInitAndAfterFreeAreRefused) {
    const auto expectRefusals = [this](const char* when, std::uint32_t installCode) {
        library.SetLocalString(2, std::wstring(100000, L'x').c_str());
        library.SetLocalString(INT32_MIN, nullptr);
        EXPECT_EQ(CreateMap(), nullptr) << when;
        EXPECT_EQ(status, HORIVO_OK) << when;
        // Wine: it says that the class does not exist, Windows that it cannot find it.
        EXPECT_THAT(library.GetLastSysError(), testing::AnyOf(DWORD{ERROR_CANNOT_FIND_WND_CLASS},
                                                              DWORD{ERROR_CLASS_DOES_NOT_EXIST}))
            << when;
        EXPECT_EQ(library.InstallMap(), installCode) << when;
        EXPECT_EQ(library.FreeMap(), 0U) << when;
    };
    EXPECT_EQ(library.GetLastSysError(), 0U);
    expectRefusals("before InitMap", HORIVO_COPY_FAILED);  // no folder is known yet
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(library.InitMap(nullptr, 5), HORIVO_OK) << "a host without cities";
    ExpectWindowLives(CreateMap());
    DestroyWindow(GetWindow(host, GW_CHILD));
    EXPECT_NE(library.FreeMap(), 0U);
    expectRefusals("after FreeMap", HORIVO_CLASS_FAILED);
    EXPECT_EQ(Init(), HORIVO_OK) << "a library that was freed starts again";
    ExpectWindowLives(CreateMap());
}

TEST_F(ResultCodesTest, SecondInitReplacesTheCitiesAndReportsTheClass) {
    CityRecord first = {};
    first.latitude = first.longitude = 10.0;
    CityRecord second = first;
    {
        const Failing<"RegisterClassExW", decltype(RegisterClassExW)> failing(library.module);
        EXPECT_EQ(Init(), HORIVO_CLASS_FAILED);
        EXPECT_EQ(library.GetLastSysError(), reason);
        library.FreeMap();
    }
    const FakedImport<"CreateMutexW", decltype(CreateMutexW)> mutexes(library.module);
    EXPECT_EQ(library.InitMap(&first, 1), HORIVO_OK);
    EXPECT_EQ(library.InitMap(&second, 1), HORIVO_CLASS_FAILED);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_CLASS_ALREADY_EXISTS});
    EXPECT_EQ(mutexes.Calls(), 1) << "a second lock would leak the first";
    ExpectWindowLives(CreateMap());
    EXPECT_EQ(first.markerPoint[3], 0.0) << "no longer the library's";
    EXPECT_EQ(second.markerPoint[3], 1.0);
}

TEST_F(ResultCodesTest, WithoutAnyMemoryCallsAreRefusedOnEveryThreadAndALifeFollows) {
    FailingImports memory(library.module, kMemoryCalls);
    const auto expectRefusal = [this] {
        EXPECT_EQ(Init(), HORIVO_CLASS_FAILED);
        EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
    };
    memory.FailFrom(1, kAllThatFollow);
    expectRefusal();
    std::thread(expectRefusal).join();  // another thread's first exception
    memory.Stop();
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_NOT_ENOUGH_MEMORY}) << "asked too late";
    EXPECT_EQ(Init(), HORIVO_OK);
    memory.FailFrom(1, kAllThatFollow);
    expectRefusal();
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, std::wstring(100, L'x').c_str());
    EXPECT_EQ(CreateMap(), nullptr);
    EXPECT_EQ(status, HORIVO_OK);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
    EXPECT_EQ(library.InstallMap(), HORIVO_BAD_PICTURE);
    memory.Stop();
    ExpectWindowLives(CreateMap());
}

TEST_F(ResultCodesTest, WithoutALockNothingLoadsAndNothingFails) {
    const Failing<"CreateMutexW", decltype(CreateMutexW)> none(library.module);
    const FakedImport<"CreateThread", decltype(CreateThread)> threads(library.module);
    EXPECT_EQ(Init(), HORIVO_OK);
    const HWND window = CreateMap();
    EXPECT_EQ(library.InstallMap(), HORIVO_OK) << "the self-test needs no lock";
    EXPECT_EQ(SpiedGl().uploads.size(), 8U);
    ExpectWindowLives(window);
    EXPECT_EQ(threads.Calls(), 0);
    DestroyWindow(window);
    EXPECT_NE(library.FreeMap(), 0U) << "the class is unregistered";
}

TEST_F(ResultCodesTest, WithoutADataFolderTheWindowStillLives) {
    const FakedImport<"SHGetFolderPathW", decltype(SHGetFolderPathW)> none(
        library.module, [](HWND, int, HANDLE, DWORD, LPWSTR) -> HRESULT { return E_FAIL; });
    EXPECT_EQ(Init(), HORIVO_OK);
    EXPECT_EQ(library.InstallMap(), HORIVO_COPY_FAILED);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_PATH_NOT_FOUND});
    const HWND window = CreateMap();
    ExpectWindowLives(window);
    // A host may do away with the window while the user still reads.
    whileBoxIsOpen = [=] { DestroyWindow(window); };
    ASSERT_TRUE(PumpUntil([this] { return boxes != 0; }));
    PumpPending();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_NE(library.FreeMap(), 0U);
}

TEST_F(ResultCodesTest, MapThatCannotBeLoadedShowsOneBoxAndABareGlobe) {
    Init();
    SpiedGl().keepFrame = true;
    for (const std::string& picture : {std::string(), JpegHeaderBytes(64, 32, 3)}) {
        boxes = 0;
        std::filesystem::remove(MapPath());
        if (!picture.empty()) std::ofstream(MapPath(), std::ios::binary) << picture;
        const HWND window = CreateMap();
        // Further loads that fail while the user still reads must not pile up boxes.
        whileBoxIsOpen = [=] {
            SendMessageW(window, WM_USER + 1, 0, FALSE);
            SendMessageW(window, WM_USER + 1, 1, FALSE);
        };
        ASSERT_TRUE(PumpUntil([this] { return boxes != 0; })) << picture;
        PumpPending();
        EXPECT_EQ(boxes, 1) << picture;
        ExpectWindowLives(window);
        EXPECT_TRUE(SpiedGl().uploads.empty()) << picture;
        const unsigned char* middle = SpiedGl().frame.At(200, 150);
        EXPECT_GT(middle[0] + middle[1] + middle[2], 0) << picture << ": no globe to be seen";
        whileBoxIsOpen = [] {};
        Key(window, 'L');
        EXPECT_TRUE(PumpUntil([this] { return boxes == 2; })) << "asked again, told again";
        DestroyWindow(window);
    }
}

}  // namespace
