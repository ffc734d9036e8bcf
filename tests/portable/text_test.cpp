// Texts that are read, cut or formed: UTF-8, escapes and keys of language files, command lines,
// code pages and coordinates.
#include <gtest/gtest.h>

#include <vector>

#include "api/command_line_folder.h"
#include "base/wide_text.h"
#include "globe/lat_long_text.h"
#include "host/lang_escapes.h"
#include "host/language_code.h"
#include "support/table.h"
#include "window/map_font.h"

namespace {

TEST(WideText, ReadsWellFormedUtf8Only) {
    WideString text;
    ASSERT_TRUE(WidenUtf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", text));
    EXPECT_EQ(text, u"a\u00E9\u20AC\U0001F600");
    // Latin-1, cut short, a following byte alone, slashes in two and three bytes, a surrogate,
    // beyond the last character, five bytes, a start inside a character.
    for (const char* bytes :
         {"caf\xE9", "a\xE2\x82", "\x82", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80",
          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE2\x82x"}) {
        EXPECT_FALSE(WidenUtf8(bytes, text)) << bytes;
        EXPECT_EQ(text, u"a\u00E9\u20AC\U0001F600") << "changed by " << bytes;
    }
}

TEST(WideText, CutsBetweenCharacters) {
    EXPECT_EQ(Truncate(u"harbour", 3), u"har");
    EXPECT_EQ(Truncate(u"harbour", 7), u"harbour");
    EXPECT_EQ(Truncate(u"a\U0001F600", 2), u"a") << "half a pair would be no character";
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
        {"a single backslash at the end stays", u"C:\\", -1, u"C:\\"},
        {"the last within the length escapes nothing", u"ab\\nc", 3, u"ab\\"},
        {"the terminator comes before the length", WideString(u"a\0\\n", 4), 4, u"a"},
        {"no length", u"ab", 0, u""},
    };
    for (const auto& c : cases) EXPECT_EQ(Unescaped(c.text, c.length), c.result) << c.why;
}

TEST(MenuKey, KeepsWhatAKeyCanHold) {
    const WideString cases[][2] = {
        {u"Recent &files...\tCtrl+R", u"Recent_files...CtrlR"},
        {u"a-b_c.d=e[f];1 Größe 地", u"a-b_c.def1_Gre_"},
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
    for (const Row& row : Table("code_page")) {
        EXPECT_EQ(ParseCodePage(Wide(row.Text(0)).c_str()), static_cast<std::uint32_t>(row.Int(1)))
            << row.why;
    }
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

/// The text as UTF-8.
std::string LatLongText(double latitude, double longitude) {
    char buffer[kLatLongTextSize];
    FormatLatLong(buffer, latitude, longitude);
    std::string text;
    for (const char c : std::string(buffer)) text += c == '\xB0' ? "\u00B0" : std::string(1, c);
    return text;
}

TEST(FormatLatLong, FoldsBehindThePolesAndKeepsTheSideOfMinutes) {
    for (const Row& row : Table("lat_long_text")) {
        EXPECT_EQ(LatLongText(row.Real(0), row.Real(1)), row.Text(2)) << row.why;
    }
}

}  // namespace
