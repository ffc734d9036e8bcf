#pragma once
// The ten buttons that float over the map: seven for the view, three for photos.

#include <cstdint>

#include "base/gl.h"
#include "horivo_map.h"
#include "photos/panel_layout.h"
#include "photos/photo_paging.h"
#include "render/gl_font.h"
#include "render/gl_object.h"

/// Sides of the sheet that the buttons are cut from, pixels.
inline constexpr std::int32_t kSheetWidth = 128;
inline constexpr std::int32_t kSheetHeight = 256;

/// What the place of the photo buttons depends on.
struct ButtonLayout {
    std::int32_t windowWidth = 0;   ///< pixels
    std::int32_t windowHeight = 0;  ///< pixels
    PhotoPage page;                 ///< of the panel
    bool offerPhotos = false;       ///< the host allows photos: the add-photo button shows
};

/// The buttons and their one texture. A button's id is the virtual-key code that it stands for.
/// Window thread; context current wherever something is made, drawn or deleted.
class MapButtons {
public:
    MapButtons() noexcept = default;
    MapButtons(const MapButtons&) = delete;
    MapButtons& operator=(const MapButtons&) = delete;

    /// Uploads the sheet and makes the buttons, replacing earlier ones. The photo buttons are
    /// hidden until the next layout.
    /// @param sheet  R, G, B, A; 128 x 256 pixels; rows bottom-up; not kept. Null: no buttons
    void CreateButtons(const std::uint8_t* sheet);
    /// Deletes buttons and texture.
    void DestroyButtons() noexcept;

    /// Places the photo buttons. @param lineHeight  of the font, pixels
    void PlacePhotoButtons(const ButtonLayout& layout, std::int32_t lineHeight) noexcept;
    /// Places the photo buttons, draws all buttons and, while the pointer is over the add-photo
    /// button, the hint to the left of the panel.
    /// @param hint  null or empty for none; not kept
    void LayoutButtons(const ButtonLayout& layout, const CGLFont& font, const HorivoWideChar* hint);

    /// Lights the buttons under a point and puts out all others.
    /// @param x, y         window pixels, y upward
    /// @param clearOnly    light none; the result is then 0
    /// @param windowWidth  pixels
    /// @return id of the button under the point, of the last one where two overlap; 0 for none
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
