// Texts on their way into byte strings and glyph lists: code pages of one byte and of more.
#include "base/narrow_text.h"

#include <gtest/gtest.h>

#include "base/windows_types.h"
#include "render/gl_font.h"

namespace {

TEST(NarrowText, ConvertsWholeTextsAndCutsLongOnesBetweenCharacters) {
    const struct {
        const char* why;
        UINT codePage;
        const wchar_t* text;
        int length, capacity;
        const char* bytes;
    } cases[] = {
        {"fits with its terminator to the byte", 1252, L"Paris", -1, 6, "Paris"},
        {"a length and a cut", 1252, L"Paris", 4, 3, "Pa"},
        {"an umlaut is one western byte", 1252, L"K\u00F6ln", -1, 9, "K\xF6ln"},
        {"room for nothing but the terminator", 1252, L"Paris", -1, 1, ""},
        {"null", 1252, nullptr, -1, 8, ""},
        {"length 0", 1252, L"Paris", 0, 8, ""},
        {"no half of a two-byte character", 932, L"A\u6771\u4EAC", -1, 5, "A\x93\x8C"},
        {"a surrogate pair is one character", CP_UTF8, L"\xD83C\xDF0Dx", -1, 5, "\xF0\x9F\x8C\x8D"},
        {"and is not cut in two", CP_UTF8, L"a\xD83C\xDF0D", -1, 5, "a"},
    };
    for (const auto& c : cases) {
        char buffer[16] = "###############";
        const int written = NarrowTextIn(c.codePage, c.text, c.length, buffer, c.capacity);
        EXPECT_STREQ(buffer, c.bytes) << c.why;
        EXPECT_EQ(written, lstrlenA(c.bytes)) << c.why;
        EXPECT_EQ(buffer[c.capacity], '#') << c.why;
    }
}

TEST(CharacterOfCode, FollowsSingleByteCodePagesOnly) {
    EXPECT_EQ(CharacterOfCode(1251, 0xFE), L'\u044E') << "the last code with a list";
    EXPECT_EQ(CharacterOfCode(1251, 0xFF), L'\u00FF') << "255 has none";
    EXPECT_EQ(CharacterOfCode(874, 0xB0), L'\u00B0') << "the degree sign of the readout stays";
    EXPECT_EQ(CharacterOfCode(1253, 0xD2), L'\u00D2') << "a byte without a character";
    EXPECT_EQ(CharacterOfCode(932, 0xB1), L'\u00B1') << "Japanese has two bytes a character";
}

}  // namespace
