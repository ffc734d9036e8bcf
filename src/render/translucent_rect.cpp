#include "render/translucent_rect.h"

#include "base/gl.h"

void DrawTranslucentRect(float x, float y, std::int32_t width, std::int32_t height) noexcept {
    const float right = x + static_cast<float>(width);
    const float top = y + static_cast<float>(height);
    glEnable(GL_ALPHA_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBegin(GL_QUADS);
    glVertex2f(x, y);
    glVertex2f(right, y);
    glVertex2f(right, top);
    glVertex2f(x, top);
    glEnd();
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
}
