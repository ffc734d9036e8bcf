#include "render/overlay_button.h"

C2DButton::~C2DButton() = default;

void C2DButton::Draw() {
    const GLuint shown = highlighted && hoverTexture != 0 ? hoverTexture : texture;
    DrawTexturedQuad({shown, textureWidth, textureHeight, position.x, position.y}, position, size);
}

void C2DButton::SetTextures(GLuint normal, GLuint hover, std::int32_t width,
                            std::int32_t height) noexcept {
    texture = normal;
    hoverTexture = hover;
    textureWidth = width;
    textureHeight = height;
}

bool C2DButton::HitTest(std::int32_t x, std::int32_t y) const noexcept {
    const auto pointX = static_cast<float>(x);
    const auto pointY = static_cast<float>(y);
    return pointX >= position.x && pointX < position.x + size.width && pointY >= position.y &&
           pointY < position.y + size.height;
}

C2DButton2::~C2DButton2() = default;

void C2DButton2::Draw() {
    const double v = static_cast<double>(atlasY) + (highlighted ? 0 : textureHeight / 2);
    DrawTexturedQuad({texture, textureWidth, textureHeight, static_cast<double>(atlasX), v},
                     position, size);
}

void C2DButton2::SetImage(GLuint sheet, std::int32_t cellX, std::int32_t cellY, std::int32_t width,
                          std::int32_t height) noexcept {
    texture = sheet;
    atlasX = cellX;
    atlasY = cellY;
    textureWidth = width;
    textureHeight = height;
}
