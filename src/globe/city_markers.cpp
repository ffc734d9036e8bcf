#include "globe/city_markers.h"

#include <xmmintrin.h>

#include <algorithm>

#include "base/angles.h"
#include "globe/geographic.h"

namespace {

constexpr double kMarkerLift = 1.0001;  // globe radii: at 1.0 the depth test would eat the markers
constexpr double kFarthestSq = 1e38;  // globe units squared; what is farther is nearest to nothing

double DistanceSq(const double (&marker)[4], const CVector4& point) {
    return Square(marker[0] - point.x) + Square(marker[1] - point.y) + Square(marker[2] - point.z);
}

/// Writes `flag` only when it changes: the table is large, and a pass that only reads leaves its
/// memory clean.
void SetFlag(unsigned char& flag, bool on) {
    const auto value = static_cast<unsigned char>(on ? 1 : 0);
    if (flag != value) flag = value;
}

/// How many records ahead the pass over the table asks memory for what it will read. They lie too
/// far apart for the processor to guess it by itself; a large table takes a quarter less time.
constexpr std::size_t kFetchAhead = 32;

}  // namespace

void PlaceCityMarkers(const CityTable& cities, double radius) noexcept {
    for (CityRecord& city : cities.Records()) {
        if (!HasCoordinates(city)) continue;
        const CVector4 marker = LatLonToPoint(city.latitude, city.longitude, radius * kMarkerLift);
        for (int i = 0; i < 4; ++i) city.markerPoint[i] = marker[i];
    }
}

std::int32_t CompareMarkers(const CityRecord& a, const CityRecord& b, double reference) noexcept {
    const double rawA = a.windowPoint[1];
    const double rawB = b.windowPoint[1];
    const double keyA = rawA - reference;
    const double keyB = rawB - reference;
    if (keyB > keyA) return 1;
    if (keyA > keyB) return -1;
    // Deliberate: the other way round than above.
    if (rawA > rawB) return 1;
    return rawB > rawA ? -1 : 0;
}

std::int32_t FindCitiesNear(const CityTable& cities, const CVector4& point, double radius,
                            CityRecord** out, std::int32_t capacity, std::int32_t& count) noexcept {
    count = 0;
    double nearestSq = kFarthestSq;
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
        // A marker that is not a number fails both comparisons below: never in range, never
        // nearest.
        const double distanceSq = DistanceSq(city.markerPoint, point);
        if (out == nullptr) city.distanceSq = distanceSq;
        const bool inRange = radiusSq >= distanceSq;
        SetFlag(city.inRange, inRange);
        if (inRange && count < capacity) {
            if (out != nullptr) out[count] = &city;
            ++count;
        }
        if (nearestSq > distanceSq) {  // strictly: the first of equally near cities wins
            nearestSq = distanceSq;
            nearestIndex = static_cast<std::int32_t>(i);
        }
    }
    if (nearestIndex >= 0) SetFlag(records[static_cast<std::size_t>(nearestIndex)].nearest, true);
    return nearestIndex;
}
