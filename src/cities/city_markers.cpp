#include "cities/city_markers.h"

#include "math/geographic.h"

namespace {

constexpr double kMarkerLift = 1.0001;  // globe radii; at 1.0 the depth test would hide markers

}  // namespace

void PlaceCityMarkers(const CityTable& cities, double radius) noexcept {
    for (CityRecord& city : cities.Records()) {
        if (!HasCoordinates(city)) continue;
        const CVector4 marker = LatLonToPoint(city.latitude, city.longitude, radius * kMarkerLift);
        for (int i = 0; i < 4; ++i) city.markerPoint[i] = marker[i];
    }
}
