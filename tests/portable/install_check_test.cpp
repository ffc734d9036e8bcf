#include "interface/install_check.h"

#include <gtest/gtest.h>

#include "horivo_map.h"
#include "support/table.h"

namespace {

TEST(CheckMapPicture, TakesColourPicturesUpToAThirdOfTheMemory) {
    const std::uint32_t codes[] = {HORIVO_OK, HORIVO_UNFIT_PICTURE, HORIVO_BAD_PICTURE};
    for (const Row& row : Table("install_check")) {
        const JpegSize size{row.Int(0), row.Int(1), row.Int(2)};
        EXPECT_EQ(CheckMapPicture(size, row.Big(3)), codes[row.Int(4)]) << row.why;
    }
    EXPECT_EQ(CheckMapPicture(std::nullopt, 1U << 30U), HORIVO_BAD_PICTURE) << "no JPEG";
}

}  // namespace
