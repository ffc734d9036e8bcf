#pragma once
// Which photos of a list are on the page: plain arithmetic.

#include <cstdint>
#include <span>

/// Photos of a full page.
inline constexpr std::int32_t kPhotosPerPage = 16;

/// Whether photos follow behind those on the page.
/// @param firstShown  place of the first photo of the page
/// @param shown       photos on the page that have room in the panel
/// @param count       photos of the list
constexpr bool HasNextPhotos(std::int32_t firstShown, std::int32_t shown,
                             std::int32_t count) noexcept {
    return std::int64_t{firstShown} + shown < count;
}

/// Whether photos stand before those on the page.
constexpr bool HasPreviousPhotos(std::int32_t firstShown, std::int32_t count) noexcept {
    return count > 0 && firstShown > 0;
}

/// The first photo of the next page, but never past the last photo; `firstShown` when no photos
/// follow. Deliberate: 16 further, also when fewer had room.
std::int32_t NextFirstShown(std::int32_t firstShown, std::int32_t shown,
                            std::int32_t count) noexcept;

/// The first photo of the page before: as far back as photos have room together, at most a page.
/// @param rooms       pixels that the photos before `firstShown` take, the nearest first; at most
///                    as many as there are
/// @param freeHeight  pixels that the panel has for photos; may be negative
std::int32_t PreviousFirstShown(std::int32_t firstShown, std::span<const std::int32_t> rooms,
                                std::int32_t freeHeight) noexcept;
