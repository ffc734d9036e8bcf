#include "photos/photo_paging.h"

#include <algorithm>

namespace {

/// Returns the index of the photo 16 places after the first photo of the page, or the index of the
/// last photo when the list ends earlier.
std::int32_t FirstOfNextPage(const PhotoPage& page) noexcept {
    const std::int64_t next = std::int64_t{page.firstShown} + kPhotosPerPage;
    return static_cast<std::int32_t>(std::min(next, std::int64_t{page.count} - 1));
}

}  // namespace

bool HasNextPhotos(const PhotoPage& page) noexcept {
    return std::int64_t{page.firstShown} + page.shown < page.count &&
           FirstOfNextPage(page) < page.brokenFrom;
}

std::int32_t NextFirstShown(const PhotoPage& page) noexcept {
    return HasNextPhotos(page) ? FirstOfNextPage(page) : page.firstShown;
}

std::int32_t PreviousFirstShown(std::int32_t firstShown, std::span<const std::int32_t> heights,
                                std::int32_t freeHeight) noexcept {
    std::int32_t first = firstShown;
    for (const std::int32_t height : heights) {
        freeHeight -= height;
        if (freeHeight < 0 || first <= 0 || firstShown - first == kPhotosPerPage) break;
        --first;
    }
    return first;
}
