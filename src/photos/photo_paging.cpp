#include "photos/photo_paging.h"

#include <algorithm>

std::int32_t NextFirstShown(std::int32_t firstShown, std::int32_t shown,
                            std::int32_t count) noexcept {
    if (!HasNextPhotos(firstShown, shown, count)) return firstShown;
    return std::min(firstShown + kPhotosPerPage, count - 1);
}

std::int32_t PreviousFirstShown(std::int32_t firstShown, std::span<const std::int32_t> rooms,
                                std::int32_t freeHeight) noexcept {
    std::int32_t first = firstShown;
    for (const std::int32_t room : rooms) {
        freeHeight -= room;
        if (freeHeight < 0 || first <= 0 || firstShown - first == kPhotosPerPage) break;
        --first;
    }
    return first;
}
