#pragma once

#include "render/textured_quad.h"

/// A push button whose texture is a picture of the whole button strip, laid out as on screen: the
/// button shows the part that lies at its own `position`. Textures belong to whoever set them.
class C2DButton : public CGLObject {
public:
    C2DButton() noexcept = default;
    ~C2DButton() override;

    void Draw() override;
    /// @param normal, hover  the two looks; `hover` 0: the normal one serves for both
    /// @param width, height  of both textures, pixels
    void SetTextures(GLuint normal, GLuint hover, std::int32_t width, std::int32_t height) noexcept;

    /// Whether a point (pixels in the button's frame, y upward) lies in the button: left and bottom
    /// edges are inside, right and top edges outside.
    bool HitTest(std::int32_t x, std::int32_t y) const noexcept;

    GLuint texture = 0;
    GLuint hoverTexture = 0;
    std::int32_t commandId = 0;  ///< what the button stands for
    bool highlighted = false;    ///< the pointer is over it
    std::int32_t textureWidth = 8;
    std::int32_t textureHeight = 8;
    Size2 size = {20.0F, 20.0F};
};

/// A push button cut out of a sheet: the sheet's lower half holds the highlighted look of each
/// button, the upper half the normal look at the same place. Uses `texture` only.
class C2DButton2 : public C2DButton {
public:
    C2DButton2() noexcept = default;
    ~C2DButton2() override;

    void Draw() override;
    /// @param sheet          texture name, 0 for none
    /// @param cellX, cellY   lower-left pixel of the highlighted look in the sheet
    /// @param width, height  of the whole sheet, pixels
    void SetImage(GLuint sheet, std::int32_t cellX, std::int32_t cellY, std::int32_t width,
                  std::int32_t height) noexcept;

    std::int32_t atlasX = 0;
    std::int32_t atlasY = 0;
};
