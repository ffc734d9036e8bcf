#pragma once
// Where the cities of the host stand on the globe.

#include "cities/city_table.h"

/// Writes the marker point of every city with a position: on a sphere of 1.0001 times `radius`.
void PlaceCityMarkers(const CityTable& cities, double radius) noexcept;
