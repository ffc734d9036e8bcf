#include "photos/photo_link.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace {

TEST(PhotoLink, NeverLeavesTheSiteAndIsCutAt511Characters) {
    for (const Row& row : Table("photo_link")) {
        EXPECT_EQ(PhotoPageLink(WidenAscii(row.Text(0))), kPhotoSite + WidenAscii(row.Text(1)))
            << row.why;
    }
    EXPECT_EQ(PhotoPageLink(u""), u"") << "a photo without a page opens nothing";
    EXPECT_EQ(AddPhotoLink(), kPhotoSite + WideString(u"/add_photo.htm"));
    const WideString link = PhotoPageLink(u"/" + WideString(4000, u'p'));
    EXPECT_EQ(link.size(), 511U);
    EXPECT_TRUE(link.starts_with(kPhotoSite + WideString(u"/pp")));
}

}  // namespace
