#include "base/wide_text.h"

#include <gtest/gtest.h>

namespace {

TEST(WideText, ReadsWellFormedUtf8Only) {
    WideString text;
    ASSERT_TRUE(WidenUtf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", text));
    EXPECT_EQ(text, u"a\u00E9\u20AC\U0001F600");
    ASSERT_TRUE(WidenUtf8("", text));
    text = u"kept";
    // Latin-1, cut short, a following byte alone, slashes in two and three bytes, a surrogate,
    // beyond the last character, five bytes, a start inside a character.
    for (const char* bytes :
         {"caf\xE9", "a\xE2\x82", "\x82", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80",
          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE2\x82x"}) {
        EXPECT_FALSE(WidenUtf8(bytes, text)) << bytes;
        EXPECT_EQ(text, u"kept") << bytes;
    }
}

TEST(WideText, CutsBetweenCharacters) {
    EXPECT_EQ(CutText(u"harbour", 3), u"har");
    EXPECT_EQ(CutText(u"harbour", 7), u"harbour");
    EXPECT_EQ(CutText(u"a\U0001F600", 2), u"a") << "half a pair would be no character";
    EXPECT_EQ(CutText(u"a\U0001F600b", 3), u"a\U0001F600");
    EXPECT_EQ(CutText(u"\U0001F600", 0), u"");
}

}  // namespace
