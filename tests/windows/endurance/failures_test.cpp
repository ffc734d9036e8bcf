// Every call by which the library asks Windows for something fails once: nothing crashes, hangs or
// stays behind, each function answers as promised, and the next life is a whole one.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
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
constexpr int kMaxCalls = 20000;
constexpr std::uint64_t kGdipOutOfMemory = 3;
constexpr std::uint64_t kInvalid = ~0ULL;

// Calls that give something back are not among them: what they would leave is theirs.
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
    /// Calls the map, or waits for its workers. A failure that has begun ends with it.
    void Do(const std::function<void()>& call) {
        call();
        if (failing_->Failed() != nullptr) failing_->Stop();
    }
    void UseWindow() {
        const POINT middle = {kWidth / 2, kHeight / 2};
        const POINT below = {kWidth / 2, kHeight / 2 + 4};
        const POINT corner = {kWidth - 10, kHeight - 10};
        const std::function<void()> calls[] = {
            [&] { Settle(); },
            [&] { Paint(window); },
            [&] { Hover(middle); },
            [&] { ShowCity(cities[0]); },
            [&] { Paint(window); },
            [&] { SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, 0, 2); },
            [&] { Key(window, VK_NEXT); },
            [&] { Key(window, VK_PRIOR); },
            [&] { EXPECT_EQ(Init(), HORIVO_CLASS_FAILED) << "it is there"; },
            [&] { Wheel(WHEEL_DELTA); },
            [&] { Tick(kRepeatTimer); },
            [&] { Tick(kFlightTimer); },
            [&] { Tick(kHoverTimer); },
            [&] { Tick(kSunTimer); },
            [&] { Hover(corner); },
            [&] { Key(window, 'I'); },
            [&] { Paint(window); },
            [&] { Key(window, 'I'); },
            [&] { Press(below); },
            [&] { Release(below); },
            [&] { Key(window, 'L'); },
            [&] { Key(window, 'H'); },
            [&] { Settle(); },
            [&] { MoveWindow(window, 0, 0, kWidth + 8, kHeight + 6, FALSE); },
            [&] { Paint(window); },
        };
        for (const auto& call : calls) Do(call);
    }
    void TryInstall() {
        EXPECT_THAT(library.InstallMap(),
                    AnyOf(HORIVO_OK, HORIVO_COPY_FAILED, HORIVO_BAD_PICTURE, HORIVO_UNFIT_PICTURE,
                          HORIVO_CLASS_FAILED, HORIVO_NO_PIXEL_FORMAT, HORIVO_PIXEL_FORMAT_REFUSED,
                          HORIVO_CONTEXT_FAILED));
    }
    /// Start, load, split, attach, draw, photos, reload, install, a second window, destroy, free.
    void LiveHowever() {
        Do([this] { EXPECT_THAT(Init(), AnyOf(HORIVO_OK, HORIVO_CLASS_FAILED)); });
        Do([this] { library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, L"Add a photo"); });
        Do([this] { window = Make(); });
        if (window != nullptr) UseWindow();
        Do([this] { TryInstall(); });
        HWND second = nullptr;
        Do([&] { second = Make(); });
        if (second != nullptr) {
            Do([=] { Paint(second); });
            Do([=] { DestroyWindow(second); });
        }
        if (window != nullptr) Do([this] { DestroyWindow(window); });
        window = nullptr;
        Do([this] { library.FreeMap(); });
        Do([this] { Settle(); });
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
    /// A life with a failure, then a whole one. @return the function that failed; null when none
    const char* LiveWithFailure(int number, int count) {
        PutFiles();
        boxes = 0;
        failing_->FailFrom(number, count);
        LiveHowever();
        const char* failed = failing_->Failed();
        failing_->FailFrom(0, 0);
        if (failed == nullptr) return nullptr;
        const std::string why = std::string(failed) + ", call " + std::to_string(number);
        EXPECT_LE(boxes, 4) << why;
        LiveWell(why);
        return failed;
    }
    /// Lets call after call of the functions fail, with `count` - 1 more unless the map returns
    /// before, until a life runs through without. A short run takes some of the calls, others each
    /// time.
    void FailEach(std::span<const ImportFailure> functions, int count = 1) {
        failing_.emplace(library.module, functions);
        // What is kept for the life of the process is there after a failure and a whole life.
        LiveWithFailure(5, count);
        const int step = std::max(1, failing_->Calls() / LengthOfRun(failing_->Calls(), 20));
        const auto calls = calls_.Held();
        const auto memory = memory_.Held();
        const ResourceCount process = CountResources();
        int rounds = 0;
        int number = 1 + static_cast<int>(SeedOfRun() % static_cast<unsigned>(step));
        for (; number < kMaxCalls && !HasFailure(); number += step, ++rounds) {
            const char* failed = LiveWithFailure(number, count);
            if (failed == nullptr) break;
            const std::string why = std::string(failed) + ", call " + std::to_string(number);
            EXPECT_EQ(calls_.Held(), calls) << why;
            EXPECT_EQ(memory_.Held(), memory) << why;
        }
        EXPECT_LT(number, kMaxCalls) << "the scenario never ran through";
        const ResourceCount now = CountResources();
        EXPECT_LE(now.kernelHandles, process.kernelHandles + 4);
        EXPECT_LE(now.gdiObjects, process.gdiObjects + 2);
        std::printf("%d failures within %d calls\n", rounds, number - 1);
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

private:
    std::optional<FailingImports> failing_;
};

TEST_F(FailuresTest, Gdiplus) { FailEach(kGdiplus); }
TEST_F(FailuresTest, Wgl) { FailEach(kWgl); }
TEST_F(FailuresTest, Gl) { FailEach(kGl); }
TEST_F(FailuresTest, ThreadsAndLocks) { FailEach(kThreads); }
TEST_F(FailuresTest, Files) { FailEach(kFiles); }
TEST_F(FailuresTest, Windows) { FailEach(kWindows); }
TEST_F(FailuresTest, Memory) { FailEach(kMemoryCalls); }
TEST_F(FailuresTest, AllMemory) { FailEach(kMemoryCalls, kAllThatFollow); }

}  // namespace
