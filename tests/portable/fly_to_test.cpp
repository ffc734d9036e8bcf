#include "window/fly_to.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/table.h"

namespace {

TEST(FlyTo, TakesTheShortWayInEvenSteps) {
    for (const Row& row : Table("fly_to")) {
        FlyTo flight;
        ViewAngles before{row.Real(0), row.Real(1)};
        ASSERT_TRUE(flight.Start(before, {row.Real(2), row.Real(3)})) << row.why;
        EXPECT_EQ(flight.StepCount(), row.Int(4)) << row.why;
        int taken = 0;
        for (bool goesOn = true; goesOn; ++taken) {
            goesOn = flight.Step();
            const ViewAngles now = flight.Current();
            EXPECT_TRUE(now.spin >= 0.0 && now.spin < 360.0) << row.why;
            EXPECT_LT(std::hypot(std::remainder(now.tilt - before.tilt, 360.0),
                                 std::remainder(now.spin - before.spin, 360.0)),
                      1.35)
                << row.why;
            before = now;
        }
        EXPECT_EQ(taken, row.Int(4)) << row.why;
        EXPECT_NEAR(before.tilt, row.Real(5), 1e-9) << row.why;
        EXPECT_NEAR(before.spin, row.Real(6), 1e-9) << row.why;
    }
}

}  // namespace
