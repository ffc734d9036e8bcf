#include "window/city_pick.h"

CityPick PickCity(const CityTable& cities, const CVector4& point) noexcept {
    CityPick pick;
    pick.index = FindCitiesNear(cities, point, kCityReach, nullptr, kMostCitiesNear, pick.hits);
    return pick;
}
