#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "globe/planet.h"
#include "image/jpeg_texture.h"

/// How far the map picture has come.
enum class TextureStage : std::uint8_t {
    Empty,
    Loaded,  ///< whole, in the map texture
    Split,   ///< cut into the eight tiles
};

/// The map texture, which is also tile 0, and the tiles cut from it. Whoever reads or writes it
/// holds the scene mutex; only the two counters may be read without.
class TextureStore {
public:
    TextureStore() noexcept;

    CGLTexture& MapTexture() noexcept { return textures_[0]; }
    /// Eight pointers, none null.
    CGLTexture* const* Tiles() noexcept { return tiles_.data(); }

    TextureStage Stage() const noexcept { return stage_; }
    void SetStage(TextureStage stage) noexcept { stage_ = stage; }

    /// Frees the map texture with its sizes.
    void ClearMap() noexcept;
    /// Frees the pixels of all tiles. @param resetSize  and their sizes
    void ClearTiles(bool resetSize) noexcept;

    /// Whether the picture is cut and every tile has pixels.
    /// Sizes alone do not tell: a cleared tile may keep them.
    bool HasAllTiles() const noexcept;
    /// Whether no tile is larger than a texture may be, pixels a side.
    bool TilesFit(std::int32_t maxTextureSize) const noexcept;

    std::atomic<std::int32_t> loadingCount{0};    ///< loads under way
    std::atomic<std::int32_t> splittingCount{0};  ///< splits under way
    bool IsBusy() const noexcept { return loadingCount != 0 || splittingCount != 0; }

private:
    std::array<CGLTexture, kTileCount> textures_;
    std::array<CGLTexture*, kTileCount> tiles_{};
    TextureStage stage_ = TextureStage::Empty;
};
