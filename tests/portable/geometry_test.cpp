// Coordinates, angles and matrices of the globe, where the Sun stands over it, and its mesh.
#include <gtest/gtest.h>

#include <cmath>

#include "globe/day_night_mesh.h"
#include "globe/sun_position.h"
#include "math/angles.h"
#include "math/geographic.h"
#include "math/matrix4.h"
#include "math/trigonometry.h"

namespace {

TEST(Geographic, PointsGoBackToTheirCoordinates) {
    for (double lat = -85.0; lat <= 85.0; lat += 17.0) {
        for (double lon = -89.0; lon < 270.0; lon += 31.0) {
            const LatLon back = PointToLatLonDeg(LatLonToPoint(lat, lon, 3.0));
            // Counted on behind the globe, not wrapped.
            EXPECT_LT(std::hypot(back.latitude - lat, back.longitude - lon), 1e-6);
        }
    }
    // x, y, z, latitude, longitude: the origin and the poles, the date line and the western edge,
    // squares too small for exact sums.
    const double cases[][5] = {{0, 0, 0, 0, 0},          {0, 5, 0, 90, 0},
                               {0, -5, -0.0, -90, 0},    {0, 0, -1, 0, 180},
                               {-1, 0, -1e-300, 0, 270}, {2.7e-162, 0, 0, 0, 90},
                               {-1, 0, 0, 0, -90}};
    for (const auto& [x, y, z, latitude, longitude] : cases) {
        const LatLon place = PointToLatLonDeg({x, y, z, 1.0});
        EXPECT_LT(std::hypot(place.latitude - latitude, place.longitude - longitude), 1e-6) << x;
    }
}

TEST(Trigonometry, Atan2FindsTheQuadrantAndTheAxes) {
    for (double angle = -179.5; angle <= 180.0; angle += 0.5)
        EXPECT_NEAR(Atan2Deg(3.0 * SinDeg(angle), 3.0 * CosDeg(angle)), angle, 1e-10);
    EXPECT_TRUE(Atan2Deg(0.0, 0.0) == 0.0 && Atan2Deg(0.0, -2.0) == 180.0);
    EXPECT_TRUE(Atan2Deg(-2.0, 0.0) == -90.0 && Frac(-0.25) == 0.75 && Frac(-3.0) == 0.0);
}

/// Hour angle and declination.
std::pair<double, double> Sun(const SYSTEMTIME& utc) {
    std::pair<double, double> sun;
    SunPosition(utc, &sun.first, &sun.second);
    return sun;
}

// Apparent geocentric places from an ephemeris library (VSOP87 with nutation and aberration), not
// from this project. The short series stays within 0.018 and 0.010 degrees of it; it drifts by some
// degrees in ten thousand years, and so does the calendar; far beyond, only the range is left.
TEST(SunPosition, AgreesWithPublishedPlacesAndKeepsTheSeasonAsFarAsWindowsCounts) {
    const std::tuple<SYSTEMTIME, double, double> cases[] = {
        {{2005, 4, 0, 9, 23, 59, 59, 999}, 179.6443, 7.9039},
        {{2024, 3, 0, 20, 3, 6, 0, 0}, 224.6452, 0.0},
        {{2024, 6, 0, 20, 20, 51, 0, 0}, 132.3037, 23.4382},
        {{2035, 12, 0, 31, 23, 59, 59, 999}, 179.2227, -23.0458}};
    for (const auto& [utc, hourAngle, declination] : cases) {
        EXPECT_LE(std::abs(std::remainder(Sun(utc).first - hourAngle, 360.0)), 0.022);
        EXPECT_NEAR(Sun(utc).second, declination, 0.012);
    }
    EXPECT_NEAR(Sun({2000, 1, 0, 1, 12, 0, 0, 0}).first, -0.834, 0.022)
        << "not brought into a turn";
    EXPECT_NEAR(Sun({1601, 6, 0, 21, 12, 0, 0, 0}).second, 23.0, 0.5);
    EXPECT_NEAR(Sun({9999, 6, 0, 21, 12, 0, 0, 0}).second, 23.0, 0.5);
    EXPECT_LE(std::abs(Sun({30827, 12, 0, 21, 12, 0, 0, 0}).second), 23.45);
    // The parts that others publish.
    EXPECT_EQ(JulianDayNumber(1900, 3, 1), 2415080);
    EXPECT_DOUBLE_EQ(JulianDate(1957, 10, 4, 19, 26, 24), 2436116.31);  // first satellite
    // 1987 April 10, 19h 21m UT: sidereal time and Venus from Washington (Meeus, chapters 12, 13).
    const double mjd = ModifiedJulianDate(1987, 4, 10, 19, 21, 0);
    EXPECT_NEAR(SiderealTime(mjd, 150.0), 8.582525 - 10.0 + 24.0, 1e-6) << "kept in the day";
    double altitude = 0.0;
    double azimuth = 0.0;
    EquatorialToHorizontal(-6.719892, 64.352133, 38.921389, altitude, azimuth);
    EXPECT_LT(std::hypot(altitude - 15.1249, azimuth - 68.0337), 1e-4);
}

void ExpectNear(const CMatrix4& matrix, CVector4 point, const CVector4& expected) {
    matrix.Transform(point);
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(point[i], expected[i], 1e-9) << "component " << i;
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

TEST(CMatrix4, TurnsCounterClockwiseLastRotationFirstAndItsInverseCancels) {
    const double quarter = kPi / 2.0;
    ExpectNear(SomeMatrix(0.0, quarter, 0.0), {0, 0, 1, 0}, {1, 0, 0, 0});
    ExpectNear(SomeMatrix(quarter, 0.0, quarter), {1, 0, 0, 0}, {0, 0, 1, 0});
    ExpectNear(SomeMatrix(0.0, 0.0, 0.0), {1, 1, 1, 1}, {2, -1, 4, 1});
    for (double angle = 0.1; angle < 1.5; angle += 0.1) {
        CMatrix4 m = SomeMatrix(angle, -angle, 2.0 * angle);
        CVector4 v{1, -2, 3, 1};
        m.Transform(v);
        m.Invert();
        ExpectNear(m, v, {1, -2, 3, 1});
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
    CMatrix4 threeRows = m;
    threeRows[12] = threeRows[13] = threeRows[14] = threeRows[15] = 17.0;
    CMatrix4::TransformPoints(points, 2, threeRows);
    ExpectNear(m, CVector4({-4.0F, 5.0F, -6.0F}), {points[3], points[4], points[5], 1});
    EXPECT_EQ(points[6], 99.0) << "beyond the count";
}

TEST(DayNightMesh, IsASphereOfTilesWhoseNormalsTurnTowardsTheSunOrAway) {
    const CVector4 sun = LatLonToPoint(20.0, -50.0, 1.0);
    const DayNightMesh mesh({12, 6, 1}, 3.0F, sun);
    std::vector<MeshVertex> row(4);
    for (int i = 0; i < 2 * kMeshQuarters * 3 * 4; ++i) {
        const int quarter = i / 2 % kMeshQuarters;
        const int ring = i / 8 % 3;
        const int column = i / 24;
        const int side = i % 2 == 0 ? 1 : -1;
        mesh.FillRow(i % 2 == 0 ? Hemisphere::North : Hemisphere::South, quarter, ring, row);
        const MeshVertex& vertex = row[std::size_t(column)];
        const CVector4 normal(vertex.normal);
        const CVector4 point(vertex.position);
        const CVector4 place =
            LatLonToPoint(side * ring * 30.0, 180.0 - quarter * 90.0 - column * 30.0, 3.0);
        EXPECT_LT(std::hypot(point.x - place.x, point.y - place.y, point.z - place.z), 1e-5);
        EXPECT_NEAR(Length(normal), 1.0, 1e-6);
        EXPECT_GE(Dot(normal, sun) * Dot(point, sun), 0.0) << "day stays day";
        EXPECT_GE(std::abs(Dot(normal, sun)), std::abs(Dot(point, sun)) / 3.0 - 1e-6);
        EXPECT_GT(Dot(normal, point), 0.0) << "outward";
    }
    // The northern edge of a tile, then from east to west.
    EXPECT_EQ(mesh.TextureT(Hemisphere::North, 3) + mesh.TextureT(Hemisphere::South, 0), 2.0F);
    EXPECT_TRUE(mesh.TextureS(0) == 1.0F && mesh.TextureS(3) == 0.0F);
    EXPECT_EQ(DayNightMesh({3, 6, 1}, 3.0F, sun).BandsPerHemisphere(), 0) << "too coarse";
}

}  // namespace
