#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/wide_text.h"
#include "cities/city_table.h"
#include "image/jpeg_texture.h"
#include "photos/photo_order.h"
#include "photos/photo_paging.h"

/// Thumbnails loaded at a time.
inline constexpr std::size_t kMostThumbnails = 16;
/// Larger photos are refused, pixels.
inline constexpr int kThumbnailMaxWidth = 128;
inline constexpr int kThumbnailMaxHeight = 256;

/// Whether a photo of this size is shown at all.
constexpr bool IsThumbnailSize(std::int32_t width, std::int32_t height) noexcept {
    return width <= kThumbnailMaxWidth && height <= kThumbnailMaxHeight;
}

/// A photo that an index names and that lies on disk.
struct PhotoRecord {
    /// Loads an opaque RGBA texture, padded to powers of two from 16; false, with the texture
    /// cleared, for what cannot be read or is too large.
    bool LoadThumbnail(const std::wstring& path);
    bool HasThumbnail() const noexcept { return thumbnail.GetPixels() != nullptr; }

    std::int32_t cityIndex = -1;   ///< in the city table; always valid once in a set
    std::int32_t photoNumber = 0;  ///< also its file name
    WideString link;               ///< page on the photo web site, at most 511 characters; or empty
    WideString caption;            ///< at most 99 characters
    CJpegTexture thumbnail;        ///< keeps its size when the pixels are freed
    PhotoOrderKey order;           ///< its rank among the photos of the set
};

/// The photos of one city or of all cities of a country. Window thread.
struct PhotoSet {
    /// By city: how it was ranked when the place was chosen. The pointer moves on and the distances
    /// with it; the order of the photos must not change while their pages are turned.
    std::map<std::int32_t, PhotoOrderKey> ranks;
    std::map<std::int32_t, PhotoRecord*> byNumber;     ///< of `loaded`; the first of a number
    std::vector<std::unique_ptr<PhotoRecord>> photos;  ///< in display order
    std::vector<PhotoRecord*> loaded;                  ///< those with a thumbnail
    std::int32_t firstShown = 0;                       ///< thumbnails are loaded from here on
    /// No photo from this place of the list on could be loaded when a page was turned to it. Reset
    /// when another place is shown or the host reports new photos.
    std::int32_t brokenFrom = kNoneBroken;
    WideString city;  ///< empty: all cities of the country
    WideString country;
};

/// Deletes the photos; place and position stay.
void DeletePhotos(PhotoSet& set) noexcept;

/// Reads the index of a country (`city` empty) or of a city and loads the first thumbnails. The
/// position is kept when it is the same place as before, else it goes back to the start. Index
/// lines without a photo on disk or with a city that is not in the table are left out.
/// @return thumbnails loaded; 0 without an index; -1 when the names make no folder, and the set's
///         place is empty then. Throws std::bad_alloc.
std::int32_t LoadPhotoSet(PhotoSet& set, const CityTable& cities, WideView country, WideView city);

/// Frees the thumbnails and loads up to 16 from `firstShown` on; photos that cannot be loaded are
/// passed over. @return thumbnails loaded. Throws std::bad_alloc.
std::int32_t LoadThumbnails(PhotoSet& set, const CityTable& cities);
