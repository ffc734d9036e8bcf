#pragma once
// The column of city names and local times beside the pointer.

#include <cstdint>

#include "globe/city_table.h"
#include "render/geo_point.h"
#include "render/gl_font.h"
#include "render/scene.h"

/// Labels in one column at most.
inline constexpr std::int32_t kMaxLabels = 64;
/// Bytes of a name or time text, terminator included; longer ones are cut.
inline constexpr std::int32_t kLabelTextSize = 64;

/// Tells the labels what time it is in a city. The shell's asks Windows, tests make their own.
class CityClock {
public:
    /// Takes the instant that all texts show until the next call.
    virtual void TakeTime() noexcept = 0;
    /// Writes the city's local time into `text`, in the system's ANSI code page; empty when the
    /// city's zone is unknown. May write the city's `timeZone`.
    virtual void WriteTime(CityRecord& city, char (&text)[kLabelTextSize]) noexcept = 0;

protected:
    ~CityClock() = default;
};

/// Returns the whole pixel that `coordinate` (window pixels) is within 1e-6 of, else `coordinate`.
/// The pointer's own pixel comes back from the globe with an error of about 1e-12; cut to an
/// integer without this, it would be one pixel off in half of all places.
double SnapToPixel(double coordinate) noexcept;

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
