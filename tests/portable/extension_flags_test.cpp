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

TEST(GenericRenderer, IsKnownByItsFirstFourCharacters) {
    EXPECT_TRUE(IsGenericRenderer("GDI Generic"));
    for (const char* other :
         {"GDI", "GDIplus", "llvmpipe GDI ", "", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(IsGenericRenderer(other));
}

TEST(CopyGlString, CutsAtTheFieldAndLeavesItAloneWithoutText) {
    char field[256] = "before";
    CopyGlString(nullptr, field);
    EXPECT_STREQ(field, "before");
    CopyGlString(std::string(1000, 'x').c_str(), field);
    EXPECT_EQ(field, std::string(255, 'x'));
}

TEST(ListNames, AreAddressesAndMeetAlsoAcrossTheWrap) {
    EXPECT_TRUE(ListNamesOverlap(100, 256, 355, 2));
    EXPECT_FALSE(ListNamesOverlap(100, 256, 356, 2));
    EXPECT_TRUE(ListNamesOverlap(100, 256, 99, 2));
    EXPECT_FALSE(ListNamesOverlap(100, 256, 98, 2));
    EXPECT_TRUE(ListNamesOverlap(0xFFFFFFFFU, 256, 0, 2));
    const int object = 0;
    EXPECT_EQ(ListName(&object),
              static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(&object)));
}

}  // namespace
