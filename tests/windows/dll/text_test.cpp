// Words on the globe: where their glyphs stand in the picture, and what the driver's own texts do.
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

constexpr int kWidth = 900;
constexpr int kHeight = 300;

/// A text and where its first glyph begins, window pixels.
struct DrawnText {
    std::string text;
    int x = 0;
    int y = 0;
};

class TextTest : public MapHostTest {
protected:
    TextTest() {
        PutPatternMap(64, 32);
        PutSettings("lag_factor=8\r\n");
        SpiedGl().keepCalls = false;
        SpiedGl().keepFrame = true;
    }

    /// A window with its tiles and the globe far away, clear of the lines at the bottom.
    HWND CreateTextMap() {
        Init();
        const HWND window = CreateMap(kWidth, kHeight);
        EXPECT_TRUE(WaitForTiles());
        constexpr WORD kFarAway = 0x10000 - 100 * WHEEL_DELTA;  // a negative number of notches
        SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, kFarAway), 0);
        return window;
    }
    const SpiedFrame& FrameOf(HWND window) {
        drawn.clear();
        Paint(window);
        return SpiedGl().frame;
    }

    /// Whether a white pixel stands in column `x` of the line of text whose baseline is `y`.
    static bool HasInk(const SpiedFrame& frame, int x, int y) {
        for (int row = std::max(y - 3, 0); row < y + 13; ++row) {
            const unsigned char* pixel = frame.At(x, row);
            if (pixel[0] == 255 && pixel[1] == 255 && pixel[2] == 255) return true;
        }
        return false;
    }

    std::vector<DrawnText> drawn;  ///< of the last frame

private:
    using CallLists = FakedImport<"glCallLists", decltype(glCallLists)>;
    const CallLists recordTexts_{
        library.module, [this](GLsizei count, GLenum type, const GLvoid* codes) {
            GLfloat at[4] = {};
            glGetFloatv(GL_CURRENT_RASTER_POSITION, at);
            drawn.push_back({{static_cast<const char*>(codes), static_cast<std::size_t>(count)},
                             static_cast<int>(at[0]),
                             static_cast<int>(at[1])});
            CallLists::Real(count, type, codes);
        }};
};

/// The gaps between the words of a text as blanks, in pixels.
std::vector<int> MeasuredGaps(HDC dc, const std::string& text) {
    SIZE blank = {};
    GetTextExtentPoint32A(dc, " ", 1, &blank);
    std::vector<int> gaps;
    bool inGap = true;  // what stands before the first word is no gap
    for (const char c : text) {
        if (c == ' ' && !inGap) gaps.push_back(0);
        inGap = c == ' ';
        if (inGap && !gaps.empty()) gaps.back() += blank.cx;
    }
    return gaps;
}

TEST_F(TextTest, WordsStandApartByTheirBlanks) {
    constexpr int kBearing = 6;  // clear columns beside two glyphs, at most
    SpiedGl().renderer = "One Two  Three of a   kind";
    const HWND window = CreateTextMap();
    Key(window, 'I');
    const SpiedFrame& frame = FrameOf(window);
    GLint depths[2] = {};
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depths[0]);
    glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &depths[1]);
    EXPECT_EQ(depths[0] + depths[1], 2) << "building the lists leaves no matrix behind";
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    const HDC dc = GetDC(window);
    int seen = 0;
    for (const DrawnText& t : drawn) {
        if (t.text != SpiedGl().renderer && !t.text.starts_with("Lat ")) continue;
        ++seen;
        const std::vector<int> measured = MeasuredGaps(dc, t.text);
        std::vector<int> gaps;
        SIZE size = {};
        GetTextExtentPoint32A(dc, t.text.c_str(), static_cast<int>(t.text.size()), &size);
        int clear = 0;  // columns; within a word never more than a blank has
        for (int x = t.x; x < t.x + size.cx; ++x, ++clear) {
            if (!HasInk(frame, x, t.y)) continue;
            if (clear > measured.front() && x > t.x + kBearing) gaps.push_back(clear);
            clear = -1;
        }
        ASSERT_EQ(gaps.size(), measured.size()) << t.text;
        for (std::size_t i = 0; i < gaps.size(); ++i) {
            EXPECT_GT(gaps[i], measured[i]) << t.text << ", gap " << i;
            EXPECT_LE(gaps[i], measured[i] + kBearing) << t.text << ", gap " << i;
        }
    }
    EXPECT_EQ(seen, 2);
    ReleaseDC(window, dc);
}

TEST_F(TextTest, UsersWithoutAnAnsiCodePageReadTheSame) {
    using LocaleInfo = FakedImport<"GetLocaleInfoW", decltype(GetLocaleInfoW)>;
    std::wstring answer;
    const LocaleInfo locale(library.module, [&](LCID, LCTYPE, wchar_t* text, int room) {
        const int length = static_cast<int>(answer.size()) + 1;
        if (length > room) return 0;
        std::copy_n(answer.c_str(), length, text);
        return length;
    });
    // "0" is what Windows says for languages that have none; the others nobody should say.
    for (const wchar_t* said : {L"0", L"65001", L"", L"x", L"99999999", L"9999999999"}) {
        answer = said;
        const int before = locale.Calls();
        const HWND window = CreateTextMap();
        const SpiedFrame& frame = FrameOf(window);
        EXPECT_GT(locale.Calls(), before);
        ASSERT_FALSE(drawn.empty());
        EXPECT_TRUE(drawn.front().text.starts_with("Lat ")) << drawn.front().text;
        int ink = 0;
        for (int x = drawn.front().x; x < drawn.front().x + 150; ++x)
            ink += HasInk(frame, x, drawn.front().y) ? 1 : 0;
        EXPECT_GT(ink, 30);
        DestroyWindow(window);
        library.FreeMap();
    }
}

}  // namespace
