#include "globe/planet_mesh.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "globe/geographic.h"
#include "globe/matrix4.h"

namespace {

/// The bending as it is meant: turn the Sun onto +Z, stretch z tenfold, turn back, normalise.
CVector4 BentByMatrices(const float (&p)[3], double declination, double longitude) {
    CMatrix4 fromZ;
    fromZ.RotateY(DegToRad(longitude));
    fromZ.RotateX(DegToRad(-declination));
    CMatrix4 toZ;
    toZ.RotateX(DegToRad(declination));
    toZ.RotateY(DegToRad(-longitude));
    CVector4 v(p);
    toZ.Transform(v);
    v.z *= 10.0;
    fromZ.Transform(v);
    v.Normalize();
    return v;
}

TEST(PlanetMesh, BendsEveryNormalAsTheMatricesWould) {
    const MeshDetail details[] = {{180, 120, 10}, {120, 90, 5}, {36, 30, 1}};
    const double suns[][2] = {{0.0, 0.0}, {23.44, -123.4}, {-11.7, -584.64}, {5.0, 180.0}};
    for (const MeshDetail& detail : details) {
        for (const auto& [declination, longitude] : suns) {
            const PlanetMesh mesh(detail, 1.0F, LatLonToPoint(declination, longitude, 1.0));
            std::vector<MeshVertex> row(static_cast<std::size_t>(mesh.SegmentsPerQuarter()) + 1);
            double worst = 0.0;
            for (std::int32_t i = 0; i <= 8 * mesh.BandsPerHemisphere() + 7; ++i) {
                const auto hemisphere = i % 2 == 0 ? Hemisphere::North : Hemisphere::South;
                mesh.FillRow(hemisphere, i / 2 % 4, i / 8, row);
                for (const MeshVertex& vertex : row) {
                    const CVector4 bent = BentByMatrices(vertex.position, declination, longitude);
                    for (int axis = 0; axis < 3; ++axis) {
                        worst = std::max(worst, std::abs(vertex.normal[axis] - bent[axis]));
                    }
                }
            }
            EXPECT_LE(worst, 1e-6) << detail.sphereSlices << " slices, Sun over " << longitude;
        }
    }
}

TEST(PlanetMesh, EveryVertexShowsItsOwnPlaceAndNeighboursShareTheirEdge) {
    const PlanetMesh mesh({180, 120, 1}, 3.0F, LatLonToPoint(12.0, 34.0, 1.0));
    std::vector<MeshVertex> row(46);
    std::vector<MeshVertex> next(46);
    const auto expectSame = [](const MeshVertex& a, const MeshVertex& b) {
        EXPECT_TRUE(std::equal(a.position, a.position + 3, b.position));
        EXPECT_TRUE(std::equal(a.normal, a.normal + 3, b.normal));
    };
    for (std::int32_t quarter = 0; quarter < kMeshQuarters; ++quarter) {
        for (const std::int32_t ring : {0, 1, 30, 59, 60}) {
            mesh.FillRow(Hemisphere::South, quarter, ring, row);
            mesh.FillRow(Hemisphere::South, (quarter + 1) % kMeshQuarters, ring, next);
            expectSame(row.back(), next.front());
            for (std::int32_t i = 0; i < 46; ++i) {
                const double latitude = -90.0 + 90.0 * mesh.TextureT(Hemisphere::South, ring);
                const double longitude =
                    90.0 * (1.0 - quarter + static_cast<double>(mesh.TextureS(i)));
                const CVector4 place = LatLonToPoint(latitude, longitude, 3.0);
                const float* p = row[static_cast<std::size_t>(i)].position;
                EXPECT_LT(std::hypot(place.x - p[0], place.y - p[1], place.z - p[2]), 3e-6);
            }
        }
        mesh.FillRow(Hemisphere::North, quarter, 0, row);
        mesh.FillRow(Hemisphere::South, quarter, 0, next);
        for (std::size_t i = 0; i < row.size(); ++i) expectSame(row[i], next[i]);
    }
}

}  // namespace
