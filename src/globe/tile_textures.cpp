// Uploads the tiles of the map as the textures of the planet.
#include <algorithm>

#include "globe/planet.h"
#include "image/jpeg_texture.h"
#include "render/pending_errors.h"

namespace {

GLint InternalFormat(std::int32_t bytesPerPixel, bool compressed) {
    if (!compressed) return bytesPerPixel;  // OpenGL accepts the number of channels as a format
    return bytesPerPixel == 4 ? GL_COMPRESSED_RGBA_ARB : GL_COMPRESSED_RGB_ARB;
}

}  // namespace

std::uint32_t CPlanet::SetTexture(const CGLTexture* const* tiles) {
    const CGLTexture* first = tiles != nullptr ? tiles[0] : nullptr;
    tileWidth = first != nullptr ? static_cast<std::uint32_t>(first->GetBufferWidth()) : 0;
    tileHeight = first != nullptr ? static_cast<std::uint32_t>(first->GetBufferHeight()) : 0;

    const bool wasEnabled = glIsEnabled(GL_TEXTURE_2D) != GL_FALSE;
    if (!wasEnabled) glEnable(GL_TEXTURE_2D);
    std::uint32_t error = GL_NO_ERROR;
    if (tiles != nullptr) {
        error = UploadTiles(tiles);
    } else if (HasTexture()) {
        FreeTextures();
    }
    if (!wasEnabled) glDisable(GL_TEXTURE_2D);
    return error;
}

std::uint32_t CPlanet::UploadTiles(const CGLTexture* const* tiles) {
    if (!HasTexture()) glGenTextures(kTileCount, textureNames);
    for (int i = 0; i < kTileCount; ++i) {
        // Skip a missing tile: its texture stays as it is. While a texture is empty, its part of
        // the globe is not textured.
        if (tiles[i] == nullptr || tiles[i]->GetPixels() == nullptr) continue;
        const std::uint32_t error = UploadTile(textureNames[i], *tiles[i]);
        if (error != GL_NO_ERROR) {
            FreeTextures();
            return error;
        }
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    return GL_NO_ERROR;
}

std::uint32_t CPlanet::UploadTile(GLuint name, const CGLTexture& tile) const {
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    if (inputs_.extensions.hasTextureEdgeClamp) {
        // Replace the default GL_REPEAT, because GL_REPEAT may show a faint line where two tiles
        // meet.
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);

    const std::int32_t channels = tile.GetBytesPerPixel();
    const bool compressed = inputs_.texCompression != 0 && inputs_.extensions.hasTextureCompression;
    DrainErrors();
    glTexImage2D(GL_TEXTURE_2D, 0, InternalFormat(channels, compressed), tile.GetBufferWidth(),
                 tile.GetBufferHeight(), tile.HasBorder() ? 1 : 0, channels == 4 ? GL_RGBA : GL_RGB,
                 GL_UNSIGNED_BYTE, tile.GetPixels());
    glFlush();
    return glGetError();
}

void CPlanet::FreeTextures() {
    glBindTexture(GL_TEXTURE_2D, 0);
    glDeleteTextures(kTileCount, textureNames);
    glFlush();
    ForgetTextures();
}

void CPlanet::ForgetTextures() noexcept {
    std::fill(std::begin(textureNames), std::end(textureNames), 0U);
    tileWidth = 0;
    tileHeight = 0;
}
