#pragma once
// The ten buttons that are drawn over the map: seven for the view, and three photo buttons. Of
// these three, the photos button opens the web page on which users add photos, and the two paging
// buttons show the previous and the next page of photos.

#include <cstdint>

#include "base/gl.h"
#include "horivo_map.h"
#include "photos/panel_layout.h"
#include "photos/photo_paging.h"
#include "render/gl_font.h"
#include "render/gl_object.h"

/// Size of the sheet with the pictures of all buttons, pixels.
inline constexpr std::int32_t kSheetWidth = 128;
inline constexpr std::int32_t kSheetHeight = 256;

/// The values from which the photo buttons are placed.
struct ButtonLayout {
    std::int32_t windowWidth = 0;   ///< pixels
    std::int32_t windowHeight = 0;  ///< pixels
    PhotoPage page;                 ///< the page of photos that the photo panel shows
    bool offerPhotos = false;       ///< show the photos button, because the host allows photos
};

/// Whether a button acts when it is released. All other buttons act when they are pressed, and
/// again while they are held.
/// @param key  id of the button; for 0 and for a key without a button, the result is false
bool ActsOnRelease(std::int32_t key) noexcept;

/// The buttons and the texture that they share. The id of a button is the virtual-key code of the
/// key that has the same effect. Window thread. The OpenGL context must be current while buttons
/// are created, drawn or deleted.
class MapButtons {
public:
    MapButtons() noexcept = default;
    MapButtons(const MapButtons&) = delete;
    MapButtons& operator=(const MapButtons&) = delete;

    /// Uploads the sheet and creates the buttons in place of earlier ones. The photo buttons stay
    /// hidden until PlacePhotoButtons. Throws std::bad_alloc; no buttons exist afterwards.
    /// @param sheet  R, G, B, A; 128 x 256 pixels; rows bottom-up; copied. Null: no buttons
    void CreateButtons(const std::uint8_t* sheet);
    /// Deletes the buttons and the texture.
    void DestroyButtons() noexcept;

    /// Places the photo buttons, and hides those that `layout` does not call for.
    /// @param lineHeight  line height of the font, pixels
    void PlacePhotoButtons(const ButtonLayout& layout, std::int32_t lineHeight) noexcept;
    /// Places the photo buttons and draws all buttons. While the pointer is over the photos button,
    /// also draws the hint to the left of the panel.
    /// @param hint  text that says what the photos button does; null or empty: no hint
    void LayoutButtons(const ButtonLayout& layout, const CGLFont& font, const HorivoWideChar* hint);

    /// Highlights the buttons under a point and no others.
    /// @param x, y         window pixels, y upward
    /// @param clearOnly    true: highlights no button and returns 0
    /// @param windowWidth  pixels
    /// @return the id of the button under the point, or 0; where two buttons overlap, the id of the
    ///         button that is drawn last
    std::int32_t HitTestButtons(std::int32_t x, std::int32_t y, bool clearOnly,
                                std::int32_t windowWidth) noexcept;

private:
    void UploadSheet(const std::uint8_t* sheet) noexcept;
    void AddButtons();
    void DrawGroup();
    void DrawHint(const ButtonLayout& layout, const CGLFont& font,
                  const HorivoWideChar* hint) const;

    CGLGroup group_;
    GLuint texture_ = 0;
};
