// Texts on their way into byte strings and glyph lists: code pages of one byte and of more.
#include "base/narrow_text.h"

#include <gtest/gtest.h>

#include <string>

#include "render/gl_font.h"

namespace {

constexpr UINT kWestern = 1252;
constexpr UINT kJapanese = 932;

std::string Narrow(UINT codePage, const wchar_t* text, int length, int capacity) {
    std::string buffer(static_cast<std::size_t>(capacity) + 4, '#');
    const int written = NarrowTextIn(codePage, text, length, buffer.data(), capacity);
    EXPECT_LT(written, capacity);
    EXPECT_EQ(buffer[static_cast<std::size_t>(written)], '\0');
    EXPECT_EQ(buffer.substr(static_cast<std::size_t>(capacity)), "####") << "wrote past the end";
    return buffer.substr(0, static_cast<std::size_t>(written));
}

TEST(NarrowText, ConvertsWholeTextsAndCutsLongOnesBetweenCharacters) {
    const struct {
        const char* why;
        UINT codePage;
        const wchar_t* text;
        int length;
        int capacity;
        const char* bytes;
    } cases[] = {
        {"fits with its terminator to the byte", kWestern, L"Paris", -1, 6, "Paris"},
        {"a length and a cut", kWestern, L"Paris", 4, 3, "Pa"},
        {"an umlaut is one western byte", kWestern, L"K\u00F6ln", -1, 16, "K\xF6ln"},
        {"room for nothing but the terminator", kWestern, L"Paris", -1, 1, ""},
        {"null", kWestern, nullptr, -1, 8, ""},
        {"length 0", kWestern, L"Paris", 0, 8, ""},
        {"no half of a two-byte character", kJapanese, L"A\u6771\u4EAC", -1, 5, "A\x93\x8C"},
        {"a surrogate pair is one character", CP_UTF8, L"\xD83C\xDF0Dx", -1, 5, "\xF0\x9F\x8C\x8D"},
        {"and is not cut in two", CP_UTF8, L"a\xD83C\xDF0D", -1, 5, "a"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Narrow(c.codePage, c.text, c.length, c.capacity), c.bytes) << c.why;
    }
    const std::wstring text(5000, L'w');
    EXPECT_EQ(Narrow(kWestern, text.c_str(), -1, 2048), std::string(2047, 'w'));
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
        {"the last code with a list", 1251, 0xFE, L'\u044E'},
        {"the degree sign of the readout stays", 874, 0xB0, L'\u00B0'},
        {"255 has no list", 1251, 0xFF, L'\u00FF'},
        {"a byte without a character", 1253, 0xD2, L'\u00D2'},
        {"Japanese has two bytes a character", 932, 0xB1, L'\u00B1'},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CharacterOfCode(c.codePage, c.code), c.character) << c.why;
}

}  // namespace
