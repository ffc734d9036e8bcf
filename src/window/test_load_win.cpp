#include "window/test_load_win.h"

#include "window/scene_life_win.h"
#include "window/texture_road.h"

namespace {

constexpr int kSaveQuality = 85;
constexpr std::int32_t kSmallestHalvable = 257;  // pixels; tiles of less than half show too little

/// @return whether a picture is loaded
bool LoadAndSave(MapState& map) {
    TextureRoad& road = map.textures;
    const bool loaded = road.store.Stage() == TextureStage::Loaded;
    const bool needSave =
        loaded
            ? FitTexture(road.store, road.limits)
            : (LoadTexture(road.store, road.limits, map.host.dataDirectory) & kLoadShrunkBit) != 0;
    if (needSave)
        road.store.MapTexture().SaveJpeg(MapPicturePath(map.host.dataDirectory), kSaveQuality);
    return road.store.Stage() != TextureStage::Empty;
}

void HalveLimit(TextureRoad& road) noexcept {
    road.store.ClearMap();
    road.store.ClearTiles(true);
    road.sizeCap = road.limits.maxTextureSize / 2;
    road.limits.maxTextureSize = road.sizeCap;
}

}  // namespace

void RunTestLoad(MapState& map) {
    TextureRoad& road = map.textures;
    while (true) {
        road.limits.textureLimit = road.limits.maxTextureSize.load();
        if (!road.store.HasAllTiles() && !LoadAndSave(map)) return;
        if (SplitTextures(road.store, road.limits) && AttachTiles(map) == 0) return;
        if (road.limits.maxTextureSize < kSmallestHalvable) return;
        HalveLimit(road);
    }
}
