// Every call by which the library asks Windows for something fails once: nothing crashes, hangs or
// stays behind, each function answers as promised, and the next life is a whole one.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "long_run.h"
#include "support/call_ledger_win.h"
#include "support/driven_map_win.h"
#include "support/failing_imports_win.h"
#include "support/gl_spy_win.h"
#include "support/memory_ledger_win.h"
#include "support/resource_count_win.h"
#include "support/worker_watch_win.h"

namespace {

using testing::AnyOf;

constexpr int kWidth = 64;
constexpr int kHeight = 48;
constexpr int kMapWidth = 64;
constexpr int kMostCalls = 20000;
constexpr std::uint64_t kGdipOutOfMemory = 3;
constexpr std::uint64_t kInvalid = ~0ULL;

// Calls that give something back are not among them: what they would leave is theirs.
constexpr ImportFailure kMemory[] = {
    {"malloc"}, {"calloc"}, {"realloc"}, {"GdipAlloc"}, {"GlobalAlloc"}};
constexpr ImportFailure kGdiplus[] = {{"GdiplusStartup", kGdipOutOfMemory},
                                      {"GdipBitmapGetPixel", kGdipOutOfMemory},
                                      {"GdipBitmapLockBits", kGdipOutOfMemory},
                                      {"GdipBitmapSetPixel", kGdipOutOfMemory},
                                      {"GdipCloneImage", kGdipOutOfMemory},
                                      {"GdipCreateBitmapFromFile", kGdipOutOfMemory},
                                      {"GdipCreateBitmapFromScan0", kGdipOutOfMemory},
                                      {"GdipDrawImageRectI", kGdipOutOfMemory},
                                      {"GdipGetImageEncoders", kGdipOutOfMemory},
                                      {"GdipGetImageEncodersSize", kGdipOutOfMemory},
                                      {"GdipGetImageGraphicsContext", kGdipOutOfMemory},
                                      {"GdipGetImageHeight", kGdipOutOfMemory},
                                      {"GdipGetImagePixelFormat", kGdipOutOfMemory},
                                      {"GdipGetImageWidth", kGdipOutOfMemory},
                                      {"GdipSaveImageToFile", kGdipOutOfMemory},
                                      {"GdipSetCompositingMode", kGdipOutOfMemory},
                                      {"GdipSetInterpolationMode", kGdipOutOfMemory}};
constexpr ImportFailure kWgl[] = {
    {"ChoosePixelFormat"}, {"SetPixelFormat"},       {"wglCreateContext"},
    {"wglMakeCurrent"},    {"wglGetCurrentContext"}, {"wglGetCurrentDC"},
    {"wglGetProcAddress"}, {"wglUseFontBitmapsW"},   {"SwapBuffers"}};
constexpr ImportFailure kGl[] = {
    {"glGetError", GL_OUT_OF_MEMORY}, {"glGetString"}, {"gluNewQuadric"}};
constexpr ImportFailure kThreads[] = {
    {"CreateThread"}, {"DuplicateHandle"}, {"GetModuleHandleExW"},
    {"PostMessageW"}, {"CreateMutexW"},    {"WaitForSingleObject", WAIT_TIMEOUT}};
constexpr ImportFailure kFiles[] = {{"SHGetFolderPathW", 0x8007000E},
                                    {"CreateDirectoryW", 0, ERROR_ACCESS_DENIED},
                                    {"GetFileAttributesW", 0xFFFFFFFF, ERROR_ACCESS_DENIED},
                                    {"CreateFileW", kInvalid, ERROR_SHARING_VIOLATION},
                                    {"ReadFile", 0, ERROR_READ_FAULT},
                                    {"GetFileSizeEx", 0, ERROR_READ_FAULT},
                                    {"SetFilePointerEx", 0, ERROR_SEEK},
                                    {"CopyFileW", 0, ERROR_DISK_FULL},
                                    {"GetModuleFileNameW"},
                                    {"RegOpenKeyExW", ERROR_ACCESS_DENIED},
                                    {"RegQueryValueExW", ERROR_ACCESS_DENIED},
                                    {"EnumDynamicTimeZoneInformation", ERROR_ACCESS_DENIED},
                                    {"GetTimeZoneInformationForYear"}};
constexpr ImportFailure kWindows[] = {{"RegisterClassExW"},
                                      {"CreateWindowExW"},
                                      {"GetDC"},
                                      {"BeginPaint"},
                                      {"GetClientRect"},
                                      {"CreateFontIndirectW"},
                                      {"SelectObject"},
                                      {"GetTextExtentPoint32A"},
                                      {"GetGlyphOutlineW", 0xFFFFFFFF},
                                      {"LoadCursorW"},
                                      {"SetTimer"},
                                      {"GetCursorPos"},
                                      {"MapWindowPoints"},
                                      {"TrackMouseEvent"},
                                      {"MultiByteToWideChar"},
                                      {"WideCharToMultiByte"},
                                      {"ReadProcessMemory"},
                                      {"SystemTimeToTzSpecificLocalTime"},
                                      {"GetTimeFormatW"},
                                      {"GlobalMemoryStatusEx"}};

class FailuresTest : public DrivenMapTest {
protected:
    FailuresTest() {
        AddCity(L"Paris", L"France", 42.0, 3.0, 30);
        for (int i = 1; i < 10; ++i) AddCity(L"Elsewhere", L"France", 40.0 - i, 3.0 + i, 10);
        photos.PutCity(L"France\\Paris", 2);
        consent = 1;
        SpiedGl().keepFrame = false;
    }

    void PutFiles() {
        EmptyDataFolder();
        PutPatternMap(kMapWidth, kMapWidth / 2);
        PutSettings("lag_factor=8\r\n");
    }
    void Settle() { ASSERT_TRUE(MapHostTest::Settle(workers)) << "a worker hangs"; }
    /// A window that was refused says why.
    HWND Make() {
        const HWND made = CreateMap(kWidth, kHeight);
        if (made != nullptr) {
            EXPECT_EQ(status, HORIVO_OK);
        } else if (status == HORIVO_OK) {
            EXPECT_NE(library.GetLastSysError(), 0U);
        } else {
            EXPECT_THAT(status, AnyOf(HORIVO_NO_PIXEL_FORMAT, HORIVO_PIXEL_FORMAT_REFUSED,
                                      HORIVO_CONTEXT_FAILED));
        }
        return made;
    }
    void UseWindow() {
        Settle();
        Paint(window);
        Hover({kWidth / 2, kHeight / 2});
        SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(cities.data()));
        Paint(window);
        for (const WPARAM timer : {1, 2, 3, 4}) Tick(timer);
        Hover({kWidth - 10, kHeight - 10});
        Key(window, 'I');
        Paint(window);
        Key(window, 'I');
        Click({kWidth / 2, kHeight / 2 + 4});
        Key(window, 'L');
        Key(window, 'H');
        Settle();
        MoveWindow(window, 0, 0, kWidth + 8, kHeight + 6, FALSE);
        Paint(window);
    }
    /// Start, load, split, attach, draw, photos, reload, install, a second window, destroy, free.
    void LiveHowever() {
        EXPECT_THAT(Init(), AnyOf(HORIVO_OK, HORIVO_CLASS_FAILED));
        library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, L"Add a photo");
        window = Make();
        if (window != nullptr) UseWindow();
        EXPECT_THAT(library.InstallMap(),
                    AnyOf(HORIVO_OK, HORIVO_COPY_FAILED, HORIVO_BAD_PICTURE, HORIVO_UNFIT_PICTURE,
                          HORIVO_CLASS_FAILED, HORIVO_NO_PIXEL_FORMAT, HORIVO_PIXEL_FORMAT_REFUSED,
                          HORIVO_CONTEXT_FAILED));
        if (const HWND second = Make()) {
            Paint(second);
            DestroyWindow(second);
        }
        if (window != nullptr) DestroyWindow(window);
        window = nullptr;
        library.FreeMap();
        Settle();
    }
    /// What every life has to be in which nothing fails.
    void LiveWell(const std::string& why) {
        PutFiles();
        SpiedGl().uploads.clear();
        const int frames = SpiedGl().frames;
        EXPECT_EQ(Init(), HORIVO_OK) << why;
        window = Make();
        ASSERT_NE(window, nullptr) << why;
        UseWindow();
        const auto tiles =
            std::count_if(SpiedGl().uploads.begin(), SpiedGl().uploads.end(),
                          [](const SpiedUpload& upload) { return upload.width == kMapWidth / 4; });
        EXPECT_EQ(tiles % 8, 0) << why;
        EXPECT_GE(tiles, 16) << why << ": a bare globe";
        EXPECT_GE(SpiedGl().frames, frames + 4) << why;
        EXPECT_EQ(library.InstallMap(), HORIVO_OK) << why;
        DestroyWindow(window);
        window = nullptr;
        EXPECT_NE(library.FreeMap(), 0U) << why;
        Settle();
    }
    /// A life with one failure, then a whole one. @return the function that failed; null when none
    const char* LiveWithFailure(FailingImports& failing, int number) {
        PutFiles();
        boxes = 0;
        failing.FailFrom(number);
        LiveHowever();
        const char* failed = failing.Failed();
        failing.FailFrom(0, 0);
        if (failed == nullptr) return nullptr;
        const std::string why = std::string(failed) + ", call " + std::to_string(number);
        EXPECT_LE(boxes, 4) << why;
        LiveWell(why);
        return failed;
    }
    /// Lets call after call of the functions fail until a life runs through without. A short run
    /// takes some of the calls, others each time.
    void FailEach(std::span<const ImportFailure> functions) {
        FailingImports failing(library.module, functions);
        // What is kept for the life of the process is there after a failure and a whole life.
        failing.FailFrom(5);
        LiveHowever();
        failing.FailFrom(0, 0);
        LiveWell("to begin with");
        const int step = std::max(1, failing.Calls() / LengthOfRun(failing.Calls(), 20));
        const auto calls = calls_.Held();
        auto memory = memory_.Held();
        const ResourceCount process = CountResources();
        int rounds = 0;
        int number = 1 + static_cast<int>(SeedOfRun() % static_cast<unsigned>(step));
        for (; number < kMostCalls && !HasFailure(); number += step, ++rounds) {
            const char* failed = LiveWithFailure(failing, number);
            if (failed == nullptr) break;
            const std::string why = std::string(failed) + ", call " + std::to_string(number);
            EXPECT_EQ(calls_.Held(), calls) << why;
            if (memory_.Held() == memory) continue;
            // The first exception on a way makes what the runtime keeps; a second must add nothing.
            memory = memory_.Held();
            LiveWithFailure(failing, number);
            EXPECT_EQ(memory_.Held(), memory) << why;
        }
        EXPECT_LT(number, kMostCalls) << "the scenario never ran through";
        const ResourceCount now = CountResources();
        EXPECT_LE(now.kernelHandles, process.kernelHandles + 4);
        EXPECT_LE(now.gdiObjects, process.gdiObjects + 2);
        std::printf("%d of %d calls failed, one a life\n", rounds, number - 1);
    }

    int boxes = 0;

private:
    CallLedger calls_{library.module};
    MemoryLedger memory_{library.module};
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> box_{library.module,
                                                           [this](HWND, LPCWSTR, LPCWSTR, UINT) {
                                                               ++boxes;
                                                               return IDOK;
                                                           }};

protected:
    WorkerWatch workers{library.module};
};

TEST_F(FailuresTest, Gdiplus) { FailEach(kGdiplus); }
TEST_F(FailuresTest, Wgl) { FailEach(kWgl); }
TEST_F(FailuresTest, Gl) { FailEach(kGl); }
TEST_F(FailuresTest, ThreadsAndLocks) { FailEach(kThreads); }
TEST_F(FailuresTest, Files) { FailEach(kFiles); }
TEST_F(FailuresTest, Windows) { FailEach(kWindows); }
TEST_F(FailuresTest, Memory) { FailEach(kMemory); }

}  // namespace
