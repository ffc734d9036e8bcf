#include "globe/trigonometry.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace {

TEST(Atan2Deg, FindsTheQuadrantAndTheAxes) {
    for (const Row& row : Table("atan2")) {
        EXPECT_NEAR(Atan2Deg(row.Real(0), row.Real(1)), row.Real(2), 1e-12) << row.why;
    }
    for (double angle = -179.5; angle < 180.0; angle += 1.0) {
        EXPECT_NEAR(Atan2Deg(3.0 * SinDeg(angle), 3.0 * CosDeg(angle)), angle, 1e-10);
    }
    EXPECT_NEAR(CosDeg(540.0), -1.0, 1e-15);
    EXPECT_EQ(Frac(-0.25), 0.75) << "above the lower whole number";
    EXPECT_EQ(Frac(-3.0), 0.0);
}

TEST(EquatorialToHorizontal, AgreesWithThePublishedExample) {
    // Venus from Washington, 1987 April 10, 19h 21m UT (Meeus, chapter 13).
    double altitude = 0.0;
    double azimuth = 0.0;
    EquatorialToHorizontal(-6.719892, 64.352133, 38.921389, altitude, azimuth);
    EXPECT_NEAR(altitude, 15.1249, 1e-4);
    EXPECT_NEAR(azimuth, 68.0337, 1e-4);
}

}  // namespace
