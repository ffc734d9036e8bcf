#include "photos/place_name.h"

#include <gtest/gtest.h>

namespace {

constexpr WideView kRoot = u"C:\\Data\\";

TEST(PlaceName, DropsWhatCouldLeadAwayAndKeepsBlanks) {
    const WideView cases[][2] = {
        {u"a*b/c:d;e?f\\g", u"abcdefg"},
        {u"a\tb\r\n\u001Fc\u007Fd", u"abcd"},
        // Letters beyond ASCII stay, also those whose low byte is a mark.
        {u"S\u00E3o \u042F\u262F", u"S\u00E3o \u042F\u262F"},
        {u"St. John's (N. B.)", u"St. John's (N. B.)"},
        {u"/\\:*?;", u""},
    };
    for (const auto& [name, cleaned] : cases) EXPECT_EQ(CleanPlaceName(name), cleaned);
    EXPECT_EQ(CleanPlaceName(u"New York: NY", Blanks::Underline), u"New_York_NY");
}

TEST(PlaceName, FormsFoldersInsideTheTreeOnly) {
    WideString path;
    ASSERT_TRUE(FormPhotoFolder(kRoot, u"France", u"", path));
    EXPECT_EQ(path, u"C:\\Data\\France\\");
    ASSERT_TRUE(FormPhotoPath(kRoot, u"France", u"Aix/en", 12, path));
    EXPECT_EQ(path, u"C:\\Data\\France\\Aixen\\12.jpg");
    // Windows drops dots and blanks from the end of a name.
    const WideView cases[][3] = {
        {u"", u"France", u"Paris"},   {kRoot, u"", u"Paris"},  {kRoot, u"..", u"Paris"},
        {kRoot, u"France", u".."},    {kRoot, u"..\\..", u""}, {kRoot, u"France", u".. "},
        {kRoot, u"France", u" . . "}, {kRoot, u".", u""},      {kRoot, u"France", u"\\:/"},
        {kRoot, u"\u0001", u"Paris"},
    };
    for (const auto& [root, country, city] : cases) {
        path = u"left over";
        EXPECT_FALSE(FormPhotoFolder(root, country, city, path)) << &country - &cases[0][1];
        EXPECT_FALSE(FormPhotoPath(root, country, city, 1, path)) << &country - &cases[0][1];
        EXPECT_TRUE(path.empty());
    }
}

TEST(PlaceName, FormsNoPathOf260Characters) {
    // Root, name and backslash; then "7.jpg".
    const std::size_t longest = 259 - kRoot.size() - 1;
    WideString path;
    EXPECT_TRUE(FormPhotoFolder(kRoot, WideString(longest, u'x'), u"", path));
    EXPECT_FALSE(FormPhotoFolder(kRoot, WideString(longest + 1, u'x'), u"", path));
    EXPECT_TRUE(FormPhotoPath(kRoot, WideString(longest - 5, u'x'), u"", 7, path));
    EXPECT_FALSE(FormPhotoPath(kRoot, WideString(longest - 4, u'x'), u"", 7, path));
}

}  // namespace
