// What the host services do with the texts of a language file: escapes, keys of menus, codes of
// file names.
#include <gtest/gtest.h>

#include <vector>

#include "base/wide_text.h"
#include "host/language_code.h"
#include "host/menu_key.h"
#include "host/text_escapes.h"

namespace {

/// Reads `length` characters of `text` in a block of exactly that size, so that the sanitizer sees
/// each step over the end; below 0: the whole text with its terminator.
WideString Unescaped(const WideString& text, std::int32_t length) {
    std::vector<HorivoWideChar> block(text.begin(), text.end());
    block.resize(length < 0 ? text.size() + 1 : static_cast<std::size_t>(length));
    const std::int32_t result = Unescape(block.data(), length);
    const auto end = static_cast<std::size_t>(result);
    EXPECT_LE(end, block.size());
    EXPECT_TRUE(end == block.size() || block[end] == u'\0');
    return {block.data(), end};
}

TEST(Unescape, ResolvesWhatIsKnownAndKeepsItsOddities) {
    const struct {
        const char* why;
        WideString text;
        WideString result;
    } cases[] = {
        {"no escapes", u"Zeit", u"Zeit"},
        {"empty", u"", u""},
        {"backslash", u"a\\\\b", u"a\\b"},
        {"an escaped backslash escapes nothing", u"\\\\n", u"\\n"},
        {"line ends", u"a\\r\\nb", u"a\r\nb"},
        {"a tab keeps its backslash and costs a character", u"a\\txyz", u"a\t\\yz"},
        {"that character may be a backslash", u"\\t\\n", u"\t\\n"},
        {"nothing to cost at the end", u"a\\t", u"a\t\\"},
        {"any other comes twice", u"\\a\\ü", u"aaüü"},
        {"the second one escapes nothing", u"\\qn", u"qqn"},
        {"a single backslash at the end stays", u"C:\\", u"C:\\"},
        {"an escaped one before it", u"\\\\\\", u"\\\\"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Unescaped(c.text, -1), c.result) << c.why;
        const auto length = static_cast<std::int32_t>(c.text.size());
        EXPECT_EQ(Unescaped(c.text, length), c.result) << c.why << ", by length";
    }
}

TEST(Unescape, StopsAtTheLengthAndAtTheTerminator) {
    EXPECT_EQ(Unescaped(u"ab\\nc", 3), u"ab\\") << "the last within the length escapes nothing";
    EXPECT_EQ(Unescaped(u"a\\txy", 3), u"a\t\\") << "no character is taken from beyond the length";
    EXPECT_EQ(Unescaped(WideString(u"a\0\\n", 4), 4), u"a") << "the terminator comes first";
    EXPECT_EQ(Unescaped(u"ab", 0), u"");
}

TEST(MenuKey, KeepsWhatAKeyCanHold) {
    const struct {
        WideString text;
        WideString key;
    } cases[] = {
        {u"&File", u"File"},
        {u"Recent &files...\tCtrl+R", u"Recent_files...CtrlR"},
        {u"a-b_c.d=e[f];", u"a-b_c.def"},
        {u"Größe 12", u"Gre_12"},
        {u"地図(&M)", u"M"},
        {u"", u""},
        {WideString(300, u'x'), WideString(256, u'x')},
        {WideString(256, u'&') + u"x", u""},
    };
    for (const auto& c : cases) {
        WideString text = c.text;
        MenuKey(text.data());
        EXPECT_EQ(WideString(text.c_str()), c.key);
    }
}

TEST(LanguageFileCode, IsTheInternationalOneWhereWindowsHasAnother) {
    const struct {
        const HorivoWideChar* abbrev;
        const HorivoWideChar* code;
    } cases[] = {
        {u"DEU", u"de"}, {u"en", u"en"},  {u"IND", u"id"}, {u"MRI", u"mi"},
        {u"MLT", u"mt"}, {u"TSN", u"tn"}, {u"SMJ", u"se"}, {u"MON", u"mn"},
        {u"JPN", u"ja"}, {u"DIV", u"dv"}, {u"MAR", u"mr"}, {u"KAN", u"kn"},
        {u"MYM", u"ml"}, {u"jPn", u"ja"}, {u"d", u""},     {u"", u""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(WideString(LanguageFileCode(c.abbrev).data()), c.code);
    }
}

}  // namespace
