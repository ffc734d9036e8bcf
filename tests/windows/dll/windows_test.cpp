// Several windows share one context, one scene and one set of tiles: each still looks as if it were
// alone, and a host with an OpenGL context of its own keeps it.
#include <gmock/gmock.h>

#include "globe/planet.h"
#include "support/faked_import_win.h"
#include "support/frame_compare_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

constexpr UINT_PTR kClockTimer = 4;

class WindowsTest : public MapHostTest {
protected:
    struct Slot {
        int width, height;
        HWND window = nullptr;
        SpiedFrame alone = {};  ///< what it shows while no other lives
    };
    Slot a{240, 180};
    Slot b{130, 220};

    WindowsTest() {
        PutPatternMap(512, 256);
        PutSettings("lag_factor=8\r\n");
        Init();
        SpiedGl().keepCalls = false;
        SpiedGl().keepFrame = true;
    }

    static std::size_t Uploads() { return SpiedGl().uploads.size(); }
    void Make(Slot& slot) {
        slot.window = CreateMap(slot.width, slot.height);
        ASSERT_NE(slot.window, nullptr);
    }
    /// The first window, with its tiles.
    void MakeFirst(Slot& slot) {
        Make(slot);
        ASSERT_TRUE(WaitForTiles());
        Paint(slot.window);
        slot.alone = SpiedGl().frame;
    }
    /// A further window whose context cannot be made, nor the next `failures` - 1 contexts.
    void Refuse(int failures = 1) {
        using Hook = FakedImport<"wglCreateContext", decltype(wglCreateContext)>;
        const Hook fails(library.module,
                         [=](HDC dc) mutable { return failures-- > 0 ? nullptr : Hook::Real(dc); });
        EXPECT_EQ(CreateMap(50, 60), nullptr);
        EXPECT_EQ(status, HORIVO_CONTEXT_FAILED);
    }
    static void ExpectAsIfAlone(const Slot& slot, const char* when) {
        SpiedGl().frame = {};
        Paint(slot.window);
        const int different = DifferentPixels(SpiedGl().frame, slot.alone);
        EXPECT_LE(different, slot.width * slot.height / 500) << slot.width << " wide, " << when;
    }
};

TEST_F(WindowsTest, EachLooksAsIfItWereAloneAndSharesTheTiles) {
    MakeFirst(a);
    DestroyWindow(a.window);
    Make(b);
    EXPECT_EQ(Uploads(), 16U) << "before CreateMapWindow returns";
    Paint(b.window);
    b.alone = SpiedGl().frame;
    Make(a);
    for (const Slot* slot : {&a, &b, &a}) ExpectAsIfAlone(*slot, "one after the other");
    Refuse();
    for (const Slot* slot : {&a, &b}) ExpectAsIfAlone(*slot, "after a refused one");
    DestroyWindow(b.window);
    ExpectAsIfAlone(a, "after the other's end");
    EXPECT_EQ(SendMessageW(a.window, WM_CREATE, 0, 0), 0);
    DestroyWindow(a.window);
    Make(a);
    ExpectAsIfAlone(a, "after one that was told twice of its creation");
}

TEST_F(WindowsTest, PlanetAtAddressesThatEndLikeTheFontsIsMadeAgain) {
    SpiedGl().keepCalls = true;
    MakeFirst(a);
    DestroyWindow(a.window);
    const auto font =
        static_cast<std::uint32_t>(SpiedNumbers(SpiedCalls("glListBase").at(0)).at(0));
    // Memory some times 4 GB away from the font, so that its list names are the font's.
    constexpr std::size_t kAround = 0x10000;
    std::byte* twin = nullptr;
    for (std::uint64_t high = 2; twin == nullptr && high < 100; ++high) {
        void* wanted = reinterpret_cast<void*>(high << 32 | font);
        if (VirtualAlloc(static_cast<std::byte*>(wanted) - kAround, 2 * kAround,
                         MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE) != nullptr)
            twin = static_cast<std::byte*>(wanted);
    }
    ASSERT_NE(twin, nullptr);
    std::vector<std::byte*> planets = {twin + 128, twin - sizeof(CPlanet) + 16};
    using Malloc = FakedImport<"malloc", void*(std::size_t)>;
    using Free = FakedImport<"free", void(void*)>;
    const Malloc allocate(library.module, [&](std::size_t bytes) -> void* {
        if (bytes != sizeof(CPlanet) || planets.empty()) return Malloc::Real(bytes);
        void* const planet = planets.back();
        planets.pop_back();
        return planet;
    });
    const Free release(library.module, [&](void* block) {
        if (std::abs(static_cast<std::byte*>(block) - twin) > std::ptrdiff_t{kAround})
            Free::Real(block);
    });
    Make(a);
    EXPECT_TRUE(planets.empty());
    SpiedGl().calls.clear();
    SendMessageW(a.window, WM_TIMER, kClockTimer, 0);
    for (const std::string& call : SpiedCalls("glNewList")) {
        const auto list = static_cast<std::uint32_t>(SpiedNumbers(call).at(0));
        EXPECT_GE(list - font, 256U) << "a character of the font";
    }
    DestroyWindow(a.window);
}

TEST_F(WindowsTest, AWindowLeftWithoutAContextLivesAndComesBack) {
    MakeFirst(a);
    Refuse(2);  // the window's own context, then the one that A was to get back
    const int before = SpiedGl().frames;
    for (const UINT message : {WM_PAINT, WM_KEYDOWN, WM_MOUSEMOVE, WM_MOUSEWHEEL, WM_LBUTTONDOWN})
        SendMessageW(a.window, message, VK_LEFT, MAKELPARAM(100, 90));
    MoveWindow(a.window, 0, 0, 100, 100, FALSE);
    MoveWindow(a.window, 0, 0, a.width, a.height, FALSE);
    Paint(a.window);
    EXPECT_EQ(SpiedGl().frames, before) << "there is nothing to draw with";
    EXPECT_FALSE(GetUpdateRect(a.window, nullptr, FALSE)) << "painting never ends";
    Key(a.window, VK_HOME);
    Make(b);
    ExpectAsIfAlone(a, "with a new context");
}

TEST_F(WindowsTest, AContextOfSmallerTexturesGetsSmallerTiles) {
    MakeFirst(a);
    SpiedGl().maxTextureSize = 64;
    SpiedGl().uploads.clear();
    Make(b);
    ASSERT_TRUE(WaitForTiles());
    for (const SpiedUpload& tile : SpiedGl().uploads) EXPECT_LE(tile.width, 64);
}

// ---- A host that draws with OpenGL itself -----------------------------------------------------

/// Another part of the program with a context of its own, current on this thread.
class ForeignContext {
public:
    ForeignContext() : dc_(GetDC(window_)) {
        PIXELFORMATDESCRIPTOR wanted = {};
        wanted.nSize = sizeof wanted;
        wanted.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
        wanted.cColorBits = 32;
        SetPixelFormat(dc_, ChoosePixelFormat(dc_, &wanted), &wanted);
        context_ = wglCreateContext(dc_);
        wglMakeCurrent(dc_, context_);
        // Their names are small numbers, like those of every other context's textures.
        glGenTextures(kTextures, textures_);
        for (const GLuint texture : textures_) glBindTexture(GL_TEXTURE_2D, texture);
        glMatrixMode(GL_TEXTURE);
    }
    ForeignContext(const ForeignContext&) = delete;
    ForeignContext& operator=(const ForeignContext&) = delete;
    ~ForeignContext() {
        wglMakeCurrent(nullptr, nullptr);
        wglDeleteContext(context_);
        DestroyWindow(window_);
    }
    HGLRC Handle() const { return context_; }

    void ExpectUntouched(const std::string& after) const {
        EXPECT_EQ(wglGetCurrentContext(), context_) << after;
        EXPECT_EQ(wglGetCurrentDC(), dc_) << after;
        if (wglGetCurrentContext() != context_) wglMakeCurrent(dc_, context_);
        GLint mode = 0;
        GLint bound = 0;
        glGetIntegerv(GL_MATRIX_MODE, &mode);
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        EXPECT_EQ(mode, GL_TEXTURE) << after;
        EXPECT_EQ(static_cast<GLuint>(bound), textures_[kTextures - 1]) << after << ": deleted";
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

class ForeignContextTest : public WindowsTest {
protected:
    /// Sends what may come to a window and looks at the foreign context after each.
    void SendAll(HWND window, const ForeignContext& foreign) {
        const std::pair<UINT, WPARAM> table[] = {
            {WM_SIZE, 0},         {WM_PAINT, 0},
            {WM_LBUTTONDOWN, 1},  {WM_LBUTTONUP, 0},
            {WM_KEYDOWN, 'L'},    {WM_KEYDOWN, 'H'},
            {WM_KEYDOWN, 'I'},    {WM_KEYDOWN, VK_NEXT},
            {WM_TIMER, 1},        {WM_TIMER, 2},
            {WM_TIMER, 3},        {WM_TIMER, 4},
            {WM_USER + 1, 1},     {HORIVO_MSG_CITY, 0},
            {WM_MOUSEWHEEL, 120}, {HORIVO_MSG_PHOTOS_CHANGED, 0}};
        for (const auto& [message, wParam] : table) {
            const LPARAM place = MAKELPARAM(60, 50);
            const bool isCity = message == HORIVO_MSG_CITY;
            InvalidateRect(window, nullptr, FALSE);
            SendMessageW(window, message, wParam,
                         isCity ? reinterpret_cast<LPARAM>(cities.data()) : place);
            foreign.ExpectUntouched("message " + std::to_string(message));
        }
        Paint(window);
        foreign.ExpectUntouched("the picture");
    }
};

TEST_F(ForeignContextTest, ItIsCurrentAgainAfterEveryMessage) {
    cities.resize(2);
    for (CityRecord& city : cities) city.latitude = city.longitude = 20.0;
    Init();
    const ForeignContext foreign;
    Make(a);
    foreign.ExpectUntouched("first window");
    EXPECT_TRUE(PumpUntil([&] {
        foreign.ExpectUntouched("pumping");
        return Uploads() >= 8 || HasFailure();
    }));
    SendAll(a.window, foreign);
    Make(b);
    foreign.ExpectUntouched("second window");
    for (const Slot* slot : {&a, &b}) SendAll(slot->window, foreign);
    Refuse();
    foreign.ExpectUntouched("refused window");
    DestroyWindow(b.window);
    foreign.ExpectUntouched("one of two windows gone");
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    foreign.ExpectUntouched("installing");
    DestroyWindow(a.window);
    foreign.ExpectUntouched("the last window gone");
    Refuse();
    foreign.ExpectUntouched("refused without others");
}

TEST_F(ForeignContextTest, NothingReachesItWhenTheMapsOwnCannotBeUsed) {
    MakeFirst(a);
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
    for (const Slot* slot : {&b, &a}) {
        DestroyWindow(slot->window);
        foreign.ExpectUntouched("gone; the map's textures have the same names");
    }
}

}  // namespace
