#pragma once
// The map picture from its file to the tiles. Nothing here calls OpenGL, so that worker threads may
// run it.

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

#include "image/jpeg_texture.h"
#include "image/texture_limits.h"
#include "image/tile_grid.h"

/// How far the map picture has come.
enum class PictureStage : std::uint8_t {
    Empty,
    Loaded,  ///< whole, in the map texture
    Split,   ///< cut into the eight tiles
};

/// The map texture, which is also tile 0, and the tiles cut from it. Whoever reads or writes it
/// holds the scene mutex; only IsLoading, IsSplitting and IsBusy may be called without.
class MapPicture {
public:
    MapPicture() noexcept;

    /// Path of the picture's file; empty when there is no data folder, since the bare name would
    /// mean a file of whatever the current directory is.
    static std::wstring PathIn(const std::wstring& dataDirectory);

    /// Loads the picture, shrunk to the limits; what was there before is freed first.
    /// @return kLoadFailed, kLoadedUnchanged or kLoadedShrunk
    int Load(const TextureLimits& limits, const std::wstring& dataDirectory);

    /// Cuts the loaded picture into the tiles, after shrinking it to the split limit if need be.
    /// Nothing is done when it is cut already (a second cut would spread tile 0 over the globe).
    /// @return whether the tiles are there
    bool Split(const TextureLimits& limits) noexcept;

    /// Fits a picture that is already loaded to the limits.
    /// @return whether it was changed and is worth saving; false when nothing is loaded
    bool Fit(const TextureLimits& limits) noexcept;

    /// Frees the map texture with its sizes.
    void ClearMap() noexcept;
    /// Frees the pixels of all tiles. @param resetSize  and their sizes
    void ClearTiles(bool resetSize) noexcept;

    CGLTexture& MapTexture() noexcept { return textures_[0]; }
    /// Eight pointers, none null.
    CGLTexture* const* Tiles() noexcept { return tiles_.data(); }
    PictureStage Stage() const noexcept { return stage_; }

    /// Whether the picture is cut and every tile has pixels.
    /// Sizes alone do not tell: a cleared tile may keep them.
    bool HasAllTiles() const noexcept;
    /// Whether no tile is larger than a texture may be, pixels a side.
    bool TilesFit(std::int32_t maxTextureSize) const noexcept;

    /// Whether a worker is loading or splitting at this moment. Any thread.
    bool IsLoading() const noexcept { return loadingCount_ != 0; }
    bool IsSplitting() const noexcept { return splittingCount_ != 0; }
    bool IsBusy() const noexcept { return IsLoading() || IsSplitting(); }

private:
    std::atomic<std::int32_t> loadingCount_{0};    ///< loads under way
    std::atomic<std::int32_t> splittingCount_{0};  ///< splits under way
    std::array<CGLTexture, kTileCount> textures_;
    std::array<CGLTexture*, kTileCount> tiles_{};
    PictureStage stage_ = PictureStage::Empty;
};
