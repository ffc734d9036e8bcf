#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/gl.h"
#include "photos/panel_layout.h"
#include "photos/photo_paging.h"
#include "photos/photo_set.h"
#include "render/geo_point.h"
#include "render/gl_font.h"
#include "render/overlay_image.h"

/// Where the panel gets its photos.
enum class PhotoSource {
    Disk,   ///< read the index and the thumbnails again
    Memory  ///< use the loaded thumbnails again, for a new window
};

/// The column of photos along the right edge of the window. It shows the photos of one place: a
/// city, or all cities of a country. Window thread. The OpenGL context must be current while images
/// are uploaded or drawn and while textures are deleted.
///
/// Pointers to photos are valid until the panel is built again. The host can cause a new build
/// during every message that is sent to it and while a web page is opened.
class PhotoPanel {
public:
    PhotoPanel() noexcept = default;
    PhotoPanel(const PhotoPanel&) = delete;
    PhotoPanel& operator=(const PhotoPanel&) = delete;

    /// Stores the size of the window and the line height of the font, and lays out the images. Call
    /// this function before the first build; after that, DrawPhotoPanel calls it in each frame.
    void Resize(const PanelArea& area) noexcept;

    /// Shows the photos of another place, read from the disk. Throws std::bad_alloc.
    /// @param country  empty: shows no panel and deletes the photos
    /// @param city     empty: the whole country
    void ShowPlace(const CityTable& cities, WideString country, WideString city);
    /// Makes the images of the place that the panel shows; they are visible after UploadPhotos.
    /// Without a place, deletes the photos instead. Throws std::bad_alloc.
    void BuildPhotoPanel(const CityTable& cities, PhotoSource source);
    /// Uploads the images of the last build. Does nothing when they are uploaded already.
    void UploadPhotos() noexcept;

    /// Reads the photos of the place again, but makes no images. Call this function when the city
    /// table has changed while there is no window. Throws std::bad_alloc.
    void ReloadPhotoSet(const CityTable& cities);
    /// Forgets the order of the cities: the next build sorts the cities by their current distances.
    void ForgetCityOrder() noexcept { photoSet_.ranks.clear(); }

    /// Deletes the images that draw the thumbnails. The records of the photos and the titles stay.
    void DeleteImages() noexcept;
    /// Deletes the images and the photos, but not the titles.
    void DeleteImagesAndPhotos() noexcept;
    /// Deletes the textures. The next upload makes new ones.
    void DeleteTextures() noexcept;

    /// Resizes the panel to `area` and draws background, titles, photos and the caption of the
    /// photo beside the pointer. Draws nothing without a place. Allocates nothing.
    void DrawPhotoPanel(const PanelArea& area, const CityTable& cities, const CGLFont& font,
                        const CGeoPoint& pointer);

    /// Returns the photo at a point of the window (pixels, y upward), or null.
    const PhotoRecord* FindPhotoAt(std::int32_t x, std::int32_t y) const noexcept;
    /// Returns the number of the photo at a point of the window (pixels, y upward), or -1.
    std::int32_t HitTestPhoto(std::int32_t x, std::int32_t y) const noexcept;

    /// The country, also shown as a title; empty: there is no panel.
    const WideString& GetPlaceName() const noexcept { return placeName_; }
    /// The city, also shown as a title; empty: the panel shows all cities of the country.
    const WideString& GetHeading() const noexcept { return heading_; }
    /// The page of photos that the panel shows.
    PhotoPage GetPage() const noexcept;
    /// Whether at least one thumbnail of the page could be loaded.
    bool HasThumbnails() const noexcept { return !photoSet_.loaded.empty(); }

    /// Goes to the next or to the previous page. @return whether the first photo changed; the
    /// caller must then build the panel again
    bool PageForward() noexcept;
    bool PageBack(const CityTable& cities);
    /// Goes back to the page of `firstShown`, because no photo of the current page could be loaded.
    /// The user can then no longer turn to the rejected page or to the pages after the rejected
    /// page. The caller must then build the panel again.
    void RejectPage(std::int32_t firstShown) noexcept;
    /// Cancels RejectPage: the user can turn to the rejected pages again.
    void OfferAllPages() noexcept { photoSet_.brokenFrom = kNoneBroken; }

    // These three functions decide which input at column `x` of the window belongs to the panel.
    // Deliberate: for a hover, the leftmost column of the panel is part of the panel. For a click
    // and for the wheel, it is not.

    /// Whether a hover belongs to the panel. If so, the city behind the photos gets no hover.
    bool IsHoverOverPanel(std::int32_t x) const noexcept;
    /// Whether a click belongs to the panel and not to the globe. The gaps between the photos
    /// belong to the panel.
    bool IsClickOnPanel(std::int32_t x) const noexcept;
    /// Whether the wheel turns pages instead of zooming. This needs a list of more than one page.
    bool IsWheelOverPanel(std::int32_t x) const noexcept;

private:
    /// One picture of the panel and the photo that it shows.
    struct Image {
        C2DImage* image;           ///< a child of `group_`
        const PhotoRecord* photo;  ///< one of `photoSet_`
    };

    /// Returns the bottom of an image, pixels above kPanelBottom.
    static std::int32_t BottomOf(const Image& entry) noexcept;
    void AddImages();
    void PlaceImages() noexcept;
    void DrawBackground() const;
    void DrawTitles(const CGLFont& font) const;
    void DrawTitle(const CGLFont& font, const WideString& title, std::int32_t y) const;
    void DrawCaption(const CityTable& cities, const CGLFont& font, const PhotoRecord& photo,
                     std::int32_t mouseY) const;
    bool IsPointedAt(const Image& entry, const CGeoPoint& pointer) const noexcept;

    WideString placeName_;
    WideString heading_;
    PhotoSet photoSet_;
    PanelArea area_;
    std::int32_t panelX_ = 0;      ///< left edge of the panel, window pixels
    std::int32_t shownCount_ = 0;  ///< number of images with room, from the first on
    CGLGroup group_;               ///< owns the images
    std::vector<Image> images_;    ///< in the order of `group_`
    std::array<GLuint, kMaxThumbnails> textureNames_ = {};  ///< all 0 or all generated
    bool uploadPending_ = false;                            ///< the images have no textures yet
};
