#pragma once
// Positions of the host's cities on the globe.

#include "cities/city_table.h"

/// Writes the marker point of every city with a position. The points lie on a sphere whose radius
/// is 1.0001 times `radius`.
void PlaceCityMarkers(const CityTable& cities, double radius) noexcept;
