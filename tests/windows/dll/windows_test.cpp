// Several windows share one context, one scene and one set of tiles: each still looks as if it were
// alone, and a host with an OpenGL context of its own keeps it.
#include <gmock/gmock.h>

#include "support/call_ledger_win.h"
#include "support/faked_import_win.h"
#include "support/frame_compare_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

class WindowsTest : public MapHostTest {
protected:
    WindowsTest() {
        PutPatternMap(512, 256);
        PutSettings("lag_factor=8\r\n");
        Init();
        SpiedGl().keepCalls = false;
        SpiedGl().keepFrame = true;
    }

    static SpiedFrame FrameOf(HWND window) {
        SpiedGl().frame = {};
        Paint(window);
        return SpiedGl().frame;
    }
    std::size_t Uploads() const { return SpiedGl().uploads.size(); }

    int threads = 0;  ///< that the library started
    const FakedImport<"CreateThread", decltype(CreateThread)> countThreads{
        library.module, [this](auto... arguments) {
            ++threads;
            return FakedImport<"CreateThread", decltype(CreateThread)>::Real(arguments...);
        }};
};

TEST_F(WindowsTest, LaterWindowsShareTheTiles) {
    const HWND first = CreateMap();
    ASSERT_TRUE(WaitForTiles());
    ASSERT_EQ(threads, 2) << "one loads, one cuts";
    const HWND second = CreateMap();
    EXPECT_EQ(Uploads(), 16U) << "before CreateMapWindow returns";
    DestroyWindow(second);
    DestroyWindow(first);
    const HWND third = CreateMap();
    EXPECT_EQ(Uploads(), 24U);
    EXPECT_EQ(threads, 2);
    DestroyWindow(third);
}

// ---- Two windows in every order ---------------------------------------------------------------

class OrderTest : public WindowsTest {
protected:
    struct Slot {
        char name;
        int width, height;
        HWND window = nullptr;
        SpiedFrame alone = {};  ///< what it shows while no other lives
    };
    Slot a{'A', 240, 180};
    Slot b{'B', 130, 220};

    void Make(Slot& slot) {
        slot.window = CreateMap(slot.width, slot.height);
        ASSERT_NE(slot.window, nullptr);
    }
    static void Destroy(Slot& slot) {
        DestroyWindow(slot.window);
        slot.window = nullptr;
    }
    /// A further window whose context cannot be made, nor the next `failures` - 1 contexts.
    void Refuse(int failures = 1) {
        using Hook = FakedImport<"wglCreateContext", decltype(wglCreateContext)>;
        const Hook fails(library.module,
                         [=](HDC dc) mutable { return failures-- > 0 ? nullptr : Hook::Real(dc); });
        EXPECT_EQ(CreateMap(50, 60), nullptr);
        EXPECT_EQ(status, HORIVO_CONTEXT_FAILED);
    }

    void Look(Slot& slot) {
        if (slot.window == nullptr) return;
        const int different = DifferentPixels(FrameOf(slot.window), slot.alone);
        EXPECT_LE(different, slot.width * slot.height / 500) << "window " << slot.name;
    }

    /// Capital letters make a window, small ones destroy it, 'r' is one that is refused.
    void Walk(const std::string& road) {
        for (std::size_t i = 0; i < road.size(); ++i) {
            SCOPED_TRACE(road.substr(0, i + 1));
            Slot& slot = road[i] == 'A' || road[i] == 'a' ? a : b;
            if (road[i] == 'r') {
                Refuse();
            } else if (slot.window == nullptr) {
                Make(slot);
            } else {
                Destroy(slot);
            }
            // Each also right after the other has been drawn.
            for (Slot* shown : {&a, &b, &a}) Look(*shown);
        }
        for (Slot* slot : {&a, &b}) {
            if (slot->window != nullptr) Destroy(*slot);
        }
    }
};

TEST_F(OrderTest, EachWindowLooksAsIfItWereAlone) {
    Make(a);
    ASSERT_TRUE(WaitForTiles());
    a.alone = FrameOf(a.window);
    Destroy(a);
    Make(b);
    b.alone = FrameOf(b.window);
    Destroy(b);
    const CallLedger ledger(library.module);
    for (const char* road : {"AaAa", "ABabAB", "ABbaBA", "ABaAbB", "ABbBaA", "ABraArb", "rArBrbra"})
        Walk(road);
    EXPECT_EQ(ledger.Held(), CallLedger::Counts{});
    EXPECT_EQ(threads, 2) << "the tiles of the first load serve all";
}

TEST_F(OrderTest, AWindowLeftWithoutAContextLivesAndComesBack) {
    Make(a);
    ASSERT_TRUE(WaitForTiles());
    a.alone = FrameOf(a.window);
    Refuse(2);  // the window's own context, then the one that A was to get back
    const int before = SpiedGl().frames;
    for (const UINT message : {WM_PAINT, WM_KEYDOWN, WM_MOUSEMOVE, WM_MOUSEWHEEL, WM_LBUTTONDOWN})
        SendMessageW(a.window, message, VK_LEFT, MAKELPARAM(100, 90));
    MoveWindow(a.window, 0, 0, 100, 100, FALSE);
    MoveWindow(a.window, 0, 0, a.width, a.height, FALSE);
    Paint(a.window);
    EXPECT_EQ(SpiedGl().frames, before) << "there is nothing to draw with";
    EXPECT_FALSE(GetUpdateRect(a.window, nullptr, FALSE)) << "painting never ends";
    SendMessageW(a.window, WM_KEYDOWN, VK_HOME, 0);
    Make(b);
    Look(a);
    DestroyWindow(b.window);
    Look(a);
}

// ---- A host that draws with OpenGL itself -----------------------------------------------------

/// Another part of the program with a context of its own, current on this thread.
class ForeignContext {
public:
    ForeignContext() : dc_(GetDC(window_)) {
        PIXELFORMATDESCRIPTOR wanted = {};
        wanted.nSize = sizeof wanted;
        wanted.nVersion = 1;
        wanted.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
        wanted.cColorBits = 32;
        wanted.cDepthBits = 24;
        SetPixelFormat(dc_, ChoosePixelFormat(dc_, &wanted), &wanted);
        context_ = wglCreateContext(dc_);
        wglMakeCurrent(dc_, context_);
        // Their names are small numbers, like those of every other context's textures.
        glGenTextures(kTextures, textures_);
        for (const GLuint texture : textures_) glBindTexture(GL_TEXTURE_2D, texture);
        glMatrixMode(GL_TEXTURE);
        glClearColor(0.25F, 0.5F, 0.75F, 1.0F);
    }
    ForeignContext(const ForeignContext&) = delete;
    ForeignContext& operator=(const ForeignContext&) = delete;
    ~ForeignContext() {
        wglMakeCurrent(nullptr, nullptr);
        wglDeleteContext(context_);
        ReleaseDC(window_, dc_);
        DestroyWindow(window_);
    }
    HGLRC Handle() const { return context_; }

    void ExpectUntouched(const char* after) const {
        EXPECT_EQ(wglGetCurrentContext(), context_) << after;
        EXPECT_EQ(wglGetCurrentDC(), dc_) << after;
        if (wglGetCurrentContext() != context_) wglMakeCurrent(dc_, context_);
        for (const GLuint texture : textures_) EXPECT_TRUE(glIsTexture(texture)) << after;
        GLint mode = 0;
        GLint bound = 0;
        GLfloat clear[4] = {};
        glGetIntegerv(GL_MATRIX_MODE, &mode);
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        glGetFloatv(GL_COLOR_CLEAR_VALUE, clear);
        EXPECT_EQ(mode, GL_TEXTURE) << after;
        EXPECT_EQ(static_cast<GLuint>(bound), textures_[kTextures - 1]) << after;
        EXPECT_EQ(clear[2], 0.75F) << after;
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << after;
    }

private:
    static constexpr int kTextures = 8;
    HWND window_ = CreateWindowW(L"static", L"foreign", WS_POPUP, 0, 0, 64, 64, nullptr, nullptr,
                                 nullptr, nullptr);
    HDC dc_;
    HGLRC context_ = nullptr;
    GLuint textures_[kTextures] = {};
};

class ForeignContextTest : public OrderTest {
protected:
    /// Sends what may come to a window and looks at the foreign context after each.
    void SendAll(HWND window, const ForeignContext& foreign) const {
        const struct {
            const char* what;
            UINT message;
            WPARAM wParam;
            LPARAM lParam;
        } table[] = {
            {"size", WM_SIZE, SIZE_RESTORED, MAKELPARAM(120, 90)},
            {"paint", WM_PAINT, 0, 0},
            {"erase", WM_ERASEBKGND, 0, 0},
            {"move", WM_MOUSEMOVE, 0, MAKELPARAM(60, 50)},
            {"press", WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 50)},
            {"drag", WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(70, 52)},
            {"release", WM_LBUTTONUP, 0, MAKELPARAM(70, 52)},
            {"wheel", WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0},
            {"leave", WM_MOUSELEAVE, 0, 0},
            {"turn", WM_KEYDOWN, VK_LEFT, 0},
            {"coarser", WM_KEYDOWN, 'L', 0},
            {"finer", WM_KEYDOWN, 'H', 0},
            {"next photos", WM_KEYDOWN, VK_NEXT, 0},
            {"information", WM_KEYDOWN, 'I', 0},
            {"repeat timer", WM_TIMER, 1, 0},
            {"flight timer", WM_TIMER, 2, 0},
            {"hover timer", WM_TIMER, 3, 0},
            {"clock timer", WM_TIMER, 4, 0},
            {"tiles ready", WM_USER + 1, 1, 1},
            {"show a city", HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&cities[0])},
            {"photos changed", HORIVO_MSG_PHOTOS_CHANGED, 0, 1},
            {"paint again", WM_PAINT, 0, 0},
        };
        for (const auto& m : table) {
            InvalidateRect(window, nullptr, FALSE);
            SendMessageW(window, m.message, m.wParam, m.lParam);
            foreign.ExpectUntouched(m.what);
        }
    }
    /// Pumps until both stages of a load are through, looking after each message.
    void PumpLoad(const ForeignContext& foreign) const {
        const std::size_t before = Uploads();
        EXPECT_TRUE(PumpUntil([&] {
            foreign.ExpectUntouched("pumping");
            return Uploads() >= before + 8 || testing::Test::HasFailure();
        }));
    }
};

TEST_F(ForeignContextTest, ItIsCurrentAgainAfterEveryMessage) {
    CityRecord city = {};
    city.cityName[0] = L'C';
    city.latitude = 10.0;
    city.longitude = 20.0;
    cities = {city, city};
    Init();
    const ForeignContext foreign;
    Make(a);
    foreign.ExpectUntouched("first window");
    PumpLoad(foreign);
    SendAll(a.window, foreign);
    Make(b);
    foreign.ExpectUntouched("second window");
    for (Slot* slot : {&a, &b}) SendAll(slot->window, foreign);
    Refuse();
    foreign.ExpectUntouched("refused window");
    Destroy(b);
    foreign.ExpectUntouched("one of two windows gone");
    SendAll(a.window, foreign);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    foreign.ExpectUntouched("installing");
    Destroy(a);
    foreign.ExpectUntouched("the last window gone");
    Refuse();
    foreign.ExpectUntouched("refused without others");
    library.FreeMap();
    foreign.ExpectUntouched("freed");
}

TEST_F(ForeignContextTest, NothingReachesItWhenTheMapsOwnCannotBeUsed) {
    Make(a);
    ASSERT_TRUE(WaitForTiles());
    Make(b);
    wglMakeCurrent(nullptr, nullptr);
    const ForeignContext foreign;
    using Hook = FakedImport<"wglMakeCurrent", decltype(wglMakeCurrent)>;
    const Hook onlyForeign(library.module, [&](HDC dc, HGLRC context) {
        return context == nullptr || context == foreign.Handle() ? Hook::Real(dc, context) : FALSE;
    });
    SendAll(a.window, foreign);
    EXPECT_EQ(CreateMap(), nullptr);
    foreign.ExpectUntouched("third window");
    SendAll(b.window, foreign);
    for (Slot* slot : {&b, &a}) {
        Destroy(*slot);
        foreign.ExpectUntouched("gone; the map's textures have the same names");
    }
}

// ---- From InitMap to FreeMap, and again -------------------------------------------------------

TEST_F(OrderTest, AfterFreeMapEverythingBeginsAnew) {
    Make(a);
    ASSERT_TRUE(WaitForTiles());
    a.alone = FrameOf(a.window);
    for (int round = 1; round <= 3; ++round) {
        SCOPED_TRACE(round);
        Destroy(a);
        EXPECT_NE(library.FreeMap(), 0U);

        EXPECT_EQ(Init(), HORIVO_OK);
        const std::size_t before = Uploads();
        Make(a);
        EXPECT_EQ(Uploads(), before) << "the tiles were released";
        ASSERT_TRUE(WaitForTiles(before + 8));
        EXPECT_EQ(threads, 2 + 2 * round);
        Look(a);
    }
}

}  // namespace
