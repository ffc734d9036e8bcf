#include "photos/photo_paging.h"

#include <algorithm>

namespace {

std::int32_t PageBehind(const PhotoPage& page) noexcept {
    const std::int64_t next = std::int64_t{page.firstShown} + kPhotosPerPage;
    return static_cast<std::int32_t>(std::min(next, std::int64_t{page.count} - 1));
}

}  // namespace

bool HasNextPhotos(const PhotoPage& page) noexcept {
    return std::int64_t{page.firstShown} + page.shown < page.count &&
           PageBehind(page) < page.brokenFrom;
}

std::int32_t NextFirstShown(const PhotoPage& page) noexcept {
    return HasNextPhotos(page) ? PageBehind(page) : page.firstShown;
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
