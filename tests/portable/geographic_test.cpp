#include "globe/geographic.h"

#include <gtest/gtest.h>

#include "render/geo_point.h"
#include "render/scene.h"
#include "support/table.h"

namespace {

TEST(Geographic, AxesPointWhereTheMapExpectsThem) {
    for (const Row& row : Table("geographic")) {
        const CVector4 point = LatLonToPoint(row.Real(0), row.Real(1), 2.0);
        EXPECT_NEAR(point.x, row.Real(2), 1e-12) << row.why;
        EXPECT_NEAR(point.y, row.Real(3), 1e-12) << row.why;
        EXPECT_NEAR(point.z, row.Real(4), 1e-12) << row.why;
    }
}

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

TEST(GeoPoint, WaitsForTheFirstHitAndSurvivesThePole) {
    CScene scene;
    CGeoPoint geoPoint;
    UpdateGeoPoint(geoPoint, scene);
    EXPECT_EQ(geoPoint.latitudeDeg, 0.0);
    EXPECT_EQ(geoPoint.windowPoint.x, 0.0) << "not projected either";
    geoPoint.globePoint = {0.0, -3.0, 0.0, 1.0};
    UpdateGeoPoint(geoPoint, scene);
    EXPECT_NEAR(geoPoint.latitudeDeg, -90.0, 1e-9);
    EXPECT_EQ(geoPoint.longitudeDeg, 0.0);
}

}  // namespace
