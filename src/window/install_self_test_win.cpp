#include "window/install_self_test_win.h"

#include "window/tile_upload_win.h"

namespace {

constexpr int kSaveQuality = 85;
constexpr std::int32_t kSmallestHalvable = 257;  // pixels; tiles of less than half show too little

/// Whether the picture has changed since it was read: shrunk by its load, or fitted now.
bool LoadOrFit(SharedPicture& shared, const std::wstring& dataDirectory) {
    if (shared.picture.Stage() == PictureStage::Loaded) return shared.picture.Fit(shared.limits);
    return (shared.picture.Load(shared.limits, dataDirectory) & kLoadShrunkBit) != 0;
}

/// @return whether a picture is loaded
bool LoadAndSave(SharedPicture& shared, const std::wstring& dataDirectory) {
    if (LoadOrFit(shared, dataDirectory)) {
        shared.picture.MapTexture().SaveJpeg(MapPicture::PathIn(dataDirectory), kSaveQuality);
    }
    return shared.picture.Stage() != PictureStage::Empty;
}

void HalveLimit(SharedPicture& shared) noexcept {
    shared.picture.ClearMap();
    shared.picture.ClearTiles(true);
    shared.sizeCap = shared.limits.maxTextureSize / 2;
    shared.limits.maxTextureSize = shared.sizeCap;
}

}  // namespace

void RunInstallSelfTest(MapState& map) {
    SharedPicture& shared = map.textures;
    while (true) {
        shared.limits.textureLimit = shared.limits.maxTextureSize.load();
        if (!shared.picture.HasAllTiles() && !LoadAndSave(shared, map.host.dataDirectory)) return;
        if (shared.picture.Split(shared.limits) && AttachTiles(map) == 0) return;
        if (shared.limits.maxTextureSize < kSmallestHalvable) return;
        HalveLimit(shared);
    }
}
