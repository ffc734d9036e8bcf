#include "globe/sun_position.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/table.h"

namespace {

// Apparent geocentric places from an ephemeris library (VSOP87 with nutation and aberration), not
// from this project. The short series stays within 0.018 and 0.010 degrees of it.
TEST(SunPosition, AgreesWithAnEphemeris) {
    for (const Row& row : Table("sun")) {
        const auto field = [&row](std::size_t i) { return static_cast<std::uint16_t>(row.Int(i)); };
        double angle[2];
        double again[2];
        SunPosition({field(0), field(1), 0, field(2), field(3), field(4), field(5), 0}, &angle[0],
                    &angle[1]);
        EXPECT_LT(std::abs(std::remainder(angle[0] - row.Real(6), 360.0)), 0.022) << row.why;
        EXPECT_NEAR(angle[1], row.Real(7), 0.012) << row.why;
        SunPosition({field(0), field(1), 4, field(2), field(3), field(4), field(5), 999}, &again[0],
                    &again[1]);
        EXPECT_EQ(again[0], angle[0]) << "weekday and milliseconds do not move the Sun";
    }
    double hourAngle = 0.0;
    double declination = 0.0;
    SunPosition({2000, 1, 0, 1, 12, 0, 0, 0}, &hourAngle, &declination);
    EXPECT_NEAR(hourAngle, -0.834, 0.022) << "not brought into a turn";
}

TEST(SunPosition, KeepsDayAndSeasonAsFarAsWindowsCounts) {
    constexpr std::uint16_t kYears[] = {1601, 1800, 2500, 9999, 30827};
    for (const std::uint16_t year : kYears) {
        for (const auto& [month, season] : {std::pair{6, 1.0}, {12, -1.0}}) {
            double hourAngle = 0.0;
            double declination = 0.0;
            SunPosition({year, static_cast<std::uint16_t>(month), 0, 21, 12, 0, 0, 0}, &hourAngle,
                        &declination);
            // The short series drifts by some degrees in ten thousand years, and so does the
            // calendar; far beyond, only the range is left.
            EXPECT_LE(std::abs(declination), 23.45) << year;
            if (year > 9999) continue;
            EXPECT_GT(declination * season, 22.5) << year;
            EXPECT_LT(std::abs(std::remainder(hourAngle, 360.0)), 8.0) << year;
        }
    }
}

TEST(JulianDate, CountsEachDayOnceAndBeginsItAtNoon) {
    constexpr int kMonthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    std::int32_t expected = 2415021;  // 1900 January 1
    for (int year = 1900; year <= 2100; ++year) {
        const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        for (int month = 1; month <= 12; ++month) {
            const int days = kMonthDays[month - 1] + (leap && month == 2 ? 1 : 0);
            for (int day = 1; day <= days; ++day) {
                ASSERT_EQ(JulianDayNumber(year, month, day), expected++) << year << '-' << month;
            }
        }
    }
    EXPECT_EQ(JulianDayNumber(1601, 1, 1), 2305814);
    EXPECT_EQ(JulianDayNumber(9999, 12, 31), 5373484);
    EXPECT_EQ(ModifiedJulianDate(1858, 11, 17, 0, 0, 0), 0.0);
    EXPECT_DOUBLE_EQ(JulianDate(1957, 10, 4, 19, 26, 24), 2436116.31);  // first satellite
}

TEST(SiderealTime, AgreesWithThePublishedExample) {
    // 1987 April 10, 19h 21m UT: 8h 34m 57.0896s (Meeus, chapter 12).
    const double evening = 8.0 + 34.0 / 60.0 + 57.0896 / 3600.0;
    const double mjd = ModifiedJulianDate(1987, 4, 10, 19, 21, 0);
    EXPECT_NEAR(SiderealTime(mjd, 0.0), evening, 1e-6);
    EXPECT_NEAR(SiderealTime(mjd, 75.0), evening - 5.0, 1e-6) << "75 degrees west";
    EXPECT_NEAR(SiderealTime(mjd, 150.0), evening - 10.0 + 24.0, 1e-6) << "kept in the day";
}

}  // namespace
