#pragma once
// Draws the column of city names and local times beside the pointer.

#include <cstdint>

#include "cities/city_clock.h"
#include "render/geo_point.h"
#include "render/gl_font.h"
#include "render/scene.h"

/// Maximum number of labels in the column.
inline constexpr std::int32_t kMaxLabels = 64;

/// Rounds `coordinate` (window pixels) to a whole pixel that is at most 1e-6 away; otherwise
/// returns it unchanged. The pixel of the pointer, picked on the globe and projected back, has an
/// error of about 1e-12. Without this rounding the conversion to an integer would often be one
/// pixel off.
double SnapToPixel(double coordinate) noexcept;

/// Compares two cities for the order of the labels: the larger y of `windowPoint`, higher on the
/// screen, comes first.
/// @param reference  subtracted from both y before the comparison
/// @return 1 when `b` comes first, -1 when `a` comes first, 0 when both y are equal
/// Deliberate: of two different y that the subtraction makes equal, the larger one comes last.
std::int32_t CompareMarkers(const CityRecord& a, const CityRecord& b, double reference) noexcept;

/// Draws one row for each city of `entries`, ordered as the cities are on the screen from the top
/// down. The row of the nearest city is highlighted and at the height of the pointer, and that city
/// gets a dot. Draws nothing when the pointed place is behind the limb of the globe.
/// @param entries    in and out: sorted, and `windowPoint` of each is set. Null: draws nothing
/// @param count      number of entries; beyond kMaxLabels the lowest on the screen are not drawn
/// @param limbDepth  z of the limb in camera space, from MeasureGlobe; 0 (not measured yet): draws
///                   nothing
/// Window thread; the context must be current with a projection to window pixels, without lighting
/// and depth test. Leaves the point size at 3.5.
void RenderCityLabels(CityRecord** entries, std::int32_t count, const CGeoPoint& geoPoint,
                      const CScene& scene, const CGLFont& font, double limbDepth,
                      CityClock& clock) noexcept;
