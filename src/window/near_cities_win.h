#pragma once

#include <array>
#include <cstdint>

#include "cities/city_clock_win.h"
#include "cities/city_pick.h"
#include "render/geo_point.h"
#include "window/gl_resources_win.h"

/// Finds the cities near the place under the pointer and draws their labels.
class NearCities {
public:
    /// @param zones  time zones by number, for cities whose record has only the number of the zone;
    ///               must outlive this object
    explicit NearCities(TimeZoneTable& zones) noexcept : clock_(zones) {}

    /// Finds the cities near `place`, for the labels of this frame. Allocates nothing.
    void Find(const CityTable& cities, const CVector4& place) noexcept;
    /// Draws the labels. The projection must map to window pixels, y upward.
    void DrawLabels(const CGeoPoint& pointed, const GlResources& gl) noexcept;

private:
    SystemCityClock clock_;
    std::array<CityRecord*, kMaxCitiesNear> found_ = {};
    std::int32_t count_ = 0;
};
