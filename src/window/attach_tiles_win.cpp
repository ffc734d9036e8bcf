#include "window/attach_tiles_win.h"

std::uint32_t AttachTiles(SharedPicture& shared, const GlResources& gl) {
    shared.SetTilesWait(false);
    return gl.Planet()->SetTexture(shared.picture.Tiles());
}

bool AttachPresentTiles(SharedPicture& shared, const GlResources& gl) {
    const MutexHold hold = shared.Lock(0);
    if (!shared.MayUse(hold) || !shared.picture.HasAllTiles()) return false;
    // Compare the sizes again: the tiles may come from an earlier context, and the OpenGL of this
    // context (in a remote session) may allow less.
    return shared.picture.TilesFit(shared.limits.maxTextureSize) && AttachTiles(shared, gl) == 0;
}

bool AttachWaitingTiles(SharedPicture& shared, const GlResources& gl) {
    return shared.TakeTilesWait() && AttachPresentTiles(shared, gl);
}

void OnTilesAttached(GlResources& gl, LevelOfDetail& detail) {
    gl.Compile();
    if (detail.Factor() < kCoarsestFactor) detail.StartMeasuring();
}
