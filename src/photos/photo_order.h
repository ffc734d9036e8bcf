#pragma once

#include <cstdint>

#include "cities/city_table.h"

/// Sort key of a photo. Its values are copies, because the host may change its records during the
/// sort.
struct PhotoOrderKey {
    /// Squared distance from the city to the place that was picked last, scene units squared;
    /// infinity when unknown.
    double distance = 0.0;
    std::int32_t nearest = 0;  ///< not 0: the city is the nearest one to that place
    std::int32_t cityIndex = -1;
    std::int32_t photoNumber = 0;
};

/// Makes the sort key of a photo. @param city  the record at `cityIndex`
PhotoOrderKey MakePhotoOrderKey(const CityRecord& city, std::int32_t cityIndex,
                                std::int32_t photoNumber) noexcept;

/// Whether the photo of `a` is shown before the photo of `b`. The city with the smaller distance
/// comes first. At equal distances the city that is marked as nearest comes first, and otherwise
/// the city with the smaller index. Within a city the photo with the higher number, which is newer,
/// comes first. The result is a strict weak order for keys from MakePhotoOrderKey.
bool IsShownBefore(const PhotoOrderKey& a, const PhotoOrderKey& b) noexcept;
