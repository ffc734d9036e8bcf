#include "window/map_settings.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace {

TEST(TakeSettings, BringsEachNumberIntoItsRangeAndItComesBackUnchanged) {
    for (const Row& row : Table("map_settings")) {
        MapSettings settings;
        const auto expect = [&](const RawSettings& raw) {
            EXPECT_EQ(TakeSettings(raw, settings), row.Int(7)) << row.why;
            EXPECT_EQ(settings.texScalerX, row.Int(4)) << row.why;
            EXPECT_EQ(settings.texScalerY, row.Int(5)) << row.why;
            EXPECT_EQ(settings.texCompression, row.Int(6)) << row.why;
        };
        expect({row.Int(0), row.Int(1), row.Int(2), row.Int(3)});
        // Whole hundreds only: what tuning added in between is lost.
        expect(CurrentSettings(settings, row.Int(7) + 50));
    }
    EXPECT_EQ(MapSettings().texScalerX - MapSettings().texScalerY, 1) << "twice as wide as high";
}

}  // namespace
