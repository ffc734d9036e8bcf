#include "render/overlay_texture.h"

void UploadOverlayTexture(GLuint name, std::int32_t width, std::int32_t height,
                          const std::uint8_t* pixels) noexcept {
    constexpr GLint kChannels = 4;  // OpenGL accepts the number of channels as a format
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, kChannels, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
}
