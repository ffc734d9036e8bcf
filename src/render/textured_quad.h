#pragma once

#include <cstdint>

#include "base/gl.h"
#include "render/gl_object.h"

/// Width and height of an overlay item, window pixels.
struct Size2 {
    float width = 0.0F;
    float height = 0.0F;
};

/// The part of a texture that an overlay item shows.
struct TextureRegion {
    GLuint texture = 0;              ///< 0: the item is not drawn
    std::int32_t textureWidth = 0;   ///< pixels
    std::int32_t textureHeight = 0;  ///< pixels
    double u = 0.0;                  ///< lower-left corner of the region, texture pixels
    double v = 0.0;
};

/// Draws `region` texel for pixel: the quad is as large as the part of the texture that it shows.
/// Draws nothing without a texture or where a size is empty. Blending is the caller's.
/// @param corner  lower-left corner, window pixels, y upward; z goes to OpenGL unchanged
void DrawTexturedQuad(const TextureRegion& region, const Position3& corner,
                      const Size2& size) noexcept;
