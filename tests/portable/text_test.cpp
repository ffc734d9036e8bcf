// Texts that are read, cut or formed: UTF-8, escapes, keys and unit words of language files,
// command lines, code pages and coordinates.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "api/command_line_folder.h"
#include "base/wide_text.h"
#include "globe/lat_long_text.h"
#include "host/lang_escapes.h"
#include "host/language_code.h"
#include "host/unit_words.h"
#include "window/map_font.h"

namespace {

TEST(WideText, ReadsWellFormedUtf8OnlyAndCutsBetweenCharacters) {
    const WideString all = u"a\u00E9\u20AC\U0001F600\U0010FFFF";
    WideString text;
    ASSERT_TRUE(WidenUtf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF", text));
    EXPECT_EQ(text, all);
    // Latin-1, cut short, a following byte alone, the last of two and of three bytes in one more,
    // both kinds of surrogates, beyond the last character, five bytes, a start inside a character.
    for (const char* bytes :
         {"caf\xE9", "a\xE2\x82", "\x82", "\xC0\xAF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",
          "\xED\xA0\x80", "\xED\xB0\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE2\x82x"})
        EXPECT_TRUE(!WidenUtf8(bytes, text) && text == all) << bytes;
    EXPECT_TRUE(Truncate(u"harbour", 3) == u"har" && Truncate(u"harbour", 7) == u"harbour");
    EXPECT_EQ(Truncate(u"a\U00010400", 2), u"a") << "half a pair would be no character";
    EXPECT_EQ(Truncate(u"a\U0001F600\U0001F600", 3), u"a\U0001F600");
}

/// Reads `length` characters of `text` in a block of exactly that size, so that the sanitizer sees
/// each step over the end; below 0: the whole text with its terminator.
WideString Unescaped(const WideString& text, std::int32_t length) {
    const std::size_t size = length < 0 ? text.size() + 1 : std::size_t(length);
    std::vector<HorivoWideChar> block(text.data(), text.data() + size);
    const auto end = std::size_t(Unescape(block.data(), length));
    EXPECT_TRUE(end == block.size() || block.at(end) == u'\0');
    return {block.data(), end};
}

TEST(LanguageTexts, ResolveEscapesAndKeepTheirOddities) {
    const std::tuple<WideString, int, WideView> cases[] = {
        {u"\\\\n\\r\\n", -1, u"\\n\r\n"},  // an escaped backslash escapes nothing
        {u"a\\txyz", -1, u"a\t\\yz"},      // a tab keeps its backslash and costs a character
        {u"\\t\\n", -1, u"\t\\n"},         // that may be a backslash,
        {u"a\\txy", 3, u"a\t\\"},          // but not beyond the length
        {u"\\a\\ü", -1, u"aaüü"},          // any other comes twice
        {u"ab\\nc", 3, u"ab\\"},           // the last within the length escapes nothing
        {{u"a\0\\n", 4}, 4, u"a"}};
    for (const auto& [text, length, result] : cases) EXPECT_EQ(Unescaped(text, length), result);
    // Of a key that is too long, the characters of the text are counted.
    WideString keys[][2] = {{u"Recent &files...\tCtrl+0", u"Recent_files...Ctrl0"},
                            {u"a-b_c.d=e[f];9 Größe 地", u"a-b_c.def9_Gre_"},
                            {WideString(255, u'&') + u"xy", u"x"}};
    for (auto& [text, key] : keys) {
        MenuKey(text.data());
        EXPECT_EQ(WideString(text.c_str()), key);
    }
}

TEST(LanguageFileCode, IsTheInternationalOneWhereWindowsHasAnother) {
    const WideString cases[][2] = {
        {u"DEU", u"de"}, {u"IND", u"id"}, {u"MRI", u"mi"}, {u"MLT", u"mt"}, {u"TSN", u"tn"},
        {u"SMJ", u"se"}, {u"MON", u"mn"}, {u"jPn", u"ja"}, {u"DIV", u"dv"}, {u"MAR", u"mr"},
        {u"KAN", u"kn"}, {u"MYM", u"ml"}, {u"AZ", u"az"},  {u"d", u""}};
    for (const auto& [abbrev, code] : cases)
        EXPECT_EQ(WideString(LanguageFileCode(abbrev.c_str()).data()), code);
}

TEST(UnitWords, FollowTheRulesOfALanguageAndKeepWhatStandsBeforeAFault) {
    const WideString russian = u"дней;1,21,31,41,51,61,71,81,91 день;2-4,22-24,32-34,92-94 дня";
    WideString hundredAndOne = u"x;0";
    for (int i = 1; i <= 100; ++i) hundredAndOne += u",7";
    const std::tuple<WideString, std::uint32_t, WideString, int> cases[] = {
        {russian, 11, u"дней", 13},
        {russian, 1094, u"дня", 13},                // the last two digits decide
        {u"x;1,5-7,9 y", 6, u"y", 3},               // a list goes on behind a comma
        {u"x;0-99 y;5 z", 5, u"z", 2},              // the last range wins
        {u"x;1,5-3 y", 1, u"y", 1},                 // a turned range ends the list,
        {u"x;1,100 y;2 z", 2, u"z", 2},             // so does a number too large,
        {u"x;1,4294967301 y", 1, u"y", 1},          // also one that 32 bits would take for 5,
        {u"x;1-9 y;2,a z;3 z", 2, u"x", 2},         // a letter in the list ends the table
        {u"x;1 ;2 z", 1, u"", 2},                   // an empty word is a word
        {hundredAndOne + u" y;8 z", 8, u"x", 100},  // no room for ranges of a further group,
        {hundredAndOne + u" y;8 z", 0, u"y", 100},  // but for those before
        {u"x;1 " + WideString(60000, u'y'), 1, WideString(kUnitChars - 3, u'y'), 1},
        {u"x;1 " + WideString(kUnitChars - 3, u'y') + u";2 z", 2, u"x", 1}};
    for (const auto& [text, number, word, count] : cases) {
        auto file = std::make_unique<CLangFile>();
        ParseUnitTable(*file, 4, u"weeks");
        ParseUnitTable(*file, 3, u"old;1 eins;2 zwei");  // no word of an earlier table stays
        ParseUnitTable(*file, 3, text.c_str());
        EXPECT_EQ(WideString(UnitWord(*file, 4, 1)), u"weeks") << "the table behind was touched";
        EXPECT_EQ(WideString(UnitWord(*file, 3, number)), word) << number;
        EXPECT_EQ(file->unitCount[3], count) << number;
    }
    WideString words;
    for (std::uint32_t table = 0; table < 5; ++table) words += UnitWord(CLangFile(), table, 1);
    EXPECT_EQ(words, u"smhdw");
    EXPECT_EQ(UnitWord(CLangFile(), 5, 1), nullptr);
}

TEST(FolderOfCommandLine, IsWhatStandsBeforeTheLastBackslashAndFitsAPath) {
    // Arguments behind the quote do not count, unquoted ones do; a name needs a folder.
    const std::wstring longest = std::wstring(258, L'd') + L"\\";
    const std::pair<std::wstring, std::wstring> cases[] = {
        {LR"("C:\a b\c.exe" x\y)", L"C:\\a b\\"},
        {LR"("C:\a b\c.exe)", L"C:\\a b\\"},
        {LR"(C:\b.exe "d\e")", LR"(C:\b.exe "d\)"},
        {LR"( "C:\a\b")", LR"( "C:\a\)"},
        {L"\"", L""},
        {LR"(\clock.exe)", L""},
        {LR"("\clock.exe")", L""},
        {longest + L"clock.exe", longest},
        {L"d" + longest + L"clock.exe", L""}};
    for (const auto& [line, folder] : cases) EXPECT_EQ(FolderOfCommandLine(line), folder);
}

TEST(CodePage, IsReadFromDigitsAndHasACharacterSet) {
    EXPECT_TRUE(ParseCodePage(L"932 (Japan)") == 932 && ParseCodePage(L"65535") == 65535);
    for (const auto* none : {L"-1", L"65536", L"4294968547"}) EXPECT_EQ(ParseCodePage(none), 0U);
    // As in wingdi.h; 0, the screen's own, for none, for UTF-8 and for Windows' Hebrew too.
    const std::uint32_t charsets[][2] = {
        {932, 128},  {936, 134},  {949, 129},  {950, 136},  {862, 177}, {864, 178}, {1250, 238},
        {1251, 204}, {1253, 161}, {1254, 162}, {1257, 186}, {1252, 0},  {65001, 0}, {1255, 0}};
    for (const auto& [codePage, charset] : charsets)
        EXPECT_EQ(CharsetOfCodePage(codePage), charset) << codePage;
}

TEST(FormatLatLong, FoldsBehindThePolesAndKeepsTheSideOfMinutes) {
    const std::tuple<double, double, std::string> cases[] = {
        {0.5, -0.5, "Lat  0*30'N  Long   0*30'W"},
        {90, 10, "Lat 90*00'N  Long 170*00'W"},   // the North Pole counts as beyond itself,
        {-90, 10, "Lat 90*00'S  Long  10*00'E"},  // the South Pole does not
        {10, 180.02, "Lat 10*00'N  Long 179*59'W"},
        {10, -180, "Lat 10*00'N  Long 180*00'E"},
        {51.4999, -0.1199, "Lat 51*29'N  Long   0*07'W"},  // cut, not rounded
        {-0.01, -0.01, "Lat  0*00'N  Long   0*00'E"},      // less than a minute has no side
        {std::stod("inf"), std::stod("nan"), "Lat  0*00'N  Long   0*00'E"},
        {360000000012.5, -360000000007.25, "Lat 12*30'N  Long   7*15'W"}};
    for (const auto& [latitude, longitude, expected] : cases) {
        char text[kLatLongTextSize];
        FormatLatLong(text, latitude, longitude);
        std::replace(std::begin(text), std::end(text), '\xB0', '*');
        EXPECT_EQ(text, expected);
    }
}

}  // namespace
