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
#include "support/table.h"
#include "window/map_font.h"

namespace {

TEST(WideText, ReadsWellFormedUtf8Only) {
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
}

TEST(WideText, CutsBetweenCharacters) {
    EXPECT_EQ(Truncate(u"harbour", 3), u"har");
    EXPECT_EQ(Truncate(u"harbour", 7), u"harbour");
    EXPECT_EQ(Truncate(u"a\U00010400", 2), u"a") << "half a pair would be no character";
    EXPECT_EQ(Truncate(u"a\U0001F600\U0001F600", 3), u"a\U0001F600");
    EXPECT_EQ(Truncate(u"\U0001F600", 0), u"");
}

/// Reads `length` characters of `text` in a block of exactly that size, so that the sanitizer sees
/// each step over the end; below 0: the whole text with its terminator.
WideString Unescaped(const WideString& text, std::int32_t length) {
    std::vector<HorivoWideChar> block(text.begin(), text.end());
    block.resize(length < 0 ? text.size() + 1 : static_cast<std::size_t>(length));
    const auto end = static_cast<std::size_t>(Unescape(block.data(), length));
    EXPECT_TRUE(end == block.size() || block.at(end) == u'\0');
    return {block.data(), end};
}

TEST(Unescape, ResolvesWhatIsKnownAndKeepsItsOddities) {
    const struct {
        const char* why;
        WideString text;
        std::int32_t length;
        WideString result;
    } cases[] = {
        {"line ends", u"a\\r\\nb", -1, u"a\r\nb"},
        {"an escaped backslash escapes nothing", u"\\\\n", -1, u"\\n"},
        {"a tab keeps its backslash and costs a character", u"a\\txyz", -1, u"a\t\\yz"},
        {"that character may be a backslash", u"\\t\\n", -1, u"\t\\n"},
        {"nothing to cost at the end", u"a\\t", -1, u"a\t\\"},
        {"nor beyond the length", u"a\\txy", 3, u"a\t\\"},
        {"any other comes twice", u"\\a\\ü", -1, u"aaüü"},
        {"the last within the length escapes nothing", u"ab\\nc", 3, u"ab\\"},
        {"the terminator comes before the length", WideString(u"a\0\\n", 4), 4, u"a"},
        {"no length", u"ab", 0, u""},
    };
    for (const auto& c : cases) EXPECT_EQ(Unescaped(c.text, c.length), c.result) << c.why;
}

TEST(MenuKey, KeepsWhatAKeyCanHold) {
    const WideString cases[][2] = {
        {u"Recent &files...\tCtrl+0", u"Recent_files...Ctrl0"},
        {u"a-b_c.d=e[f];9 Größe 地", u"a-b_c.def9_Gre_"},
        {WideString(255, u'&') + u"xy", u"x"},  // characters of the text are counted
    };
    for (const auto& [text, key] : cases) {
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

/// A record whose table 4, weeks, is full and whose table 3, days, is read from `text`.
std::unique_ptr<CLangFile> Days(const WideString& text) {
    auto file = std::make_unique<CLangFile>();
    ParseUnitTable(*file, 4, u"weeks");
    ParseUnitTable(*file, 3, text.c_str());
    EXPECT_EQ(WideString(UnitWord(*file, 4, 1)), u"weeks") << "the table behind was touched";
    return file;
}

WideString Word(const CLangFile& file, std::uint32_t number) { return UnitWord(file, 3, number); }

TEST(UnitWords, FollowTheRulesOfALanguageAndKeepWhatStandsBeforeAFault) {
    const WideString russian = u"дней;1,21,31,41,51,61,71,81,91 день;2-4,22-24,32-34,92-94 дня";
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
        {"of the largest number too", russian, 0xFFFFFFFF, u"дней", 13},
        {"ranges without a default", u";1 day", 1, u"d", 0},
        {"a list goes on behind a comma", u"x;1,5-7,9 y", 6, u"y", 3},
        {"the last range that fits wins", u"x;0-99 y;5 z", 5, u"z", 2},
        {"a turned range ends the list", u"x;1,5-3 y", 1, u"y", 1},
        {"a number too large ends the list", u"x;1,100 y;2 z", 2, u"z", 2},
        {"also one that 32 bits would take for 5", u"x;1,4294967301 y", 1, u"y", 1},
        {"a missing second number", u"x;1,5- y", 1, u"y", 1},
        {"a letter in the list ends the table", u"x;1 y;2,a z;3 z", 3, u"x", 2},
        {"its numbers have no word, whatever stood before", u"x;1-9 y;2,a z", 2, u"x", 2},
        {"a group without ranges has a word all the same", u"x; y;2 z", 2, u"z", 1},
        {"a list without a word", u"x;1", 1, u"x", 1},
        {"an empty word is a word", u"x;1 ;2 z", 1, u"", 2},
        {"a space in a word stays", u"x y;1 a b", 1, u"a b", 1},
        {"a default beyond the room", WideString(5000, u'x') + u";1 y", 1,
         WideString(kUnitChars - 1, u'x'), 0},
        {"a word beyond the room", u"x;1 " + WideString(60000, u'y') + u";2 z", 1,
         WideString(kUnitChars - 3, u'y'), 1},
        {"no room behind a word", u"x;1 " + WideString(kUnitChars - 3, u'y') + u";2 z", 2, u"x", 1},
    };
    for (const auto& c : cases) {
        const auto file = Days(c.text);
        EXPECT_EQ(Word(*file, c.number), c.word) << c.why;
        EXPECT_EQ(file->unitCount[3], c.count) << c.why;
    }
    WideString hundredAndOne = u"x;0";
    for (int i = 1; i <= 100; ++i) hundredAndOne += u",7";
    const auto full = Days(hundredAndOne + u" y;8 z");
    EXPECT_EQ(full->unitCount[3], 100);
    EXPECT_EQ(Word(*full, 0), u"y");
    EXPECT_EQ(Word(*full, 8), u"x") << "no room for a range of a further group";
}

TEST(UnitWords, AreReadAnewAndBuiltInForAllUnits) {
    const auto file = Days(u"old;1 eins;2 zwei");
    ParseUnitTable(*file, 3, u"last;1 day");
    EXPECT_EQ(Word(*file, 1), u"day");
    EXPECT_EQ(Word(*file, 2), u"last") << "no word of an earlier table";
    WideString words;
    for (std::uint32_t table = 0; table < 5; ++table) words += UnitWord(CLangFile(), table, 1);
    EXPECT_EQ(words, u"smhdw");
    EXPECT_EQ(UnitWord(*file, 5, 1), nullptr);
}

std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

TEST(FolderOfCommandLine, IsWhatStandsBeforeTheLastBackslashAndFitsAPath) {
    for (const Row& row : Table("command_line")) {
        EXPECT_EQ(FolderOfCommandLine(Wide(row.Text(0))), Wide(row.Text(1))) << row.why;
    }
    const std::wstring longest = std::wstring(258, L'd') + L"\\";
    EXPECT_EQ(FolderOfCommandLine(longest + L"clock.exe"), longest);
    EXPECT_EQ(FolderOfCommandLine(L"d" + longest + L"clock.exe"), L"") << "no room for its end";
}

TEST(CodePage, IsReadFromDigitsAndHasACharacterSet) {
    const std::pair<const wchar_t*, std::uint32_t> texts[] = {
        {L"932 (Japan)", 932}, {L"65535", 65535}, {L"", 0}, {L"-1", 0},
        {L"65536", 0},         {L"4294968547", 0}};
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
    for (const Row& row : Table("lat_long_text")) {
        char text[kLatLongTextSize];
        FormatLatLong(text, row.Real(0), row.Real(1));
        WideString expected;
        ASSERT_TRUE(WidenUtf8(row.Text(2), expected));
        EXPECT_EQ(WidenAscii(text), expected) << row.why;
    }
}

}  // namespace
