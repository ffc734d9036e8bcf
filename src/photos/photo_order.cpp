#include "photos/photo_order.h"

#include <cmath>
#include <limits>

PhotoOrderKey MakePhotoOrderKey(const CityRecord& city, std::int32_t cityIndex,
                                std::int32_t photoNumber) noexcept {
    // Use infinity in two cases: for a city without a position, because such a city has no
    // distance, and instead of a NaN, because a NaN would break the order of the sort.
    const bool known = HasCoordinates(city) && !std::isnan(city.distanceSq);
    const double distance = known ? city.distanceSq : std::numeric_limits<double>::infinity();
    return {distance, city.nearest, cityIndex, photoNumber};
}

bool IsShownBefore(const PhotoOrderKey& a, const PhotoOrderKey& b) noexcept {
    if (a.cityIndex == b.cityIndex) return a.photoNumber > b.photoNumber;
    if (a.distance != b.distance) return a.distance < b.distance;
    if (a.nearest != b.nearest) return a.nearest > b.nearest;
    return a.cityIndex < b.cityIndex;
}
