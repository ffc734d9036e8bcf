#include "window/texture_store.h"

#include <algorithm>

TextureStore::TextureStore() noexcept {
    std::transform(textures_.begin(), textures_.end(), tiles_.begin(),
                   [](CGLTexture& texture) { return &texture; });
}

void TextureStore::ClearMap() noexcept {
    MapTexture().Clear(true);
    stage_ = TextureStage::Empty;
}

void TextureStore::ClearTiles(bool resetSize) noexcept {
    for (CGLTexture& texture : textures_) texture.Clear(resetSize);
    stage_ = TextureStage::Empty;
}

bool TextureStore::HasAllTiles() const noexcept {
    return stage_ == TextureStage::Split &&
           std::all_of(textures_.begin(), textures_.end(),
                       [](const CGLTexture& texture) { return texture.GetPixels() != nullptr; });
}

bool TextureStore::TilesFit(std::int32_t maxTextureSize) const noexcept {
    return std::all_of(textures_.begin(), textures_.end(), [=](const CGLTexture& texture) {
        return texture.GetBufferWidth() <= maxTextureSize &&
               texture.GetBufferHeight() <= maxTextureSize;
    });
}
