// Weeks in the life of a map, pressed into minutes: nothing that it holds may grow.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "long_run.h"
#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"
#include "support/worker_watch_win.h"

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 120;

enum class Detail { Coarse, Full };

class SoakTest : public DrivenMapTest {
protected:
    SoakTest() {
        AddCity(L"Paris", L"France", 42.0, 3.0, 30);
        AddCity(L"Lyon", L"France", 38.0, -3.0, 30);
        for (int i = 0; i < 30; ++i)
            AddCity(L"Elsewhere", L"Nowhere", i * 5.0 - 70.0, i * 11.0 - 160.0, 10);
        photos.PutCity(L"France\\Paris", 6);
        consent = 1;
        SpiedGl().keepFrame = true;
    }

    /// A library that was freed and initialised anew, with a window that shows its tiles.
    void Reopen(Detail detail) {
        if (window != nullptr) DestroyWindow(window);
        Settle();
        library.FreeMap();
        if (detail == Detail::Full) {
            PutAssetMap();
        } else {
            PutPatternMap(512, 256);
        }
        PutSettings(detail == Detail::Full ? "lag_factor=1\r\n" : "lag_factor=8\r\n");
        Open(kWidth, kHeight);
        Settle();
    }
    /// Lets workers and messages come to an end.
    void Settle() {
        ASSERT_TRUE(MapHostTest::Settle(workers)) << "a worker hangs";
        SpiedGl().uploads.clear();
    }
    SpiedFrame HomeView() {
        Key(window, VK_HOME);
        FixedClock() = {2024, 7, 1, 1, 12, 0, 0, 0};
        Tick(kSunTimer);
        Paint(window);
        Paint(window);
        return SpiedGl().frame;
    }

    /// Does `round` as often as said, one in a hundred at the full map and detail, and watches what
    /// grows meanwhile. @param samePicture  whether the start view has to look the same afterwards
    template <class Round>
    void Soak(const char* name, int rounds, bool samePicture, const Round& round) {
        GrowthWatch growth(name);
        const CallLedger calls(library.module);
        const MemoryLedger memory(library.module);
        growth.Follow(&calls, &memory);
        Reopen(Detail::Coarse);
        const SpiedFrame fresh = HomeView();
        const int samples = LengthOfRun(50, 20);
        const int stretch = LengthOfRun(5, 10);  // samples between two at full map and detail
        int done = 0;
        for (int sample = 1; sample <= samples && !HasFatalFailure(); ++sample) {
            if (sample % stretch == 0) {
                Reopen(Detail::Full);
                const int end = done + std::max(1, rounds * stretch / samples / 100);
                while (done < end) round(done++);
                Reopen(Detail::Coarse);
            }
            while (done < rounds / samples * sample) round(done++);
            Settle();
            growth.Take(done);
        }
        growth.ExpectFlat();
        if (samePicture) {
            const SpiedFrame last = HomeView();
            EXPECT_EQ(last.pixels, fresh.pixels) << name << ": the globe looks different";
        }
        DestroyWindow(window);
        library.FreeMap();
        EXPECT_EQ(calls.Held(), CallLedger::Counts{});
    }

    WorkerWatch workers{library.module};

private:
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> box_{
        library.module, [](HWND, LPCWSTR, LPCWSTR, UINT) { return IDOK; }};
};

TEST_F(SoakTest, ClockTicks) {
    Soak("clock ticks with recompile", LengthOfRun(100000, 3000), true, [this](int round) {
        SYSTEMTIME& clock = FixedClock();
        clock.wMinute = static_cast<WORD>(round / 12 % 60);
        clock.wHour = static_cast<WORD>(round / 720 % 24);
        clock.wDay = static_cast<WORD>(1 + round / 17280);
        Tick(kSunTimer);
        if (round % 20 == 0) Paint(window);
    });
}

TEST_F(SoakTest, DetailChanges) {
    Soak("pairs of detail changes with reload", LengthOfRun(1000, 40), true, [this](int round) {
        for (const int key : {'H', 'L'}) {
            Key(window, key);
            ASSERT_TRUE(WaitForTiles()) << round;
            Settle();
            Paint(window);
        }
    });
}

TEST_F(SoakTest, Windows) {
    Soak("windows created and destroyed", LengthOfRun(1000, 40), true, [this](int) {
        DestroyWindow(window);
        window = CreateMap(kWidth, kHeight);
        ASSERT_NE(window, nullptr);
        Paint(window);
    });
}

// ---- Messages in any order --------------------------------------------------------------------

class MessageSoakTest : public SoakTest {
protected:
    int Chance(int count) { return std::uniform_int_distribution<int>(0, count - 1)(chance_); }
    template <class Value, std::size_t Count>
    Value Any(const Value (&values)[Count]) {
        return values[Chance(Count)];
    }
    std::uint64_t AnyNumber() {
        constexpr std::uint64_t kEdges[] = {0,          1,
                                            2,          31,
                                            32,         0x7FFFFFFF,
                                            0x80000000, 0xFFFFFFFF,
                                            ~0ULL,      0x8000000000000000,
                                            0x10000,    0xFFFFFFFF00000000};
        return Chance(2) == 0 ? Any(kEdges)
                              : std::uniform_int_distribution<std::uint64_t>()(chance_);
    }
    POINT AnyPoint() { return {Chance(kWidth + 100) - 50, Chance(kHeight + 100) - 50}; }

    void AnyKey() {
        constexpr int kKeys[] = {VK_LEFT,  VK_RIGHT,  VK_UP,  VK_DOWN,     VK_HOME,
                                 VK_CLEAR, VK_ADD,    VK_ADD, VK_SUBTRACT, VK_PRIOR,
                                 VK_NEXT,  VK_INSERT, 'I'};
        // Towards coarse: pictures of much detail take too long to see many.
        const int key = Chance(2000) == 0 ? 'L' : Chance(20) == 0 ? Chance(256) : Any(kKeys);
        if (key == 'F') {  // twice: while the frame rate shows, painting never ends
            Send(WM_KEYDOWN, 'F', 1);
            Paint(window);
        }
        Send(WM_KEYDOWN, static_cast<WPARAM>(key), key != 'F' && Chance(4) == 0 ? 1 << 30 : 1);
    }
    void AnyPointer() {
        constexpr UINT kMessages[] = {WM_MOUSEMOVE, WM_MOUSEMOVE,   WM_MOUSEMOVE, WM_LBUTTONDOWN,
                                      WM_LBUTTONUP, WM_MOUSELEAVE,  WM_RBUTTONUP, WM_LBUTTONUP,
                                      WM_MOUSEMOVE, WM_RBUTTONDOWN, WM_MBUTTONUP, WM_LBUTTONDBLCLK};
        constexpr WPARAM kButtons[] = {0, MK_LBUTTON, MK_LBUTTON | MK_CONTROL, MK_RBUTTON};
        cursor = AnyPoint();
        Pointer(Any(kMessages), Any(kButtons), cursor);
    }
    void AnySize() {
        constexpr int kSides[] = {0, 0, 1, 2, 33, 120, 160, 301};
        if (Chance(4) == 0) {
            Send(WM_SIZE, static_cast<WPARAM>(Chance(5)), static_cast<LPARAM>(AnyNumber()));
        } else {
            MoveWindow(window, 0, 0, Any(kSides), Any(kSides), FALSE);
        }
    }
    void AnyHostMessage() {
        constexpr UINT kMessages[] = {HORIVO_MSG_CITY, HORIVO_MSG_PHOTOS_CHANGED, WM_USER + 1,
                                      WM_DISPLAYCHANGE, WM_SETCURSOR};
        const UINT message = Any(kMessages);
        consent = Chance(3);
        if (message == HORIVO_MSG_CITY && Chance(2) == 0) {
            const auto city = static_cast<std::size_t>(Chance(static_cast<int>(cities.size())));
            Send(message, 0, reinterpret_cast<LPARAM>(&cities[city]));
        } else {
            Send(message, AnyNumber(), static_cast<LPARAM>(AnyNumber()));
        }
    }
    void LoseCapture() {
        if (Chance(2) == 0) {
            ReleaseCapture();
        } else {
            SetCapture(host);
        }
    }
    void AnyMessage() {
        const int kind = Chance(100);
        if (kind < 35) return AnyKey();
        if (kind < 70) return AnyPointer();
        if (kind < 78) return Send(WM_MOUSEWHEEL, AnyNumber(), static_cast<LPARAM>(AnyNumber()));
        if (kind < 88) return Tick(static_cast<WPARAM>(Chance(6)));
        if (kind < 92) return AnySize();
        if (kind < 96) return LoseCapture();
        AnyHostMessage();
    }

private:
    void Send(UINT message, WPARAM wParam, LPARAM lParam) const {
        SendMessageW(window, message, wParam, lParam);
    }
    std::mt19937 chance_{SeedOfRun()};
};

TEST_F(MessageSoakTest, AnyMessages) {
    Soak("random messages", LengthOfRun(500000, 10000), false, [this](int round) {
        AnyMessage();
        if (round % 8 == 0) Paint(window);
        if (round % 64 == 0) PumpPending();
        ASSERT_TRUE(IsWindow(window)) << round;
    });
}

// ---- The library itself -----------------------------------------------------------------------

struct LibrarySoakTest : MapHostTest {};

TEST_F(LibrarySoakTest, LoadAndUnload) {
    const int rounds = LengthOfRun(200, 20);
    GrowthWatch growth("library loaded and unloaded");
    SpiedGl().keepCalls = false;
    library.Unload();
    ASSERT_EQ(GetModuleHandleW(L"horivo_map.dll"), nullptr);
    for (int round = 1; round <= rounds; ++round) {
        const bool full = round % 100 == 0;
        library.Load();
        ASSERT_NE(library.module, nullptr);
        Watch();
        {
            const CallLedger calls(library.module);
            const MemoryLedger memory(library.module);
            SpiedGl().uploads.clear();
            if (full) {
                PutAssetMap();
            } else {
                PutPatternMap(512, 256);
            }
            PutSettings(full ? "lag_factor=1\r\n" : "lag_factor=8\r\n");
            Init();
            const HWND window = CreateMap(kWidth, kHeight);
            ASSERT_TRUE(WaitForTiles());
            Paint(window);
            DestroyWindow(window);
            EXPECT_NE(library.FreeMap(), 0U);
            PumpPending();
            library.Unload();
            ASSERT_TRUE(PumpUntil([] { return GetModuleHandleW(L"horivo_map.dll") == nullptr; }));
            EXPECT_EQ(calls.Held(), CallLedger::Counts{}) << round;
            EXPECT_EQ(memory.Held(), MemoryLedger::Counts{}) << round;
        }
        if (!full) growth.Take(round);
    }
    growth.ExpectFlat();
}

// ---- What is not the library's ----------------------------------------------------------------

/// A window with a context and nothing else: what the process gains with these is Windows' and the
/// driver's own.
class BareWindow {
public:
    BareWindow() {
        PIXELFORMATDESCRIPTOR wanted = {};
        wanted.nSize = sizeof wanted;
        wanted.nVersion = 1;
        wanted.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
        wanted.cColorBits = 24;
        wanted.cDepthBits = 32;
        SetPixelFormat(dc_, ChoosePixelFormat(dc_, &wanted), &wanted);
        context_ = wglCreateContext(dc_);
        wglMakeCurrent(dc_, context_);
    }
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;
    ~BareWindow() {
        wglMakeCurrent(nullptr, nullptr);
        wglDeleteContext(context_);
        ReleaseDC(window_, dc_);
        DestroyWindow(window_);
    }
    /// Records one list of about as many points as a coarse globe has, in strips of either kind.
    static void Record(int round, GLenum strip = GL_QUAD_STRIP) {
        glNewList(1, GL_COMPILE);
        for (int stack = 0; stack < 30; ++stack) {
            glBegin(strip);
            for (int slice = 0; slice < 72; ++slice) {
                glNormal3d(0.0, 0.0, 1.0);
                glTexCoord2d(slice / 72.0, stack / 30.0);
                glVertex3d(slice / 36.0 - 1.0, stack / 15.0 - 1.0, (round + slice) % 7 / 10.0);
            }
            glEnd();
        }
        glEndList();
    }
    void Draw() const {
        glClear(GL_COLOR_BUFFER_BIT);
        glCallList(1);
        SwapBuffers(dc_);
    }

private:
    HWND window_ = CreateWindowW(L"static", L"bare", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight,
                                 nullptr, nullptr, nullptr, nullptr);
    HDC dc_ = GetDC(window_);
    HGLRC context_ = nullptr;
};

TEST(BareOpenGlTest, RecordsOneListAgainAndAgain) {
    const BareWindow window;
    // Mesa 22 loses twelve bytes for each strip of quads, and none for the same strip of triangles.
    for (const GLenum strip : {GL_TRIANGLE_STRIP, GL_QUAD_STRIP}) {
        GrowthWatch growth(strip == GL_QUAD_STRIP
                               ? "bare window, a list of 30 strips of quads"
                               : "bare window, a list of 30 strips of triangles");
        const int rounds = LengthOfRun(100000, 1000);
        for (int round = 1; round <= rounds; ++round) {
            BareWindow::Record(round, strip);
            if (round % 20 == 0) window.Draw();
            if (round % (rounds / 50) == 0) growth.Take(round);
        }
        growth.Print();
    }
}

TEST(BareOpenGlTest, MakesWindowsAgainAndAgain) {
    GrowthWatch growth("bare windows with a context");
    const int rounds = LengthOfRun(1000, 40);
    for (int round = 1; round <= rounds; ++round) {
        const BareWindow window;
        BareWindow::Record(round);
        window.Draw();
        if (round % (rounds / 20) == 0) growth.Take(round);
    }
    growth.Print();
}

}  // namespace
