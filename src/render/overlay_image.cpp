#include "render/overlay_image.h"

C2DImage::~C2DImage() = default;

void C2DImage::Draw() {
    DrawTexturedQuad({texture, textureWidth, textureHeight, 0.0, 0.0}, position, size);
}

void C2DImage::SetTexture(GLuint newTexture, std::int32_t width, std::int32_t height) noexcept {
    texture = newTexture;
    textureWidth = width;
    textureHeight = height;
}
