#include "window/tile_upload_win.h"

#include <utility>

#include "window/gl_resources_win.h"

namespace {

/// Whether the tiles in memory can be shown as they are.
bool TilesArePresent(MapState& map) noexcept {
    // A context of less (a remote session) cannot show tiles that were cut for a better one.
    return map.textures.picture.HasAllTiles() &&
           map.textures.picture.TilesFit(map.textures.limits.maxTextureSize);
}

}  // namespace

std::uint32_t AttachTiles(MapState& map) {
    map.textures.tilesWaitForContext = false;
    return map.drawing.planet->SetTexture(map.textures.picture.Tiles());
}

bool AttachPresentTiles(MapState& map) {
    const HANDLE mutex = map.textures.sceneMutex.get();
    const MutexHold hold = AcquireMutex(mutex, 0);
    // Without a mutex no worker can be at them.
    if (!hold && mutex != nullptr) return false;
    return TilesArePresent(map) && AttachTiles(map) == 0;
}

void AttachWaitingTiles(MapState& map) {
    if (!std::exchange(map.textures.tilesWaitForContext, false) || !AttachPresentTiles(map)) return;
    OnTilesAttached(map);
    map.windows.InvalidateAll();
}

void OnTilesAttached(MapState& map) {
    CompileScene(map);
    if (map.detail.perfFactor < kCoarsestFactor) StartMeasuring(map.detail);
}
