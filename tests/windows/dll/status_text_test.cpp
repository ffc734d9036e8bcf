// What the window writes, and the detail that it chooses by its own speed and by the settings.
#include <gmock/gmock.h>

#include <atomic>

#include "support/map_play_win.h"

namespace {

using testing::Contains;
using testing::HasSubstr;

/// A library whose pictures take as long as the test says.
class StatusTextTest : public MapPlay {
protected:
    DWORD frameMs = 50;  ///< between two looks at the clock; a picture takes two
    DWORD now = 0;
    FakedImport<"GetTickCount", decltype(GetTickCount)> clock{library.module,
                                                              [this] { return now += frameMs; }};
};

TEST_F(StatusTextTest, KeyFShowsHowLongThePaintingTook) {
    Play("open; labels none; no repaint; key f");
    const std::pair<DWORD, const char*> cases[] = {
        {40, "25.0 FPS"}, {300, "3.3 FPS"}, {1, "1000.0 FPS"}, {0, "FPS N/A"}};
    for (const auto& [ms, text] : cases) {
        frameMs = ms;
        Play(std::string("paint; labels ") + text + "; repaint", "the rate is followed");
    }
    Play("key f; labels none; no repaint");
}

TEST_F(StatusTextTest, LoadingAndSplittingAreShownInRedWhileTheyRun) {
    using Allocate = FakedImport<"malloc", void*(std::size_t)>;
    const DWORD windowThread = GetCurrentThreadId();
    std::atomic<bool> splits = false;
    std::atomic<bool> mayGo = false;
    const Allocate slow(library.module, [&](std::size_t bytes) {
        if (workers.started == 2 && GetCurrentThreadId() != windowThread) {
            splits = true;
            while (!mayGo) Sleep(1);
        }
        return Allocate::Real(bytes);
    });
    Play("cities; hold decode; create a; held; labels Loading texture...; go");
    EXPECT_TRUE(PumpUntil([&] { return splits.load(); }));
    Play("labels Rescaling and splitting textures...");
    EXPECT_EQ(Look().texts.back().colour, (SeenColour{1.0, 0.0, 0.0, 1.0}));
    mayGo = true;
    Play("settle; labels none");
}

TEST_F(StatusTextTest, SlowPicturesLowerTheDetailStepByStep) {
    // Ten pictures a second are enough.
    for (const auto& [ms, loads, factor] : {std::tuple(100UL, 1, " 100%"), {150UL, 4, " 800%"}}) {
        frameMs = ms;
        PutSettings("lag_factor=1\r\n");
        Play("close");
        library.FreeMap();
        Play("cities; tiles any; create a; settle; no repaint; key i");
        EXPECT_THAT(Labels(), Contains(HasSubstr(factor)));
        Play("key i; tiles " + std::to_string(loads), "each step loads anew");
    }
}

TEST_F(StatusTextTest, SettingsReachTheWindow) {
    const std::tuple<const char*, GLint, GLint, const char*> cases[] = {
        {"lag_factor=99\r\ntexScalerX=-9\r\ntexScalerY=0\r\ntex_compression=1\r\n", 128, 0x84ED,
         "per. factor: 800%, atmo layers: 1, slices: 36, stacks 30, "
         "texture size 16x32(max 512x256)"},
        {"tex_compression=0\r\n", 128, 3, "per. factor: 800%"},  // what is missing stays
        {"", -1, 3, "(max 512x256)"},                            // OpenGL does not answer
    };
    for (const auto& [settings, textureSize, format, line] : cases) {
        SpiedGl().maxTextureSize = textureSize;
        PutSettings(settings);
        Play("close");
        library.FreeMap();
        Play("open; key i");
        EXPECT_THAT(Labels(), Contains(HasSubstr(line)));
        EXPECT_EQ(SpiedGl().uploads.back().internalFormat, format);
        Key(window, 'I');
    }
}

TEST_F(StatusTextTest, WordsAreDrawnAndStandApartByTheirSpacesInEveryLanguage) {
    std::map<std::string, float> advances;
    using CallLists = FakedImport<"glCallLists", decltype(glCallLists)>;
    const CallLists measure(library.module, [&](GLsizei count, GLenum type, const GLvoid* codes) {
        GLfloat from[4] = {};
        GLfloat to[4] = {};
        glGetFloatv(GL_CURRENT_RASTER_POSITION, from);
        CallLists::Real(count, type, codes);
        glGetFloatv(GL_CURRENT_RASTER_POSITION, to);
        const std::string text(static_cast<const char*>(codes), static_cast<GLuint>(count));
        advances[text] = to[0] - from[0];
    });
    std::wstring said;  // the code page of the user's language; nothing when Windows does not say
    const FakedImport<"GetLocaleInfoW", decltype(GetLocaleInfoW)> locale(
        library.module, [&](LCID, LCTYPE, wchar_t* text, int) {
            text[said.copy(text, 9)] = L'\0';
            return said.empty() ? 0 : static_cast<int>(said.size()) + 1;
        });
    LOGFONTW wanted = {};
    using MakeFont = FakedImport<"CreateFontIndirectW", decltype(CreateFontIndirectW)>;
    const MakeFont fonts(library.module, [&](const LOGFONTW* font) {
        wanted = *font;
        return MakeFont::Real(font);
    });
    for (const wchar_t* codePage : {L"1251", L"65001", L"x", L""}) {
        said = codePage;
        Play("close");
        library.FreeMap();
        Play("open; wheel 32767; key i; paint");
        EXPECT_EQ(wanted.lfWidth, -8);
        EXPECT_EQ(wanted.lfCharSet == RUSSIAN_CHARSET, said == L"1251");
        for (const std::string text : {"Renderer: ", ", Version: "})
            EXPECT_NEAR(advances[text], WidthOf(text), WidthOf(" ")) << text;
        Key(window, 'I');
        for (const GLenum stack : {GL_MODELVIEW_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH}) {
            GLint depth = 0;
            glGetIntegerv(stack, &depth);
            EXPECT_EQ(depth, 1) << "building the lists leaves no matrix behind";
        }
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    }
}

}  // namespace
