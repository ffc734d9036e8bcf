#pragma once
// The column of city names and local times beside the pointer.

#include <cstdint>

#include "cities/city_clock.h"
#include "render/geo_point.h"
#include "render/gl_font.h"
#include "render/scene.h"

/// Labels in one column at most.
inline constexpr std::int32_t kMaxLabels = 64;

/// Returns the whole pixel that `coordinate` (window pixels) is within 1e-6 of, else `coordinate`.
/// The pointer's own pixel comes back from the globe with an error of about 1e-12; cut to an
/// integer without this, it would be one pixel off in half of all places.
double SnapToPixel(double coordinate) noexcept;

/// Order of the labels: by the key `windowPoint` y, larger (higher on screen) first.
/// @param reference  subtracted from both keys before they are compared
/// @return 1 when `b` goes first, -1 when `a` goes first, 0 when their keys are equal
/// Deliberate: keys that only become equal by the subtraction sort the larger raw key last.
std::int32_t CompareMarkers(const CityRecord& a, const CityRecord& b, double reference) noexcept;

/// Draws the labels of `entries`: one row a city, in the order in which the cities lie on screen,
/// the nearest city's row highlighted and level with the pointer, with a dot on that city. Draws
/// nothing while the pointed place lies behind the globe's edge.
/// @param entries    reordered in place; each gets its `windowPoint`. Null: nothing is drawn
/// @param count      entries; more than kMaxLabels are sorted, but the lowest ones are not drawn
/// @param limbDepth  depth of the globe's edge in camera space, as MeasureGlobe gives it; 0 (not
///                   measured yet) hides the labels
/// Window thread, context current, flat projection in window pixels, no lighting, no depth test.
/// The point size stays at 3.5.
void RenderCityLabels(CityRecord** entries, std::int32_t count, const CGeoPoint& geoPoint,
                      const CScene& scene, const CGLFont& font, double limbDepth,
                      CityClock& clock) noexcept;
