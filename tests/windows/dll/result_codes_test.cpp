// What the exports answer when things go wrong or come in the wrong order.
#include <gmock/gmock.h>
// shlobj.h needs windows.h before it, which gmock.h brings.
#include <shlobj.h>

#include <fstream>
#include <thread>

#include "support/import_table_win.h"
#include "support/jpeg_bytes.h"
#include "support/map_play_win.h"

namespace {

DWORD reason = 4321;  // a system error that nobody else reports; another for each refusal

/// A function of Windows that fails as Windows does, for as long as this lives.
template <FunctionName Name, class Function>
class Failing;
template <FunctionName Name, class Result, class... Arguments>
struct Failing<Name, Result(Arguments...)> : FakedImport<Name, Result(Arguments...), DWORD> {
    explicit Failing(HMODULE module)
        : FakedImport<Name, Result(Arguments...), DWORD>(module, [](Arguments...) {
              SetLastError(reason);
              return Result{};
          }) {}
};

class ResultCodesTest : public MapPlay {
protected:
    /// Creates a window, or tests a picture, while one function of Windows fails.
    template <FunctionName Name, class Function>
    void ExpectRefusal(Function*, std::uint32_t code, std::uint32_t installCode = 0) {
        const ImportLedger ledger(library.module);
        const Failing<Name, Function> failing(library.module);
        ++reason;
        EXPECT_EQ(CreateMap(), nullptr) << Name.View();
        EXPECT_EQ(status, code) << Name.View();
        EXPECT_EQ(library.GetLastSysError(), reason) << Name.View();
        EXPECT_EQ(wglGetCurrentContext(), nullptr) << Name.View();
        ++reason;
        EXPECT_EQ(library.InstallMap(), installCode != 0 ? installCode : code) << Name.View();
        EXPECT_EQ(library.GetLastSysError(), reason) << Name.View();
        EXPECT_EQ(ledger.HeldObjects(), ImportLedger::Counts{}) << Name.View();
    }
};

TEST_F(ResultCodesTest, RefusedWindowsSayWhyAndLeaveNothingBehind) {
    Init();
    library.InstallMap();  // makes what is made once
    ExpectRefusal<"ChoosePixelFormat">(ChoosePixelFormat, HORIVO_NO_PIXEL_FORMAT);
    ExpectRefusal<"SetPixelFormat">(SetPixelFormat, HORIVO_PIXEL_FORMAT_REFUSED);
    ExpectRefusal<"wglMakeCurrent">(wglMakeCurrent, HORIVO_CONTEXT_FAILED);
    ExpectRefusal<"wglCreateContext">(wglCreateContext, HORIVO_CONTEXT_FAILED);
    ExpectRefusal<"CreateWindowExW">(CreateWindowExW, HORIVO_OK, HORIVO_CLASS_FAILED);
    EXPECT_EQ(library.CreateMapWindow(nullptr, 0, 0, 100, 100, &status), nullptr)
        << "a child needs a parent";
    const DWORD answer = library.GetLastSysError();
    EXPECT_TRUE(answer != 0 && answer != reason) << answer;
    Play("install; create a; lives; settle; boxes 0");
    EXPECT_EQ(library.GetLastSysError(), answer) << "success does not wipe the last error";
    const FailingImports text(library.module, kTextCalls);
    Play("create b; lives; close all", "what is asked about languages and fonts fails later");
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
    Play("create a; lives; close; free");
    expectRefusals("after FreeMap", HORIVO_CLASS_FAILED);
    EXPECT_EQ(Init(), HORIVO_OK) << "a library that was freed starts again";
    Play("create a; lives");
}

TEST_F(ResultCodesTest, SecondInitReplacesTheCitiesAndReportsTheClass) {
    {
        const Failing<"RegisterClassExW", decltype(RegisterClassExW)> failing(library.module);
        EXPECT_EQ(Init(), HORIVO_CLASS_FAILED);
        EXPECT_EQ(library.GetLastSysError(), reason);
        library.FreeMap();
    }
    AddCity(L"", L"", 10.0, 10.0);
    AddCity(L"", L"", 10.0, 10.0);
    const FakedImport<"CreateMutexW", decltype(CreateMutexW)> mutexes(library.module);
    EXPECT_EQ(library.InitMap(&cities[0], 1), HORIVO_OK);
    EXPECT_EQ(library.InitMap(&cities[1], 1), HORIVO_CLASS_FAILED);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_CLASS_ALREADY_EXISTS});
    EXPECT_EQ(mutexes.Calls(), 1) << "a second lock would leak the first";
    Play("create a; lives");
    EXPECT_EQ(cities[0].markerPoint[3], 0.0) << "no longer the library's";
    EXPECT_EQ(cities[1].markerPoint[3], 1.0);
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
    EXPECT_EQ(Init(), HORIVO_OK);
    memory.FailFrom(1, kAllThatFollow);
    expectRefusal();
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, std::wstring(100, L'x').c_str());
    EXPECT_EQ(CreateMap(), nullptr);
    EXPECT_EQ(status, HORIVO_OK);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
    EXPECT_EQ(library.InstallMap(), HORIVO_BAD_PICTURE);
    memory.Stop();
    Play("create a; lives");
}

TEST_F(ResultCodesTest, WithoutALockNothingLoadsAndNothingFails) {
    const Failing<"CreateMutexW", decltype(CreateMutexW)> none(library.module);
    EXPECT_EQ(Init(), HORIVO_OK);
    Play("create a; install; tiles 1; lives; started 0; close; free",
         "the self-test needs no lock; the class is unregistered");
}

TEST_F(ResultCodesTest, WithoutADataFolderTheWindowStillLives) {
    const FakedImport<"SHGetFolderPathW", decltype(SHGetFolderPathW)> none(
        library.module, [](auto...) { return E_FAIL; });
    EXPECT_EQ(Init(), HORIVO_OK);
    EXPECT_EQ(library.InstallMap(), HORIVO_COPY_FAILED);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_PATH_NOT_FOUND});
    Play("create a; lives; when box close; settle; when box; gone; free",
         "a host may do away with the window while the user still reads");
}

TEST_F(ResultCodesTest, MapThatCannotBeLoadedShowsOneBoxAndABareGlobe) {
    Init();
    SpiedGl().keepFrame = true;
    for (const std::string& picture : {std::string(), JpegHeaderBytes(64, 32, 3)}) {
        std::filesystem::remove(MapPath());
        if (!picture.empty()) std::ofstream(MapPath(), std::ios::binary) << picture;
        Play("create a; when box stage 0 0; settle; boxes 1; tiles 0; lives",
             "further loads that fail while the user still reads must not pile up boxes");
        const unsigned char* middle = SpiedGl().frame.At(80, 60);
        EXPECT_GT(middle[0] + middle[1] + middle[2], 0) << picture << ": no globe to be seen";
        Play("key h; settle; boxes 1; close", "asked again, told again");
    }
}

}  // namespace
