#pragma once
// Computes which photos of a list are shown together as a page. Plain arithmetic.

#include <cstdint>
#include <limits>
#include <span>

/// Number of photos on a full page.
inline constexpr std::int32_t kPhotosPerPage = 16;

/// Value of `brokenFrom` while no page has failed to load.
inline constexpr std::int32_t kNoneBroken = std::numeric_limits<std::int32_t>::max();

/// A page of a list of photos.
struct PhotoPage {
    std::int32_t firstShown = 0;            ///< index of the first photo of the page in the list
    std::int32_t shown = 0;                 ///< number of photos of the page with room in the panel
    std::int32_t count = 0;                 ///< number of photos in the list
    std::int32_t brokenFrom = kNoneBroken;  ///< no photo from this index on could be loaded
};

/// Whether the list has photos after those of the page and the next page has not failed to load.
bool HasNextPhotos(const PhotoPage& page) noexcept;

/// Whether the list has photos before those of the page.
constexpr bool HasPreviousPhotos(const PhotoPage& page) noexcept {
    return page.count > 0 && page.firstShown > 0;
}

/// Returns the index of the first photo of the next page, or `firstShown` when there is no next
/// page.
/// Deliberate: the next page begins 16 photos after `firstShown`, even when fewer photos had room
/// in the panel. In a list that is too short for this, the next page begins at the last photo.
std::int32_t NextFirstShown(const PhotoPage& page) noexcept;

/// Returns the index of the first photo of the previous page. That page ends before `firstShown`.
/// It has as many photos as fit into the panel, at most 16; if none fits, the result is
/// `firstShown`.
/// @param heights     heights of the photos before `firstShown` with their gaps, the last photo
///                    first, pixels; at most `firstShown` heights
/// @param freeHeight  height that the panel has for photos, pixels; may be negative
std::int32_t PreviousFirstShown(std::int32_t firstShown, std::span<const std::int32_t> heights,
                                std::int32_t freeHeight) noexcept;
