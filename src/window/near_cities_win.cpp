#include "window/near_cities_win.h"

#include "globe/city_labels.h"

void NearCities::Find(const CityTable& cities, const CVector4& place) noexcept {
    FindCitiesNear(cities, place, kCityReach, found_.data(), kMaxCitiesNear, count_);
}

void NearCities::DrawLabels(const CGeoPoint& pointed, const GlResources& gl) noexcept {
    RenderCityLabels(found_.data(), count_, pointed, gl.Scene(), gl.Font(), gl.Globe().limbDepth,
                     clock_);
}
