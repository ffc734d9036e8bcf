#pragma once

#include "render/textured_quad.h"

/// A picture drawn flat over the globe, with its lower-left corner at `position`. The image does
/// not own its texture, which must outlive the last `Draw`.
class C2DImage : public CGLObject {
public:
    C2DImage() noexcept = default;
    ~C2DImage() override;

    /// Draws the lower-left part of the texture, `size` pixels large. Ignores children and
    /// rotation.
    void Draw() override;
    /// @param newTexture     texture name; 0: draw nothing
    /// @param width, height  of the texture, pixels
    void SetTexture(GLuint newTexture, std::int32_t width, std::int32_t height) noexcept;

    GLuint texture = 0;
    std::int32_t textureWidth = 8;   ///< pixels
    std::int32_t textureHeight = 8;  ///< pixels
    Size2 size = {20.0F, 20.0F};
};
