// Words on the globe: there are glyphs, they move on as far as the font says, spaces included, and
// neither depends on what Windows says about the user's language.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

/// A text, where its first glyph begins and how far it moved on, window pixels.
struct DrawnText {
    std::string text;
    int x = 0;
    int y = 0;
    float advance = 0.0F;
};

struct TextTest : MapHostTest {
    std::vector<DrawnText> drawn;

    using CallLists = FakedImport<"glCallLists", decltype(glCallLists)>;
    const CallLists recordTexts{
        library.module, [this](GLsizei count, GLenum type, const GLvoid* codes) {
            GLfloat from[4] = {};
            GLfloat to[4] = {};
            glGetFloatv(GL_CURRENT_RASTER_POSITION, from);
            CallLists::Real(count, type, codes);
            glGetFloatv(GL_CURRENT_RASTER_POSITION, to);
            drawn.push_back({{static_cast<const char*>(codes), static_cast<std::size_t>(count)},
                             static_cast<int>(from[0]),
                             static_cast<int>(from[1]),
                             to[0] - from[0]});
        }};
    std::wstring codePage;  ///< what Windows says that the user's language has
    using LocaleInfo = FakedImport<"GetLocaleInfoW", decltype(GetLocaleInfoW)>;
    const LocaleInfo locale{library.module, [this](LCID, LCTYPE, wchar_t* text, int room) {
                                const int length = static_cast<int>(codePage.size()) + 1;
                                if (length > room) return 0;
                                std::copy_n(codePage.c_str(), length, text);
                                return length;
                            }};

    static int WhitePixels(const DrawnText& text) {
        int white = 0;
        for (int x = text.x; x < text.x + 150; ++x) {
            for (int y = std::max(text.y - 3, 0); y < text.y + 13; ++y) {
                const unsigned char* pixel = SpiedGl().frame.At(x, y);
                white += std::min({pixel[0], pixel[1], pixel[2]}) == 255;
            }
        }
        return white;
    }
};

TEST_F(TextTest, WordsStandApartByTheirSpacesInEveryLanguage) {
    PutPatternMap(64, 32);
    PutSettings("lag_factor=8\r\n");
    SpiedGl().keepCalls = false;
    SpiedGl().keepFrame = true;
    SpiedGl().renderer = "One Two  Three of a   kind";
    // "0" is what Windows says for languages that have none; the last three nobody should say.
    constexpr WORD kFarAway = 0x10000 - 100 * WHEEL_DELTA;  // a negative number of notches
    for (const wchar_t* said : {L"1252", L"0", L"65001", L"x", L"9999999999"}) {
        codePage = said;
        Init();
        SpiedGl().uploads.clear();
        const int before = locale.Calls();
        const HWND window = CreateMap(900, 300);
        EXPECT_GT(locale.Calls(), before);
        EXPECT_TRUE(WaitForTiles());
        // The globe far away, clear of the lines at the bottom.
        SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, kFarAway), 0);
        Key(window, 'I');
        drawn.clear();
        Paint(window);
        GLint depths[2] = {};
        glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depths[0]);
        glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &depths[1]);
        EXPECT_EQ(depths[0] + depths[1], 2) << "building the lists leaves no matrix behind";
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
        ASSERT_GT(drawn.size(), 3U);
        EXPECT_EQ(drawn[0].text.find("Lat "), 0U) << drawn[0].text;
        EXPECT_GT(WhitePixels(drawn[0]), 100) << testing::PrintToString(codePage);
        EXPECT_EQ(drawn[3].text, SpiedGl().renderer);
        const HDC dc = GetDC(window);
        SIZE space = {};
        GetTextExtentPoint32A(dc, " ", 1, &space);
        for (const DrawnText* t : {&drawn[0], &drawn[3]}) {
            SIZE size = {};
            GetTextExtentPoint32A(dc, t->text.c_str(), static_cast<int>(t->text.size()), &size);
            const auto spaces = std::count(t->text.begin(), t->text.end(), ' ');
            // Fonts round the widths of letters each in its own way; lost spaces would cost more.
            EXPECT_NEAR(t->advance, size.cx, static_cast<double>(spaces * space.cx) / 2) << t->text;
        }
        ReleaseDC(window, dc);
        Key(window, 'I');
        DestroyWindow(window);
        library.FreeMap();
    }
}

}  // namespace
