#pragma once

#include <cstdint>

#include "base/gl.h"
#include "render/gl_object.h"

/// Width and height of an overlay object, window pixels.
struct Size2 {
    float width = 0.0F;
    float height = 0.0F;
};

/// The part of a texture that an overlay object shows, from its lower-left corner on.
struct TextureRegion {
    GLuint texture = 0;              ///< 0: draw nothing
    std::int32_t textureWidth = 0;   ///< pixels
    std::int32_t textureHeight = 0;  ///< pixels
    double u = 0.0;                  ///< left edge of the region, texture pixels
    double v = 0.0;                  ///< bottom of the region, texture pixels
};

/// Draws `region` at its own size, one texel per pixel. Draws nothing without a texture, when the
/// area of `size` is not above 0, or when the area of the texture is not above 0. The caller sets
/// up blending.
/// @param corner  lower-left corner, window pixels, y upward; z goes to OpenGL unchanged
/// @param size    of the quad and of the region, pixels
void DrawTexturedQuad(const TextureRegion& region, const Position3& corner,
                      const Size2& size) noexcept;
