#include "window/window_font_win.h"

#include <gtest/gtest.h>

namespace {

TEST(MakeLogFont, TurnsPointsIntoPixelsAndKeepsLogicalUnits) {
    const WindowDc screen(nullptr);
    const int dpiX = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    const int dpiY = GetDeviceCaps(screen.Get(), LOGPIXELSY);
    const struct {
        const char* why;
        int width, height, storedWidth, storedHeight;
    } cases[] = {
        {"the map's own font: eight units wide, default height", -8, 0, -8, 0},
        {"an inch of points", 72, 72, -dpiX, -dpiY},
        {"parts of a pixel are dropped", 0, 7, 0, -(dpiY * 7 / 72)},
        {"a negative height stands", 0, -13, 0, -13},
    };
    for (const auto& c : cases) {
        LOGFONTW font;
        ASSERT_TRUE(MakeLogFont(L"Arial", c.width, c.height, 0, 0, font));
        EXPECT_EQ(font.lfWidth, c.storedWidth) << c.why;
        EXPECT_EQ(font.lfHeight, c.storedHeight) << c.why;
    }
}

TEST(MakeLogFont, TakesBoldFromTheStyleOnlyWithoutAWeight) {
    const struct {
        int weight;
        unsigned style;
        LONG stored;
        bool italic, underline, strikeOut;
    } cases[] = {
        {0, 0, 0, false, false, false},
        {0, kFontBold, 700, false, false, false},
        {300, kFontBold, 300, false, false, false},
        {0, kFontItalic, 0, true, false, false},
        {0, kFontUnderline, 0, false, true, false},
        {400, 15, 400, true, true, true},
        {0, kFontStrikeOut, 0, false, false, true},
    };
    for (const auto& c : cases) {
        LOGFONTW font;
        ASSERT_TRUE(MakeLogFont(L"Arial", 0, 0, c.weight, c.style, font));
        EXPECT_EQ(font.lfWeight, c.stored) << c.style;
        EXPECT_EQ(font.lfItalic != 0, c.italic) << c.style;
        EXPECT_EQ(font.lfUnderline != 0, c.underline) << c.style;
        EXPECT_EQ(font.lfStrikeOut != 0, c.strikeOut) << c.style;
    }
}

}  // namespace
