#include "globe/matrix4.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "base/angles.h"

namespace {

void ExpectNear(const CVector4& v, const CVector4& expected, const char* why = "") {
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(v[i], expected[i], 1e-9) << why << " component " << i;
}

/// Turned about all axes and moved: no element is where a transposition would not show.
CMatrix4 SomeMatrix(double x = 0.3, double y = -1.1, double z = 2.5) {
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
        {"X takes Y to Z", 1, 0, 0, {0, 1, 0, 0}, {0, 0, 1, 0}},
        {"Y takes Z to X", 0, 1, 0, {0, 0, 1, 0}, {1, 0, 0, 0}},
        {"Z takes X to Y", 0, 0, 1, {1, 0, 0, 0}, {0, 1, 0, 0}},
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
    std::mt19937 random(4711);
    std::uniform_real_distribution<double> angle(-kPi, kPi);
    for (int round = 0; round < 200; ++round) {
        const CMatrix4 m = SomeMatrix(angle(random), angle(random), angle(random));
        // A pivot next to zero is divided by all the same: precision is then lost by design.
        if (std::abs(m[0]) < 1e-2 || std::abs(m[10]) < 1e-2) continue;
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
    CMatrix4 m = SomeMatrix();
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
