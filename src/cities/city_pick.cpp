#include "cities/city_pick.h"

#include <xmmintrin.h>

#include <algorithm>

#include "math/angles.h"

namespace {

// Scene units squared. A city farther from the point than this is not the nearest city.
constexpr double kMaxDistanceSq = 1e38;

double DistanceSq(const double (&marker)[4], const CVector4& point) {
    return Square(marker[0] - point.x) + Square(marker[1] - point.y) + Square(marker[2] - point.z);
}

/// Writes `flag` only when its value changes. Most flags of a large table stay the same, and memory
/// that was only read need not be written back.
void SetFlag(unsigned char& flag, bool on) {
    const auto value = static_cast<unsigned char>(on ? 1 : 0);
    if (flag != value) flag = value;
}

/// How many records ahead FindCitiesNear prefetches memory. The records are so large that the
/// processor does not prefetch them by itself. Prefetching makes the search of a large table a
/// quarter faster.
constexpr std::size_t kFetchAhead = 32;

}  // namespace

std::int32_t FindCitiesNear(const CityTable& cities, const CVector4& point, double radius,
                            CityRecord** out, std::int32_t capacity, std::int32_t& count) noexcept {
    count = 0;
    double nearestSq = kMaxDistanceSq;
    std::int32_t nearestIndex = -1;
    const double radiusSq = radius * radius;
    const auto records = cities.Records();
    for (std::size_t i = 0; i < records.size(); ++i) {
        CityRecord& city = records[i];
        const CityRecord& later = records[std::min(i + kFetchAhead, records.size() - 1)];
        _mm_prefetch(reinterpret_cast<const char*>(&later.latitude), _MM_HINT_T0);
        _mm_prefetch(reinterpret_cast<const char*>(&later.inRange), _MM_HINT_T0);
        SetFlag(city.nearest, false);
        if (!HasCoordinates(city)) {
            SetFlag(city.inRange, false);
            continue;
        }
        // Both comparisons below are written so that a NaN fails them: a city with a NaN is never
        // in range and never the nearest.
        const double distanceSq = DistanceSq(city.markerPoint, point);
        if (out == nullptr) city.distanceSq = distanceSq;
        const bool inRange = radiusSq >= distanceSq;
        SetFlag(city.inRange, inRange);
        if (inRange && count < capacity) {
            if (out != nullptr) out[count] = &city;
            ++count;
        }
        if (nearestSq > distanceSq) {  // strict: of equally near cities the first one wins
            nearestSq = distanceSq;
            nearestIndex = static_cast<std::int32_t>(i);
        }
    }
    if (nearestIndex >= 0) SetFlag(records[static_cast<std::size_t>(nearestIndex)].nearest, true);
    return nearestIndex;
}

CityPick PickCity(const CityTable& cities, const CVector4& point) noexcept {
    CityPick pick;
    pick.index = FindCitiesNear(cities, point, kCityReach, nullptr, kMaxCitiesNear, pick.hits);
    return pick;
}
