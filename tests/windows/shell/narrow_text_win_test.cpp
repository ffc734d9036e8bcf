#include "base/narrow_text_win.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

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
        {"one byte short of that", kWestern, L"Paris", -1, 5, "Pari"},
        {"a length counts characters", kWestern, L"Paris", 3, 16, "Par"},
        {"a length and a cut", kWestern, L"Paris", 4, 3, "Pa"},
        {"an umlaut is one western byte", kWestern, L"K\u00F6ln", -1, 16, "K\xF6ln"},
        {"room for nothing but the terminator", kWestern, L"Paris", -1, 1, ""},
        {"null", kWestern, nullptr, -1, 8, ""},
        {"empty", kWestern, L"", -1, 8, ""},
        {"length 0", kWestern, L"Paris", 0, 8, ""},
        {"two bytes a character", kJapanese, L"\u6771\u4EAC", -1, 8, "\x93\x8C\x8B\x9E"},
        {"no half of a two-byte character", kJapanese, L"\u6771\u4EAC", -1, 4, "\x93\x8C"},
        {"nor one after a single byte", kJapanese, L"A\u6771\u4EAC", -1, 5, "A\x93\x8C"},
        {"three bytes that do not fit", CP_UTF8, L"ab\u20AC", -1, 5, "ab"},
        {"a surrogate pair is one character", CP_UTF8, L"\xD83C\xDF0Dx", -1, 5, "\xF0\x9F\x8C\x8D"},
        {"and is not cut in two", CP_UTF8, L"a\xD83C\xDF0D", -1, 5, "a"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Narrow(c.codePage, c.text, c.length, c.capacity), c.bytes) << c.why;
    }
}

TEST(NarrowText, LongTextsKeepTheirFirstBytes) {
    const std::wstring text(5000, L'w');
    EXPECT_EQ(Narrow(kWestern, text.c_str(), -1, 2048), std::string(2047, 'w'));
    const std::wstring city(64, L'\u6771');
    EXPECT_EQ(Narrow(kJapanese, city.c_str(), 64, 64).size(), 62U) << "63 is odd: 31 characters";
}

TEST(NarrowText, UsesTheCodePageOfTheSystem) {
    char buffer[16];
    const wchar_t* text = L"\u00B0";
    const int written = NarrowText(text, -1, buffer, sizeof buffer);
    EXPECT_EQ(std::string(buffer), Narrow(GetACP(), text, -1, 16));
    EXPECT_EQ(static_cast<std::size_t>(written), std::strlen(buffer));
}

}  // namespace
