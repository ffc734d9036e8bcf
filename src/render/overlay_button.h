#pragma once

#include "render/textured_quad.h"

/// A push button. Its texture is a picture of the overlay with all buttons at their places: the
/// button draws the part of the texture at its own `position`. The button does not own its
/// textures.
class C2DButton : public CGLObject {
public:
    C2DButton() noexcept = default;
    ~C2DButton() override;

    void Draw() override;
    /// @param normal         texture of the button
    /// @param hover          texture of the highlighted button; 0: the same as `normal`
    /// @param width, height  of both textures, pixels
    void SetTextures(GLuint normal, GLuint hover, std::int32_t width, std::int32_t height) noexcept;

    /// Whether a point is inside the button. The left and bottom edges belong to the button, the
    /// right and top edges do not. @param x, y  pixels in the same frame as `position`, y upward
    bool HitTest(std::int32_t x, std::int32_t y) const noexcept;

    GLuint texture = 0;
    GLuint hoverTexture = 0;
    std::int32_t commandId = 0;      ///< chosen by the owner, to identify the button that was hit
    bool highlighted = false;        ///< the pointer is over the button
    std::int32_t textureWidth = 8;   ///< pixels
    std::int32_t textureHeight = 8;  ///< pixels
    Size2 size = {20.0F, 20.0F};
};

/// A push button whose texture is a sheet: the lower half of the sheet has the pictures of the
/// highlighted buttons, the upper half the normal pictures at the same places. `hoverTexture` is
/// not used.
class C2DButton2 : public C2DButton {
public:
    C2DButton2() noexcept = default;
    ~C2DButton2() override;

    void Draw() override;
    /// @param sheet          texture name; 0: draw nothing
    /// @param cellX, cellY   lower-left pixel of the highlighted picture in the sheet
    /// @param width, height  of the whole sheet, pixels
    void SetImage(GLuint sheet, std::int32_t cellX, std::int32_t cellY, std::int32_t width,
                  std::int32_t height) noexcept;

    std::int32_t atlasX = 0;  ///< left edge of the button's pictures in the sheet, pixels
    std::int32_t atlasY = 0;  ///< bottom of the highlighted picture in the sheet, pixels
};
