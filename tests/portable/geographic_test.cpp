#include "globe/geographic.h"

#include <gtest/gtest.h>

#include "render/geo_point.h"
#include "render/scene.h"
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

}  // namespace
