// Coordinates, angles and matrices of the globe, where the Sun stands over it, and its mesh.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "globe/day_night_mesh.h"
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
    for (double angle = -179.5; angle <= 180.0; angle += 0.5) {
        EXPECT_NEAR(Atan2Deg(3.0 * SinDeg(angle), 3.0 * CosDeg(angle)), angle, 1e-10);
    }
    EXPECT_EQ(Atan2Deg(0.0, 0.0), 0.0);
    EXPECT_EQ(Atan2Deg(-2.0, 0.0), -90.0);
    EXPECT_EQ(Atan2Deg(0.0, -2.0), 180.0);
    EXPECT_NEAR(CosDeg(540.0), -1.0, 1e-15);
    EXPECT_EQ(Frac(-0.25), 0.75) << "above the lower whole number";
    EXPECT_EQ(Frac(-3.0), 0.0);
}

struct Sun {
    explicit Sun(const SYSTEMTIME& utc) { SunPosition(utc, &hourAngle, &declination); }
    double hourAngle = 0.0;
    double declination = 0.0;
};

// Apparent geocentric places from an ephemeris library (VSOP87 with nutation and aberration), not
// from this project. The short series stays within 0.018 and 0.010 degrees of it; it drifts by some
// degrees in ten thousand years, and so does the calendar; far beyond, only the range is left.
TEST(SunPosition, AgreesWithAnEphemerisAndKeepsDayAndSeasonAsFarAsWindowsCounts) {
    for (const Row& row : Table("sun")) {
        const auto field = [&row](std::size_t i) { return static_cast<std::uint16_t>(row.Int(i)); };
        const SYSTEMTIME utc = {field(0), field(1), 4, field(2), field(3), field(4), field(5), 999};
        const Sun sun(utc);
        EXPECT_LT(std::abs(std::remainder(sun.hourAngle - row.Real(6), 360.0)), row.Real(8))
            << row.why;
        EXPECT_NEAR(sun.declination, row.Real(7), row.Real(9)) << row.why;
    }
    EXPECT_NEAR(Sun({2000, 1, 0, 1, 12, 0, 0, 0}).hourAngle, -0.834, 0.022)
        << "not brought into a turn";
    EXPECT_LE(std::abs(Sun({30827, 12, 0, 21, 12, 0, 0, 0}).declination), 23.45);
}

TEST(JulianDate, CountsEachDayOnceAndBeginsItAtNoon) {
    using namespace std::chrono;
    std::int32_t expected = 2305814;
    for (sys_days day(year(1601) / 1 / 1); day < year(2101) / 1 / 1; day += days(1), ++expected) {
        const year_month_day date(day);
        const auto month = static_cast<std::int32_t>(unsigned{date.month()});
        const auto dayOfMonth = static_cast<std::int32_t>(unsigned{date.day()});
        ASSERT_EQ(JulianDayNumber(int{date.year()}, month, dayOfMonth), expected)
            << int{date.year()};
    }
    EXPECT_EQ(JulianDayNumber(9999, 12, 31), 5373484);
    EXPECT_DOUBLE_EQ(JulianDate(1957, 10, 4, 19, 26, 24), 2436116.31);  // first satellite
}

// 1987 April 10, 19h 21m UT: sidereal time and Venus from Washington (Meeus, chapters 12 and 13).
TEST(Astronomy, AgreesWithThePublishedExamples) {
    const double evening = 8.0 + 34.0 / 60.0 + 57.0896 / 3600.0;
    const double mjd = ModifiedJulianDate(1987, 4, 10, 19, 21, 0);
    EXPECT_NEAR(SiderealTime(mjd, 0.0), evening, 1e-6);
    EXPECT_NEAR(SiderealTime(mjd, 75.0), evening - 5.0, 1e-6) << "75 degrees west";
    EXPECT_NEAR(SiderealTime(mjd, 150.0), evening - 10.0 + 24.0, 1e-6) << "kept in the day";
    for (const double side : {1.0, -1.0}) {  // behind and as long before the meridian
        double altitude = 0.0;
        double azimuth = 0.0;
        EquatorialToHorizontal(-6.719892, side * 64.352133, 38.921389, altitude, azimuth);
        EXPECT_NEAR(altitude, 15.1249, 1e-4);
        EXPECT_NEAR(azimuth, side > 0.0 ? 68.0337 : 360.0 - 68.0337, 1e-4);
    }
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
        CMatrix4 m = SomeMatrix(angle, -angle, 2.0 * angle);
        CVector4 v{1, -2, 3, 1};
        m.Transform(v);
        m.Invert();
        m.Transform(v);
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
    CVector4 second({-4.0F, 5.0F, -6.0F});
    m.Transform(second);
    m[12] = m[13] = m[14] = m[15] = 17.0;
    CMatrix4::TransformPoints(points, 2, m);
    ExpectNear({points[3], points[4], points[5], 1}, second);
    EXPECT_EQ(points[6], 99.0) << "beyond the count";
}

TEST(DayNightMesh, IsASphereOfTilesWhoseNormalsTurnTowardsTheSunOrAway) {
    const CVector4 sun = LatLonToPoint(20.0, -50.0, 1.0);
    const DayNightMesh mesh({12, 6, 1}, 3.0F, sun);
    std::vector<MeshVertex> row(4);
    for (const int side : {1, -1}) {
        const Hemisphere hemisphere = side > 0 ? Hemisphere::North : Hemisphere::South;
        EXPECT_EQ(mesh.TextureT(hemisphere, side > 0 ? 3 : 0), 1.0F) << "northern edge of a tile";
        for (int quarter = 0; quarter < kMeshQuarters; ++quarter) {
            for (int ring = 0; ring < 3; ++ring) {
                mesh.FillRow(hemisphere, quarter, ring, row);
                for (int i = 0; i <= 3; ++i) {
                    const MeshVertex& vertex = row[static_cast<std::size_t>(i)];
                    const CVector4 normal(vertex.normal);
                    const CVector4 point(vertex.position);
                    const CVector4 place =
                        LatLonToPoint(side * ring * 30.0, 180.0 - quarter * 90.0 - i * 30.0, 3.0);
                    EXPECT_LT(std::hypot(point.x - place.x, point.y - place.y, point.z - place.z),
                              1e-5);
                    EXPECT_NEAR(Length(normal), 1.0, 1e-6);
                    EXPECT_GE(Dot(normal, sun) * Dot(point, sun), 0.0) << "day stays day";
                    EXPECT_GE(std::abs(Dot(normal, sun)), std::abs(Dot(point, sun)) / 3.0 - 1e-6);
                    EXPECT_GT(Dot(normal, point), 0.0) << "outward";
                }
            }
        }
    }
    EXPECT_TRUE(mesh.TextureS(0) == 1.0F && mesh.TextureS(3) == 0.0F) << "from east to west";
    EXPECT_EQ(DayNightMesh({3, 6, 1}, 3.0F, sun).BandsPerHemisphere(), 0) << "too coarse";
}

}  // namespace
