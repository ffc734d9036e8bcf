#pragma once
// Draws the column of city names and local times beside the pointer.

#include <cstdint>

#include "cities/city_clock.h"
#include "render/geo_point.h"
#include "render/gl_font.h"
#include "render/scene.h"

/// Maximum number of labels in the column.
inline constexpr std::int32_t kMaxLabels = 64;

/// Rounds `coordinate` (window pixels) to the nearest whole pixel if that pixel is at most 1e-6
/// away; otherwise returns `coordinate` unchanged. Reason: when the place under the pointer is
/// picked on the globe and projected back to the window, the result has an error of about 1e-12.
/// Without this rounding, the conversion to an integer would often be one pixel off.
double SnapToPixel(double coordinate) noexcept;

/// Compares two cities for the order of the labels. The city with the larger y of `windowPoint` is
/// higher on the screen and comes first.
/// @param reference  window pixels; subtracted from both y before the comparison
/// @return 1 when `b` comes first, -1 when `a` comes first, 0 when both y are equal
/// Deliberate: when rounding in the subtraction makes two different y equal, the order is the
/// opposite: the city with the larger y comes last.
std::int32_t CompareMarkers(const CityRecord& a, const CityRecord& b, double reference) noexcept;

/// Draws one row for each city of `entries` that has a position. The rows have the order of the
/// cities on the screen, from top to bottom. The row of the nearest city is highlighted and is at
/// the height of the pointer, and a dot marks this city on the globe. Draws nothing when the
/// pointed place is behind the limb, the visible edge of the globe.
/// @param entries    in and out: the entries are sorted, and their `windowPoint` is set. Null:
///                   draws nothing
/// @param count      number of entries; if there are more than kMaxLabels, the lowest cities on
///                   the screen get no row
/// @param geoPoint   its globePoint is the place of the pointer on the globe
/// @param limbDepth  z of the limb in camera space, from MeasureGlobe. 0 means that the limb is not
///                   measured yet: draws nothing
/// Window thread. The context must be current. Its projection must map to window pixels, and
/// lighting and depth test must be off. Leaves the point size at 3.5.
void RenderCityLabels(CityRecord** entries, std::int32_t count, const CGeoPoint& geoPoint,
                      const CScene& scene, const CGLFont& font, double limbDepth,
                      CityClock& clock) noexcept;
