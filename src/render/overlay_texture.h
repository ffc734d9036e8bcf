#pragma once

#include <cstdint>

#include "base/gl.h"

/// Uploads a picture to the texture `name`. The texture is to be drawn over the globe in the size
/// of the picture.
/// @param width, height  pixels
/// @param pixels         R, G, B, A; rows bottom-up, without padding; copied
/// The context must be current. The texture stays bound, and the unpack alignment stays at 1.
void UploadOverlayTexture(GLuint name, std::int32_t width, std::int32_t height,
                          const std::uint8_t* pixels) noexcept;
