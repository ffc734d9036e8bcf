#pragma once
// Which photos of a list are on the page: plain arithmetic.

#include <cstdint>
#include <limits>
#include <span>

/// Photos of a full page.
inline constexpr std::int32_t kPhotosPerPage = 16;

/// `brokenFrom` while no page of the list has failed to load.
inline constexpr std::int32_t kNoneBroken = std::numeric_limits<std::int32_t>::max();

/// A page of a list of photos.
struct PhotoPage {
    std::int32_t firstShown = 0;            ///< place of its first photo in the list
    std::int32_t shown = 0;                 ///< photos on it that have room in the panel
    std::int32_t count = 0;                 ///< photos of the list
    std::int32_t brokenFrom = kNoneBroken;  ///< no photo from this place on could be loaded
};

/// Whether photos follow behind those on the page, and the next page has not failed to load.
bool HasNextPhotos(const PhotoPage& page) noexcept;

/// Whether photos stand before those on the page.
constexpr bool HasPreviousPhotos(const PhotoPage& page) noexcept {
    return page.count > 0 && page.firstShown > 0;
}

/// The first photo of the next page, but never past the last photo; `firstShown` when there is no
/// next page. Deliberate: 16 further, also when fewer had room.
std::int32_t NextFirstShown(const PhotoPage& page) noexcept;

/// The first photo of the page before: as far back as photos have room together, at most a page.
/// @param rooms       pixels that the photos before `firstShown` take, the nearest first; at most
///                    as many as there are
/// @param freeHeight  pixels that the panel has for photos; may be negative
std::int32_t PreviousFirstShown(std::int32_t firstShown, std::span<const std::int32_t> rooms,
                                std::int32_t freeHeight) noexcept;
