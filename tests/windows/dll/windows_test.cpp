// Several windows share one context, one scene and one set of tiles: each still looks as if it were
// alone, and a host with an OpenGL context of its own keeps it.
#include <gmock/gmock.h>

#include "support/frame_compare_win.h"
#include "support/map_play_win.h"

namespace {

class WindowsTest : public MapPlay {
protected:
    std::map<std::string, SpiedFrame> alone;  ///< what a window shows while no other lives

    WindowsTest() {
        PutPatternMap(512, 256);
        Init();
        SpiedGl().keepFrame = true;
        acts["refuse"] = [this] { Refuse(1); };
        acts["refuse twice"] = [this] { Refuse(2); };
    }
    /// A further window whose context cannot be made, nor the next `failures` - 1 contexts.
    void Refuse(int failures) {
        using Hook = FakedImport<"wglCreateContext", decltype(wglCreateContext), WindowsTest>;
        const Hook fails(library.module,
                         [=](HDC dc) mutable { return failures-- > 0 ? nullptr : Hook::Real(dc); });
        EXPECT_EQ(CreateMap(50, 60), nullptr);
        EXPECT_EQ(status, HORIVO_CONTEXT_FAILED);
    }

    SpiedFrame FrameOf(const std::string& name) {
        SpiedGl().frame = {};
        Play("use " + name + "; paint");
        return SpiedGl().frame;
    }
    void ExpectAsIfAlone(const std::string& name, const char* when) {
        const SpiedFrame frame = FrameOf(name);
        EXPECT_LE(DifferentPixels(frame, alone[name]), frame.width * frame.height / 500)
            << name << ' ' << when;
    }
};

TEST_F(WindowsTest, EachLooksAsIfItWereAloneAndSharesTheTiles) {
    Play("create a 240 180; settle; tiles 1");
    alone["a"] = FrameOf("a");
    Play("close; create b 130 220; tiles 1", "before CreateMapWindow returns");
    alone["b"] = FrameOf("b");
    Play("create a 240 180");
    for (const char* name : {"a", "b", "a"}) ExpectAsIfAlone(name, "one after the other");
    Play("do refuse");
    for (const char* name : {"a", "b"}) ExpectAsIfAlone(name, "after a refused one");
    Play("close");
    ExpectAsIfAlone("a", "after the other's end");
    EXPECT_EQ(SendMessageW(window, WM_CREATE, 0, 0), 0);
    Play("close; create a 240 180");
    ExpectAsIfAlone("a", "after one that was told twice of its creation");
}

TEST_F(WindowsTest, AWindowLeftWithoutAContextLivesAndComesBack) {
    Play("create a 240 180; settle");
    alone["a"] = FrameOf("a");
    const int before = SpiedGl().frames;
    // The window's own context, then the one that A was to get back.
    Play(
        "do refuse twice; move 100,90; wheel 120; click 100,90; size 100 100; size 240 180;"
        "paint; no repaint; home");
    EXPECT_EQ(SpiedGl().frames, before) << "there is nothing to draw with";
    Play("create b 130 220");
    ExpectAsIfAlone("a", "with a new context");
}

TEST_F(WindowsTest, AContextOfSmallerTexturesGetsSmallerTiles) {
    Play("create a; settle");
    SpiedGl().maxTextureSize = 64;
    SpiedGl().uploads.clear();
    Play("create b; settle tiles");
    for (const SpiedUpload& tile : SpiedGl().uploads) EXPECT_LE(tile.width, 64);
}

/// Another part of the program has a context of its own, current on this thread.
class ForeignContextTest : public WindowsTest {
protected:
    ForeignContextTest() {
        PIXELFORMATDESCRIPTOR wanted = {};
        wanted.nSize = sizeof wanted;
        wanted.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
        SetPixelFormat(dc_, ChoosePixelFormat(dc_, &wanted), &wanted);
        context = wglCreateContext(dc_);
        wglMakeCurrent(dc_, context);
        for (GLuint texture = 1; texture <= kTextures; ++texture)  // named like the map's
            glBindTexture(GL_TEXTURE_2D, texture);
        glMatrixMode(GL_TEXTURE);
        AddCity(L"Paris", L"France", 20.0, 20.0);
        Init();
    }
    ~ForeignContextTest() override {
        wglMakeCurrent(nullptr, nullptr);
        wglDeleteContext(context);
        DestroyWindow(window_);
    }

    /// Plays each action alone and looks at the foreign context after it.
    void PlayBeside(std::initializer_list<const char*> actions) {
        for (const char* action : actions) {
            Play(action);
            EXPECT_TRUE(wglGetCurrentContext() == context && wglGetCurrentDC() == dc_) << action;
            wglMakeCurrent(dc_, context);
            GLint mode = 0;
            GLint bound = 0;
            glGetIntegerv(GL_MATRIX_MODE, &mode);
            glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
            EXPECT_TRUE(mode == GL_TEXTURE && bound == kTextures) << action;
            EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << action;
        }
    }
    /// What may come to a window.
    void PlayAll() {
        PlayBeside({"size 100 80", "paint", "press 60,50", "release 60,50", "key l", "key h",
                    "key i", "key next", "tick repeat", "tick flight", "tick hover", "tick sun",
                    "stage 1 1", "city Paris", "wheel 120", "photos changed 0", "paint"});
    }

    HGLRC context = nullptr;

private:
    static constexpr GLint kTextures = 8;
    HWND window_ =
        CreateWindowW(L"static", L"", WS_POPUP, 0, 0, 64, 64, nullptr, nullptr, nullptr, nullptr);
    HDC dc_ = GetDC(window_);
};

TEST_F(ForeignContextTest, ItIsCurrentAgainAfterEveryMessage) {
    PlayBeside({"create a", "settle"});
    PlayAll();
    PlayBeside({"create b"});
    PlayAll();
    PlayBeside({"do refuse", "settle", "close", "install", "use a", "close", "do refuse"});
}

TEST_F(ForeignContextTest, NothingReachesItWhenTheMapsOwnCannotBeUsed) {
    Play("create a; settle; create b");
    using Hook = FakedImport<"wglMakeCurrent", decltype(wglMakeCurrent), ForeignContextTest>;
    const Hook onlyForeign(library.module, [&](HDC dc, HGLRC wanted) {
        return wanted == nullptr || wanted == context ? Hook::Real(dc, wanted) : FALSE;
    });
    PlayAll();
    EXPECT_EQ(CreateMap(), nullptr);
    PlayBeside({"close", "use a", "close"});
}

}  // namespace
