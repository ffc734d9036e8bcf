#pragma once
// Where the host's cities stand on the globe, and which of them are near a point.

#include <cstdint>

#include "globe/city_table.h"
#include "globe/vector4.h"

/// Writes the marker point of every city with a position: on a sphere of 1.0001 times `radius`.
void PlaceCityMarkers(const CityTable& cities, double radius) noexcept;

/// Order of labels on screen: by the key `windowPoint` y, larger (higher on screen) first.
/// @param reference  subtracted from both keys before they are compared
/// @return 1 when `b` goes first, -1 when `a` goes first, 0 when their keys are equal
/// Deliberate: keys that only become equal by the subtraction sort the larger raw key last.
std::int32_t CompareMarkers(const CityRecord& a, const CityRecord& b, double reference) noexcept;

/// Flags the cities within `radius` of `point` (`inRange`) and the nearest one (`nearest`); clears
/// both flags on all others.
/// @param point     in the globe's frame
/// @param radius    globe units
/// @param out       gets the cities in range in table order; null: `distanceSq` is stored instead
/// @param capacity  entries in `out`; `count` never passes it
/// @param count     out: cities in range, also counted when `out` is null
/// @return index of the nearest city with a position, -1 when none has one
std::int32_t FindCitiesNear(const CityTable& cities, const CVector4& point, double radius,
                            CityRecord** out, std::int32_t capacity, std::int32_t& count) noexcept;
