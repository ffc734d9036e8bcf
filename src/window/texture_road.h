#pragma once
// The road of the map picture from its file to the tiles. The caller holds the scene mutex; nothing
// here touches GL, so workers may walk it.

#include <string>

#include "window/texture_store.h"
#include "window/tuning.h"

/// Largest picture that may be loaded or split, pixels.
struct TextureBounds {
    std::int32_t width = 0;
    std::int32_t height = 0;
};
/// A limit a side with the two scalers applied.
TextureBounds ScaledBounds(std::int32_t limit, const TextureLimits& limits) noexcept;

/// Path of the map picture; empty when there is no data folder, since the bare name would mean a
/// file of whatever the current directory is.
std::wstring MapPicturePath(const std::wstring& dataDirectory);

/// Loads the map picture, shrunk to the limits; what was there before is freed first.
/// @return kLoadFailed, kLoadedUnchanged or kLoadedShrunk
int LoadTexture(TextureStore& store, const TextureLimits& limits,
                const std::wstring& dataDirectory);

/// Cuts the loaded picture into the tiles, after shrinking it to the split limit if need be.
/// Nothing is done when it is cut already (a second cut would spread tile 0 over the globe).
/// @return whether the tiles are there
bool SplitTextures(TextureStore& store, const TextureLimits& limits) noexcept;

/// Fits a picture that is already loaded to the limits.
/// @return whether it was changed and is worth saving; false when nothing is loaded
bool FitTexture(TextureStore& store, const TextureLimits& limits) noexcept;
