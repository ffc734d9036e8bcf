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

/// Maximum number of thumbnails that are loaded at the same time. Each has its own texture.
inline constexpr std::size_t kMaxThumbnails = 16;
/// Maximum size of a photo, pixels; larger photos are refused.
inline constexpr int kThumbnailMaxWidth = 128;
inline constexpr int kThumbnailMaxHeight = 256;

/// Whether a photo of this size is small enough to be shown.
constexpr bool IsThumbnailSize(std::int32_t width, std::int32_t height) noexcept {
    return width <= kThumbnailMaxWidth && height <= kThumbnailMaxHeight;
}

/// A photo that is listed in an index and exists on disk.
struct PhotoRecord {
    /// Loads the photo as an opaque RGBA texture whose sides are padded to powers of two, 16 or
    /// more. Returns false and clears the texture when the file cannot be read or is too large.
    bool LoadThumbnail(const std::wstring& path);
    bool HasThumbnail() const noexcept { return thumbnail.GetPixels() != nullptr; }

    std::int32_t cityIndex = -1;   ///< index in the city table; valid for every photo of a set
    std::int32_t photoNumber = 0;  ///< also the name of the file
    WideString link;               ///< web page of the photo, at most 511 characters; may be empty
    WideString caption;            ///< at most 99 characters
    CJpegTexture thumbnail;        ///< keeps its size when its pixels are freed
    PhotoOrderKey order;           ///< sort key within the set
};

/// The photos of one city or of all cities of a country. Window thread.
struct PhotoSet {
    /// Sort key of each city, by the index of the city. The keys stay as they were when the place
    /// was chosen: the distances change with the pointer, but the order of the photos must not
    /// change from page to page.
    std::map<std::int32_t, PhotoOrderKey> ranks;
    /// The photos in `loaded` by their number. If two photos have the same number, the map contains
    /// only the first photo.
    std::map<std::int32_t, PhotoRecord*> byNumber;
    std::vector<std::unique_ptr<PhotoRecord>> photos;  ///< in the order in which they are shown
    std::vector<PhotoRecord*> loaded;                  ///< the photos that have a thumbnail
    std::int32_t firstShown = 0;                       ///< thumbnails are loaded from this index on
    /// When the user turned to the page at this index, no photo from this index on could be loaded.
    /// Reset when another place is shown or the host reports new photos.
    std::int32_t brokenFrom = kNoneBroken;
    WideString city;  ///< empty: all cities of the country
    WideString country;
};

/// Deletes the photos, but keeps the place of the set and `firstShown`.
void DeletePhotos(PhotoSet& set) noexcept;

/// Reads the index of a country (`city` empty) or of a city and loads the thumbnails of a page.
/// `firstShown` becomes 0 when the place changes. Lines of the index without a photo on disk or
/// without a city in the table are left out.
/// @return number of thumbnails loaded; 0 without an index; -1 when GetPhotoFolder returns false
///         for the names, and the set then has no place. Throws std::bad_alloc.
std::int32_t LoadPhotoSet(PhotoSet& set, const CityTable& cities, WideView country, WideView city);

/// Frees the thumbnails and loads up to 16 from `firstShown` on. Leaves out photos that cannot be
/// loaded. @return number of thumbnails loaded. Throws std::bad_alloc.
std::int32_t LoadThumbnails(PhotoSet& set, const CityTable& cities);
