#include "photos/photo_order.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

CityRecord CityAt(double distance, unsigned char nearest = 0) {
    CityRecord city = {};
    city.latitude = city.longitude = 10.0;
    city.distanceSq = distance;
    city.nearest = nearest;
    return city;
}

TEST(PhotoOrder, PutsNearCitiesAndNewPhotosFirst) {
    CityRecord unplaced = CityAt(0.0);
    unplaced.latitude = 0.0;
    // Each key stands before all that follow it.
    const PhotoOrderKey ordered[] = {
        MakePhotoOrderKey(CityAt(0.5), 9, 3),    MakePhotoOrderKey(CityAt(0.5), 9, 2),
        MakePhotoOrderKey(CityAt(1.0, 1), 8, 1), MakePhotoOrderKey(CityAt(1.0), 2, 1),
        MakePhotoOrderKey(CityAt(1.0), 3, 7),    MakePhotoOrderKey(CityAt(kNan, 1), 7, 1),
        MakePhotoOrderKey(unplaced, 1, 5),       MakePhotoOrderKey(CityAt(kNan), 4, 2),
    };
    for (std::size_t i = 0; i < std::size(ordered); ++i) {
        for (std::size_t j = 0; j < std::size(ordered); ++j) {
            EXPECT_EQ(IsShownBefore(ordered[i], ordered[j]), i < j) << i << " and " << j;
        }
    }
}

}  // namespace
