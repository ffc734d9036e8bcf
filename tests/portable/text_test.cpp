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
    // Latin-1, cut short, a following byte alone, slashes in two and three bytes, the last of two
    // and of three bytes in one more, both kinds of surrogates, beyond the last character, five
    // bytes, a start inside a character.
    for (const char* bytes : {"caf\xE9", "a\xE2\x82", "\x82", "\xC0\xAF", "\xE0\x80\xAF",
                              "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xED\xB0\x80",
                              "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE2\x82x"}) {
        EXPECT_FALSE(WidenUtf8(bytes, text)) << bytes;
        EXPECT_EQ(text, all) << "changed by " << bytes;
    }
    EXPECT_TRUE(Truncate(u"harbour", 3) == u"har" && Truncate(u"harbour", 7) == u"harbour");
    EXPECT_EQ(Truncate(u"a\U00010400", 2), u"a") << "half a pair would be no character";
    EXPECT_EQ(Truncate(u"a\U0001F600\U0001F600", 3), u"a\U0001F600");
    EXPECT_EQ(Truncate(u"\U0001F600", 0), u"");
}

/// Reads `length` characters of `text` in a block of exactly that size, so that the sanitizer sees
/// each step over the end; below 0: the whole text with its terminator.
WideString Unescaped(const WideString& text, std::int32_t length) {
    std::vector<HorivoWideChar> block(text.begin(), text.end());
    block.resize(length < 0 ? text.size() + 1 : std::size_t(length));
    const auto end = std::size_t(Unescape(block.data(), length));
    EXPECT_TRUE(end == block.size() || block.at(end) == u'\0');
    return {block.data(), end};
}

TEST(LanguageTexts, ResolveEscapesAndKeepTheirOddities) {
    const struct {
        const char* why;
        WideString text;
        std::int32_t length;
        WideString result;
    } cases[] = {
        {"an escaped backslash escapes nothing", u"\\\\n\\r\\n", -1, u"\\n\r\n"},
        {"a tab keeps its backslash and costs a character", u"a\\txyz", -1, u"a\t\\yz"},
        {"that character may be a backslash", u"\\t\\n", -1, u"\t\\n"},
        {"nor beyond the length", u"a\\txy", 3, u"a\t\\"},
        {"any other comes twice", u"\\a\\ü", -1, u"aaüü"},
        {"the last within the length escapes nothing", u"ab\\nc", 3, u"ab\\"},
        {"the terminator comes before the length", WideString(u"a\0\\n", 4), 4, u"a"},
    };
    for (const auto& c : cases) EXPECT_EQ(Unescaped(c.text, c.length), c.result) << c.why;
    // Of a key that is too long, the characters of the text are counted.
    const WideString keys[][2] = {{u"Recent &files...\tCtrl+0", u"Recent_files...Ctrl0"},
                                  {u"a-b_c.d=e[f];9 Größe 地", u"a-b_c.def9_Gre_"},
                                  {WideString(255, u'&') + u"xy", u"x"}};
    for (const auto& [text, key] : keys) {
        WideString changed = text;
        MenuKey(changed.data());
        EXPECT_EQ(WideString(changed.c_str()), key);
    }
}

TEST(LanguageFileCode, IsTheInternationalOneWhereWindowsHasAnother) {
    const WideString cases[][2] = {
        {u"DEU", u"de"}, {u"IND", u"id"}, {u"MRI", u"mi"}, {u"MLT", u"mt"}, {u"TSN", u"tn"},
        {u"SMJ", u"se"}, {u"MON", u"mn"}, {u"jPn", u"ja"}, {u"DIV", u"dv"}, {u"MAR", u"mr"},
        {u"KAN", u"kn"}, {u"MYM", u"ml"}, {u"AZ", u"az"},  {u"d", u""},     {u"", u""},
    };
    for (const auto& [abbrev, code] : cases) {
        EXPECT_EQ(WideString(LanguageFileCode(abbrev.c_str()).data()), code);
    }
}

TEST(UnitWords, FollowTheRulesOfALanguageAndKeepWhatStandsBeforeAFault) {
    const WideString russian = u"дней;1,21,31,41,51,61,71,81,91 день;2-4,22-24,32-34,92-94 дня";
    WideString hundredAndOne = u"x;0";
    for (int i = 1; i <= 100; ++i) hundredAndOne += u",7";
    const struct {
        const char* why;
        WideString text;
        std::uint32_t number;
        WideString word;
        int count;
    } cases[] = {
        {"the default", russian, 11, u"дней", 13},
        {"a single number", russian, 1, u"день", 13},
        {"the last two digits decide", russian, 1094, u"дня", 13},
        {"ranges without a default", u";1 day", 1, u"d", 0},
        {"a list goes on behind a comma", u"x;1,5-7,9 y", 6, u"y", 3},
        {"the last range that fits wins", u"x;0-99 y;5 z", 5, u"z", 2},
        {"a turned range ends the list", u"x;1,5-3 y", 1, u"y", 1},
        {"a number too large ends the list", u"x;1,100 y;2 z", 2, u"z", 2},
        {"also one that 32 bits would take for 5", u"x;1,4294967301 y", 1, u"y", 1},
        {"a missing second number", u"x;1,5- y", 1, u"y", 1},
        {"a letter in the list ends the table", u"x;1-9 y;2,a z;3 z", 2, u"x", 2},
        {"a group without ranges has a word all the same", u"x; y;2 z", 2, u"z", 1},
        {"a list without a word", u"x;1", 1, u"x", 1},
        {"an empty word is a word", u"x;1 ;2 z", 1, u"", 2},
        {"a word beyond the room", u"x;1 " + WideString(60000, u'y') + u";2 z", 1,
         WideString(kUnitChars - 3, u'y'), 1},
        {"no room behind a word", u"x;1 " + WideString(kUnitChars - 3, u'y') + u";2 z", 2, u"x", 1},
        {"no room for ranges of a further group", hundredAndOne + u" y;8 z", 8, u"x", 100},
        {"but for those before", hundredAndOne + u" y;8 z", 0, u"y", 100},
    };
    for (const auto& c : cases) {
        auto file = std::make_unique<CLangFile>();
        ParseUnitTable(*file, 4, u"weeks");
        ParseUnitTable(*file, 3, u"old;1 eins;2 zwei");  // no word of an earlier table stays
        ParseUnitTable(*file, 3, c.text.c_str());
        EXPECT_EQ(WideString(UnitWord(*file, 4, 1)), u"weeks") << "the table behind was touched";
        EXPECT_EQ(WideString(UnitWord(*file, 3, c.number)), c.word) << c.why;
        EXPECT_EQ(file->unitCount[3], c.count) << c.why;
    }
    WideString words;
    for (std::uint32_t table = 0; table < 5; ++table) words += UnitWord(CLangFile(), table, 1);
    EXPECT_EQ(words, u"smhdw");
    EXPECT_EQ(UnitWord(CLangFile(), 5, 1), nullptr);
}

TEST(FolderOfCommandLine, IsWhatStandsBeforeTheLastBackslashAndFitsAPath) {
    // Arguments behind the quote do not count, unquoted ones do; a name needs a folder.
    const std::wstring longest = std::wstring(258, L'd') + L"\\";
    const std::wstring cases[][2] = {{L"\"C:\\a\\b.exe\" x\\y", L"C:\\a\\"},
                                     {L"\"C:\\a b\\c.exe", L"C:\\a b\\"},
                                     {L"C:\\a\\b.exe \"d\\e\"", L"C:\\a\\b.exe \"d\\"},
                                     {L"app.exe old\\list.txt", L"app.exe old\\"},
                                     {L"\"clock.exe\" C:\\a\\b", L""},
                                     {L"\"", L""},
                                     {L"\\clock.exe", L""},
                                     {L"\"\\clock.exe\"", L""},
                                     {L"\\a\\clock.exe", L"\\a\\"},
                                     {L" \"C:\\a\\b\"", L" \"C:\\a\\"},
                                     {longest + L"clock.exe", longest},
                                     {L"d" + longest + L"clock.exe", L""}};
    for (const auto& [line, folder] : cases) EXPECT_EQ(FolderOfCommandLine(line), folder);
}

TEST(CodePage, IsReadFromDigitsAndHasACharacterSet) {
    const std::pair<const wchar_t*, std::uint32_t> texts[] = {
        {L"932 (Japan)", 932}, {L"65535", 65535}, {L"-1", 0}, {L"65536", 0}, {L"4294968547", 0}};
    for (const auto& [text, codePage] : texts) EXPECT_EQ(ParseCodePage(text), codePage) << text;
    // As in wingdi.h; 0, the screen's own, for none, for UTF-8 and for Windows' Hebrew too.
    const std::uint32_t charsets[][2] = {
        {932, 128},  {936, 134},  {949, 129},  {950, 136},  {862, 177},
        {864, 178},  {1250, 238}, {1251, 204}, {1253, 161}, {1254, 162},
        {1257, 186}, {1252, 0},   {0, 0},      {65001, 0},  {1255, 0},
    };
    for (const auto& [codePage, charset] : charsets) {
        EXPECT_EQ(CharsetOfCodePage(codePage), charset) << codePage;
    }
}

TEST(FormatLatLong, FoldsBehindThePolesAndKeepsTheSideOfMinutes) {
    const struct {
        const char* why;
        double latitude, longitude;
        const char* text;
    } cases[] = {
        {"less than a degree keeps its side", 0.5, -0.5, "Lat  0*30'N  Long   0*30'W"},
        {"past the pole the meridian turns", 95, 10, "Lat 85*00'N  Long 170*00'W"},
        {"the North Pole is past it", 90, 10, "Lat 90*00'N  Long 170*00'W"},
        {"the South Pole is not", -90, 10, "Lat 90*00'S  Long  10*00'E"},
        {"past the South Pole", -95, 10, "Lat 85*00'S  Long 170*00'W"},
        {"date line from the east", 10, -180, "Lat 10*00'N  Long 180*00'E"},
        {"just over the date line", 10, 180.02, "Lat 10*00'N  Long 179*59'W"},
        {"minutes are cut, not rounded", 51.4999, -0.1199, "Lat 51*29'N  Long   0*07'W"},
        {"less than a minute has no side", -0.01, -0.01, "Lat  0*00'N  Long   0*00'E"},
        {"no numbers", std::stod("inf"), std::stod("nan"), "Lat  0*00'N  Long   0*00'E"},
        {"many turns", 360000000012.5, -360000000007.25, "Lat 12*30'N  Long   7*15'W"},
    };
    for (const auto& c : cases) {
        char text[kLatLongTextSize];
        FormatLatLong(text, c.latitude, c.longitude);
        std::string shown = text;
        std::replace(shown.begin(), shown.end(), '\xB0', '*');
        EXPECT_EQ(shown, c.text) << c.why;
    }
}

}  // namespace
