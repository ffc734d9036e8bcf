// Coordinates, angles and matrices of the globe, and where the Sun stands over it.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "globe/sun_position.h"
#include "math/angles.h"
#include "math/geographic.h"
#include "math/matrix4.h"
#include "math/trigonometry.h"
#include "support/table.h"

namespace {

TEST(Geographic, PointsGoBackToTheirCoordinates) {
    for (double lat = -85.0; lat <= 85.0; lat += 17.0) {
        for (double lon = -89.0; lon < 270.0; lon += 31.0) {
            const LatLon back = PointToLatLonDeg(LatLonToPoint(lat, lon, 3.0));
            EXPECT_NEAR(back.latitude, lat, 1e-9);
            EXPECT_NEAR(back.longitude, lon, 1e-6) << "counted on behind the globe, not wrapped";
        }
    }
    for (const Row& row : Table("point_to_place")) {
        const LatLon place = PointToLatLonDeg({row.Real(0), row.Real(1), row.Real(2), 1.0});
        EXPECT_NEAR(place.latitude, row.Real(3), 1e-9) << row.why;
        EXPECT_NEAR(place.longitude, row.Real(4), 1e-6) << row.why;
    }
}

TEST(Trigonometry, Atan2FindsTheQuadrantAndTheAxes) {
    EXPECT_EQ(Atan2Deg(0.0, 0.0), 0.0);
    EXPECT_NEAR(Atan2Deg(1e-9, -1e9), 180.0, 1e-12);
    for (double angle = -179.5; angle <= 180.0; angle += 0.5) {
        EXPECT_NEAR(Atan2Deg(3.0 * SinDeg(angle), 3.0 * CosDeg(angle)), angle, 1e-10);
    }
    EXPECT_NEAR(CosDeg(540.0), -1.0, 1e-15);
    EXPECT_EQ(Frac(-0.25), 0.75) << "above the lower whole number";
    EXPECT_EQ(Frac(-3.0), 0.0);
}

TEST(Trigonometry, HorizontalCoordinatesAgreeWithThePublishedExample) {
    // Venus from Washington, 1987 April 10, 19h 21m UT (Meeus, chapter 13).
    double altitude = 0.0;
    double azimuth = 0.0;
    EquatorialToHorizontal(-6.719892, 64.352133, 38.921389, altitude, azimuth);
    EXPECT_NEAR(altitude, 15.1249, 1e-4);
    EXPECT_NEAR(azimuth, 68.0337, 1e-4);
    EquatorialToHorizontal(-6.719892, -64.352133, 38.921389, altitude, azimuth);
    EXPECT_NEAR(azimuth, 360.0 - 68.0337, 1e-4) << "as long before the meridian";
}

struct Sun {
    explicit Sun(const SYSTEMTIME& utc) { SunPosition(utc, &hourAngle, &declination); }
    double hourAngle = 0.0;
    double declination = 0.0;
};

// Apparent geocentric places from an ephemeris library (VSOP87 with nutation and aberration), not
// from this project. The short series stays within 0.018 and 0.010 degrees of it.
TEST(SunPosition, AgreesWithAnEphemeris) {
    for (const Row& row : Table("sun")) {
        const auto field = [&row](std::size_t i) { return static_cast<std::uint16_t>(row.Int(i)); };
        const SYSTEMTIME utc = {field(0), field(1), 4, field(2), field(3), field(4), field(5), 999};
        const Sun sun(utc);
        EXPECT_LT(std::abs(std::remainder(sun.hourAngle - row.Real(6), 360.0)), 0.022) << row.why;
        EXPECT_NEAR(sun.declination, row.Real(7), 0.012) << row.why;
    }
    EXPECT_NEAR(Sun({2000, 1, 0, 1, 12, 0, 0, 0}).hourAngle, -0.834, 0.022)
        << "not brought into a turn";
}

TEST(SunPosition, KeepsDayAndSeasonAsFarAsWindowsCounts) {
    // The short series drifts by some degrees in ten thousand years, and so does the calendar; far
    // beyond, only the range is left.
    for (const std::uint16_t year :
         {std::uint16_t{1601}, std::uint16_t{2500}, std::uint16_t{9999}}) {
        const Sun sun({year, 6, 0, 21, 12, 0, 0, 0});
        EXPECT_NEAR(sun.declination, 23.0, 0.5) << year;
        EXPECT_LT(std::abs(std::remainder(sun.hourAngle, 360.0)), 8.0) << year;
    }
    EXPECT_LE(std::abs(Sun({30827, 12, 0, 21, 12, 0, 0, 0}).declination), 23.45);
}

TEST(JulianDate, CountsEachDayOnceAndBeginsItAtNoon) {
    using std::chrono::days;
    using std::chrono::sys_days;
    const sys_days end(std::chrono::year(2101) / 1 / 1);
    std::int32_t expected = 2305814;
    for (sys_days day(std::chrono::year(1601) / 1 / 1); day < end; day += days(1), ++expected) {
        const std::chrono::year_month_day date(day);
        const int year = static_cast<int>(date.year());
        const auto month = static_cast<std::int32_t>(static_cast<unsigned>(date.month()));
        const auto dayOfMonth = static_cast<std::int32_t>(static_cast<unsigned>(date.day()));
        ASSERT_EQ(JulianDayNumber(year, month, dayOfMonth), expected) << year << '-' << month;
    }
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

void ExpectNear(const CVector4& v, const CVector4& expected, const char* why = "") {
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(v[i], expected[i], 1e-9) << why << " component " << i;
}

/// Turned about all axes and moved: no element is where a transposition would not show.
CMatrix4 SomeMatrix(double x, double y, double z) {
    CMatrix4 m;
    m.SetTranslation(1.0, -2.0, 3.0);
    m.RotateX(x);
    m.RotateY(y);
    m.RotateZ(z);
    return m;
}

TEST(CMatrix4, TurnsCounterClockwiseLastRotationFirst) {
    const struct {
        const char* why;
        double x, y, z;  // quarter turns, X applied last
        CVector4 from, to;
    } cases[] = {
        {"Y takes Z to X", 0, 1, 0, {0, 0, 1, 0}, {1, 0, 0, 0}},
        {"X to Y about Z, then Y to Z about X", 1, 0, 1, {1, 0, 0, 0}, {0, 0, 1, 0}},
        {"points move, directions do not", 0, 0, 0, {1, 1, 1, 1}, {2, -1, 4, 1}},
    };
    for (const auto& c : cases) {
        CVector4 v = c.from;
        SomeMatrix(c.x * kPi / 2.0, c.y * kPi / 2.0, c.z * kPi / 2.0).Transform(v);
        ExpectNear(v, c.to, c.why);
    }
}

TEST(CMatrix4, InverseCancelsWithoutPivoting) {
    for (double angle = 0.1; angle < 1.5; angle += 0.1) {
        const CMatrix4 m = SomeMatrix(angle, -angle, 2.0 * angle);
        CMatrix4 inverse = m;
        inverse.Invert();
        CVector4 v{1, -2, 3, 1};
        m.Transform(v);
        inverse.Transform(v);
        ExpectNear(v, {1, -2, 3, 1});
    }
    CMatrix4 swap;  // x and y exchanged: invertible, but only with pivoting
    swap[0] = swap[5] = 0.0;
    swap[1] = swap[4] = 1.0;
    swap.Invert();
    EXPECT_FALSE(std::isfinite(swap[0]));
}

TEST(CMatrix4, TransposesInPlaceAndMovesPackedPointsByThreeRows) {
    CMatrix4 m = SomeMatrix(0.3, -1.1, 2.5);
    CMatrix4 inPlace = m;
    inPlace.Transpose();
    for (int i = 0; i < 16; ++i) EXPECT_EQ(inPlace[4 * (i % 4) + i / 4], m[i]);
    double points[] = {0, 0, 0, -4, 5, -6, 99};
    CVector4 second{-4, 5, -6, 1};
    m.Transform(second);
    m[12] = m[13] = m[14] = m[15] = 17.0;
    CMatrix4::TransformPoints(points, 2, m);
    ExpectNear({points[3], points[4], points[5], 1}, second);
    EXPECT_EQ(points[6], 99.0) << "beyond the count";
}

}  // namespace
