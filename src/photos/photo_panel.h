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

/// One picture of the panel. Which photo it shows stands beside the image, which knows only pixels.
struct PanelImage {
    C2DImage* image = nullptr;           ///< a child of the panel's group
    const PhotoRecord* photo = nullptr;  ///< of the panel's set
};

/// The column of photos along the right edge of the window. Window thread; the context is current
/// wherever something is uploaded or drawn and where textures are deleted.
///
/// A pointer into the panel is good until the panel is built again, which the host can cause during
/// every message that is sent to it and while a page is opened.
struct PhotoPanel {
    WideString placeName;  ///< the country; empty: there is no panel
    WideString heading;    ///< the city; empty: the panel shows all cities of the country
    PhotoSet photoSet;
    PanelArea area;
    std::int32_t panelX = 0;             ///< left edge of the panel, window pixels
    std::int32_t panelY = kPanelBottom;  ///< origin of the images, window pixels
    std::int32_t shownCount = 0;         ///< images that have room; they are the first ones
    CGLGroup group;
    std::vector<PanelImage> images;                     ///< of `group`, in its order
    std::array<GLuint, kMostThumbnails> textures = {};  ///< 0 before first use and after deletion
    bool uploadsWait = false;                           ///< the images have no textures yet
};

/// Takes over the window's size and the font's line height and places the images anew. Needed
/// before the first build; later each frame does it.
void ResizePhotoPanel(PhotoPanel& panel, const PanelArea& area) noexcept;

/// Fills the panel with the photos of a country (`city` empty) or city; UploadPhotos then makes
/// them visible. An empty `country` empties panel and set. Throws std::bad_alloc.
/// @param reload  read the index again; else the thumbnails that the set holds are taken again, for
///                a window made anew
void BuildPhotoPanel(PhotoPanel& panel, const CityTable& cities, WideView country, WideView city,
                     bool reload);

/// Names the place and fills the panel with its photos. Throws std::bad_alloc.
/// @param key  the city; empty for the whole country
void ShowPhotoPanel(PhotoPanel& panel, const CityTable& cities, WideString name, WideString key);

/// Uploads the photos of the last build, once.
void UploadPhotos(PhotoPanel& panel) noexcept;

/// Deletes the images; photos and titles stay.
void DeletePanelImages(PhotoPanel& panel) noexcept;
/// Deletes the texture names; the next build makes new ones.
void DeletePhotoTextures(PhotoPanel& panel) noexcept;

/// Takes over `area` and draws background, titles, photos and the caption of the photo at the
/// pointer's height. Nothing without a place name. Nothing is allocated.
void DrawPhotoPanel(PhotoPanel& panel, const PanelArea& area, const CityTable& cities,
                    const CGLFont& font, const CGeoPoint& pointer);

/// The photo whose picture is at a point of the window, y upward; null where none is shown. Valid
/// until the panel is built again.
const PhotoRecord* FindPhotoAt(const PhotoPanel& panel, std::int32_t x, std::int32_t y) noexcept;

/// Number of the photo at a point of the window, y upward; -1 where none is shown.
std::int32_t HitTestPhoto(const PhotoPanel& panel, std::int32_t x, std::int32_t y) noexcept;

/// The page that the panel shows.
PhotoPage PageOf(const PhotoPanel& panel) noexcept;

/// Goes to the next or the previous page. @return whether the first photo changed: the panel must
/// be built again then
bool PageForward(PhotoPanel& panel) noexcept;
bool PageBack(PhotoPanel& panel, const CityTable& cities);

// What the pointer at `x` means to the panel. Deliberate: a hover counts from the edge's own column
// on, everything else from the one right of it.

/// The pointer hovers over photos: no city behind them is meant.
bool IsHoverOverPanel(const PhotoPanel& panel, std::int32_t x) noexcept;
/// A click beside the photos still belongs to the panel, not to the globe.
bool IsClickOnPanel(const PhotoPanel& panel, std::int32_t x) noexcept;
/// The wheel turns pages instead of zooming: the list holds more than one.
bool IsWheelOverPanel(const PhotoPanel& panel, std::int32_t x) noexcept;
