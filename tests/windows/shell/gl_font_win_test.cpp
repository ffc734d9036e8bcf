#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/gl.h"
#include "render/font_characters_win.h"
#include "render/gl_context_win.h"
#include "render/gl_font.h"
#include "render/list_name.h"
#include "window/window_font_win.h"
#include "windows/shell/small_window_win.h"

namespace {

/// One byte a pixel of the back buffer, rows from the bottom; not zero where something was drawn.
using Picture = std::vector<GLubyte>;

/// A real window with the map's own font selected, and pixel coordinates from its lower left.
class GlFontTest : public testing::Test {
protected:
    GlFontTest()
        : windowFont_(CreateMapFont(L"MS Sans Serif", -8, 0, 0, 0)),
          selected_(window_.Dc(), windowFont_.get()) {
        EXPECT_EQ(context_.Create(window_.Dc()), 0U);
        glMatrixMode(GL_PROJECTION);
        gluOrtho2D(0.0, SmallWindow::kWidth, 0.0, SmallWindow::kHeight);
        glMatrixMode(GL_MODELVIEW);
    }

    /// Places the raster position, runs `draw` and reads the picture.
    template <class Draw>
    static Picture Draws(float x, float y, const Draw& draw) {
        glClear(GL_COLOR_BUFFER_BIT);
        glRasterPos2f(x, y);
        draw();
        Picture picture(std::size_t{SmallWindow::kWidth} * SmallWindow::kHeight);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, SmallWindow::kWidth, SmallWindow::kHeight, GL_RED, GL_UNSIGNED_BYTE,
                     picture.data());
        return picture;
    }

    Picture TextAt(float x, const std::string& text) const {
        return Draws(x, 20.0F, [&] { font_.DrawText(x, 20.0F, 0.0F, text.c_str()); });
    }

    /// How far the list of `code` moves the raster position, pixels.
    float AdvanceOf(unsigned code) const {
        float after[4];
        glRasterPos2f(100.0F, 20.0F);
        glCallList(ListName(&font_) + code);
        glGetFloatv(GL_CURRENT_RASTER_POSITION, after);
        return after[0] - 100.0F;
    }

    /// What the font itself draws for one character, beside the lists under test.
    Picture CharacterPicture(wchar_t character) const {
        const GLuint list = 1;
        EXPECT_TRUE(wglUseFontBitmapsW(window_.Dc(), character, 1, list));
        const Picture picture = Draws(10.0F, 20.0F, [=] { glCallList(list); });
        glDeleteLists(list, 1);
        return picture;
    }

    SmallWindow window_;
    UniqueFont windowFont_;
    SelectedObject selected_;
    ExtensionFlags flags_;
    std::uint32_t lastSysError_ = 0;
    CGLContext context_{flags_, lastSysError_};
    CGLFont font_;  // after the context: its lists go first
};

bool HasPixels(const Picture& picture) {
    return std::any_of(picture.begin(), picture.end(), [](GLubyte pixel) { return pixel != 0; });
}

TEST_F(GlFontTest, EveryCodeAdvancesByItsMeasuredWidth) {
    ASSERT_TRUE(font_.Build(window_.Dc(), false));
    for (const unsigned blank : {0x20U, 0xA0U}) {
        EXPECT_GT(font_.charWidth[blank], 0);
        EXPECT_EQ(AdvanceOf(blank), static_cast<float>(font_.charWidth[blank])) << blank;
    }
    // Wine rounds a glyph's own advance and its measured width apart by up to a pixel.
    for (unsigned code = 32; code < kGlyphCount; ++code) {
        EXPECT_NEAR(AdvanceOf(code), font_.charWidth[code], 1.0F) << "code " << code;
    }
}

TEST_F(GlFontTest, WordsDoNotRunTogether) {
    ASSERT_TRUE(font_.Build(window_.Dc(), false));
    const Picture words = TextAt(10.0F, "A B");
    const Picture first = TextAt(10.0F, "A");
    const float secondX = 10.0F + AdvanceOf('A') + static_cast<float>(font_.GetTextWidth(" "));
    Picture expected = TextAt(secondX, "B");
    ASSERT_TRUE(HasPixels(first));
    ASSERT_TRUE(HasPixels(expected));
    std::transform(expected.begin(), expected.end(), first.begin(), expected.begin(),
                   [](GLubyte a, GLubyte b) { return std::max(a, b); });
    EXPECT_TRUE(words == expected);
}

TEST_F(GlFontTest, BuildingAndDrawingLeaveNoError) {
    ASSERT_TRUE(font_.Build(window_.Dc(), false));
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    for (unsigned code = 0; code < kGlyphCount; ++code) glCallList(ListName(&font_) + code);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_F(GlFontTest, BuildingKeepsTheStateThatItUses) {
    glMatrixMode(GL_TEXTURE);
    glRasterPos2f(33.0F, 44.0F);
    ASSERT_TRUE(font_.Build(window_.Dc(), false));
    GLint mode = 0;
    GLint modelDepth = 0;
    GLint projectionDepth = 0;
    float raster[4];
    float projection[16];
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &modelDepth);
    glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &projectionDepth);
    glGetFloatv(GL_CURRENT_RASTER_POSITION, raster);
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    EXPECT_EQ(mode, GL_TEXTURE);
    EXPECT_EQ(modelDepth, 1);
    EXPECT_EQ(projectionDepth, 1);
    EXPECT_NEAR(raster[0], 33.0F, 0.01F);
    EXPECT_NEAR(projection[0], 2.0F / SmallWindow::kWidth, 1e-6F);
}

TEST_F(GlFontTest, MeasuresAgreeWithGdi) {
    ASSERT_TRUE(font_.Build(window_.Dc(), false));
    const std::string text = "Lat 48N";
    SIZE size;
    ASSERT_TRUE(
        GetTextExtentPoint32A(window_.Dc(), text.c_str(), static_cast<int>(text.size()), &size));
    EXPECT_EQ(font_.GetTextWidth(text.c_str()), size.cx);
    EXPECT_EQ(font_.GetHeight(), size.cy);
}

TEST_F(GlFontTest, EachBytesListShowsWhatTheCodePageMeans) {
    ASSERT_TRUE(font_.Build(window_.Dc(), false));
    for (const unsigned code : {0x41U, 0x80U, 0x85U, 0xB0U, 0xC0U, 0xE4U, 0xFEU}) {
        const Picture drawn = Draws(10.0F, 20.0F, [&] { glCallList(ListName(&font_) + code); });
        EXPECT_TRUE(drawn == CharacterPicture(CharacterOfCode(GetACP(), code))) << "code " << code;
        EXPECT_TRUE(HasPixels(drawn)) << "code " << code;
    }
    EXPECT_TRUE(Draws(10.0F, 20.0F, [&] { glCallList(ListName(&font_) + 0xB0); }) ==
                CharacterPicture(L'\u00B0'));
}

TEST(CharacterOfCode, FollowsSingleByteCodePagesOnly) {
    const struct {
        const char* why;
        UINT codePage;
        unsigned code;
        wchar_t character;
    } cases[] = {
        {"ASCII is ASCII", 1251, 'A', L'A'},
        {"the euro sign of western Windows", 1252, 0x80, L'\u20AC'},
        {"Latin-1 needs nothing", 1252, 0xE4, L'\u00E4'},
        {"a Cyrillic capital", 1251, 0xC0, L'\u0410'},
        {"the last code with a list", 1251, 0xFE, L'\u044E'},
        {"the degree sign of the readout stays", 874, 0xB0, L'\u00B0'},
        {"255 has no list", 1251, 0xFF, L'\u00FF'},
        {"a byte without a character", 1253, 0xD2, L'\u00D2'},
        {"Japanese has two bytes a character", 932, 0xB1, L'\u00B1'},
        {"UTF-8 has more", CP_UTF8, 0xC3, L'\u00C3'},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CharacterOfCode(c.codePage, c.code), c.character) << c.why;
}

TEST_F(GlFontTest, ListsComeAndGoWithTheFont) {
    const GLuint base = ListName(&font_);
    for (const char* round : {"first", "again"}) {
        ASSERT_TRUE(font_.Build(window_.Dc(), false)) << round;
        EXPECT_TRUE(glIsList(base) && glIsList(base + ' ') && glIsList(base + 254)) << round;
        EXPECT_FALSE(glIsList(base + 255)) << "the last code has none";
    }
    font_.Release();
    EXPECT_FALSE(font_.built);
    for (GLuint code = 0; code < 256; ++code) EXPECT_FALSE(glIsList(base + code));
}

TEST_F(GlFontTest, OutlinesCarryTheirMetrics) {
    const UniqueFont scalable = CreateMapFont(L"Arial", 0, 24, 0, 0);
    const SelectedObject selected(window_.Dc(), scalable.get());
    ASSERT_TRUE(font_.Build(window_.Dc(), true));
    EXPECT_TRUE(font_.outline);
    EXPECT_GT(font_.glyphMetrics['A'].gmfCellIncX, 0.0F);
    EXPECT_GT(font_.glyphMetrics['W'].gmfCellIncX, font_.glyphMetrics['i'].gmfCellIncX);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_F(GlFontTest, WithoutAContextTheMeasuresAreStillTaken) {
    context_.Destroy();
    font_.Build(window_.Dc(), false);
    EXPECT_GT(font_.GetTextWidth("A"), 0);
    EXPECT_GT(font_.GetHeight(), 0);
}

TEST_F(GlFontTest, ADcThatIsNoneGivesNoLists) {
    EXPECT_FALSE(font_.Build(nullptr, false));
    EXPECT_FALSE(font_.built);
    EXPECT_FALSE(glIsList(ListName(&font_) + 'A'));
    EXPECT_EQ(font_.GetHeight(), 0);
}

}  // namespace
