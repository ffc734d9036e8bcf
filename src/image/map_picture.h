#pragma once
// The map picture: loads it from its file and splits it into tiles. Nothing here calls OpenGL, so
// that worker threads may run it.

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

#include "image/jpeg_texture.h"
#include "image/texture_limits.h"
#include "image/tile_grid.h"

/// Processing stage of the map picture.
enum class PictureStage : std::uint8_t {
    Empty,
    Loaded,  ///< tile 0, the map texture, holds the whole picture
    Split,   ///< the eight tiles hold the parts of the picture
};

/// The map picture: the map texture, which is also tile 0, and the other seven tiles. The scene
/// mutex guards this object: the caller of any function must hold the mutex, except for PathIn,
/// IsLoading, IsSplitting and IsBusy.
class MapPicture {
public:
    MapPicture() noexcept;

    /// Path of the picture's file in `dataDirectory`, which ends with a backslash. Empty when
    /// `dataDirectory` is empty, because the file name alone would mean a file in the current
    /// directory.
    static std::wstring PathIn(const std::wstring& dataDirectory);

    /// Frees the old picture and loads the file. Shrinks the new picture as CGLTexture::Load does;
    /// the limits are ScaledBounds of limits.maxTextureSize.
    /// @return kLoadFailed, kLoadedUnchanged or kLoadedShrunk
    int Load(const TextureLimits& limits, const std::wstring& dataDirectory);

    /// Splits the loaded picture into the tiles. Shrinks the picture first when a side is above
    /// ScaledBounds of limits.textureLimit. Does nothing when the picture is split already: a
    /// second split would divide tile 0, and its part of the map would cover the whole globe.
    /// @return whether the tiles exist
    bool Split(const TextureLimits& limits) noexcept;

    /// Shrinks the loaded picture by FitToLimits.
    /// @return whether the picture should be saved: true also when it had the right size already;
    /// false when no picture is loaded or the shrinking failed
    bool Fit(const TextureLimits& limits) noexcept;

    /// Frees the map texture and sets its sizes to 0.
    void ClearMap() noexcept;
    /// Frees the pixels of all tiles. @param resetSize  also sets their sizes to 0
    void ClearTiles(bool resetSize) noexcept;

    CGLTexture& MapTexture() noexcept { return textures_[0]; }
    /// Eight pointers, none null.
    CGLTexture* const* Tiles() noexcept { return tiles_.data(); }
    PictureStage Stage() const noexcept { return stage_; }

    /// Whether the picture is split and every tile has pixels. The sizes of a tile do not show
    /// this, because a cleared tile may keep its sizes.
    bool HasAllTiles() const noexcept;
    /// Whether no side of a tile is above `maxTextureSize` pixels.
    bool TilesFit(std::int32_t maxTextureSize) const noexcept;

    /// Whether the picture is being loaded, being split, or either of the two. Any thread.
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
