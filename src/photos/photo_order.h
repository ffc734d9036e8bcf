#pragma once

#include <cstdint>

#include "cities/city_table.h"

/// Sort key of a photo. Its values are copies, because the host may change its records during the
/// sort.
struct PhotoOrderKey {
    double distance = 0.0;  ///< squared distance to the last clicked point; infinity for unknown
    std::int32_t nearest = 0;
    std::int32_t cityIndex = -1;
    std::int32_t photoNumber = 0;
};

/// @param city  the record at `cityIndex`
PhotoOrderKey MakePhotoOrderKey(const CityRecord& city, std::int32_t cityIndex,
                                std::int32_t photoNumber) noexcept;

/// Whether the photo of `a` is shown before that of `b`: photos of the city nearest to the place
/// clicked first, then of the city marked as nearest, then in the order of the table; within a city
/// the highest number, the newest photo, first. A strict weak order for keys made as above.
bool IsShownBefore(const PhotoOrderKey& a, const PhotoOrderKey& b) noexcept;
