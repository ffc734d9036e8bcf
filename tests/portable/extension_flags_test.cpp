#include "render/extension_flags.h"

#include <gtest/gtest.h>

#include "render/list_name.h"
#include "support/table.h"

namespace {

TEST(ExtensionFlags, FindEachFeatureByItsOwnName) {
    ExtensionFlags flags;  // one for all: what is gone from the string must be gone here
    for (const Row& row : Table("extensions")) {
        DetectExtensionFlags(row.why.c_str(), flags);
        EXPECT_EQ(flags.hasSeparateSpecularColor, row.Int(0) != 0) << row.why;
        EXPECT_EQ(flags.hasMultitexture, row.Int(1) != 0) << row.why;
        EXPECT_EQ(flags.hasTextureCompression, row.Int(2) != 0) << row.why;
        EXPECT_EQ(flags.hasTextureEdgeClamp, row.Int(3) != 0) << row.why;
    }
    flags.hasTextureEdgeClamp = true;
    DetectExtensionFlags(nullptr, flags);
    EXPECT_TRUE(flags.hasTextureEdgeClamp) << "no answer changes nothing";
}

TEST(ListNames, MeetAlsoAcrossTheWrap) {
    EXPECT_TRUE(ListNamesOverlap(100, 256, 355, 2));
    EXPECT_FALSE(ListNamesOverlap(100, 256, 356, 2));
    EXPECT_TRUE(ListNamesOverlap(100, 256, 99, 2));
    EXPECT_FALSE(ListNamesOverlap(100, 256, 98, 2));
    EXPECT_TRUE(ListNamesOverlap(0xFFFFFFFFU, 256, 0, 2));
}

}  // namespace
