#include "render/textured_quad.h"

namespace {

bool IsDrawn(const TextureRegion& region, const Size2& size) noexcept {
    // Compute in 64 bits: in 32 bits, the product of two large sizes could wrap around to a small
    // valid number.
    const std::int64_t texels = std::int64_t{region.textureWidth} * region.textureHeight;
    return region.texture != 0 && !(size.width * size.height <= 0.0F) && texels > 0;
}

}  // namespace

void DrawTexturedQuad(const TextureRegion& region, const Position3& corner,
                      const Size2& size) noexcept {
    if (!IsDrawn(region, size)) return;
    const double s0 = region.u / region.textureWidth;
    const double t0 = region.v / region.textureHeight;
    const double s1 = s0 + static_cast<double>(size.width) / region.textureWidth;
    const double t1 = t0 + static_cast<double>(size.height) / region.textureHeight;
    const float right = corner.x + size.width;
    const float top = corner.y + size.height;

    glBindTexture(GL_TEXTURE_2D, region.texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glEnable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    glNormal3f(0.0F, 0.0F, 1.0F);
    glTexCoord2d(s0, t0);
    glVertex3f(corner.x, corner.y, corner.z);
    glTexCoord2d(s1, t0);
    glVertex3f(right, corner.y, corner.z);
    glTexCoord2d(s1, t1);
    glVertex3f(right, top, corner.z);
    glTexCoord2d(s0, t1);
    glVertex3f(corner.x, top, corner.z);
    glEnd();
    glDisable(GL_TEXTURE_2D);
}
