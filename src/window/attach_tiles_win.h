#pragma once
// Attaches the tiles to the planet: the eight parts into which the map picture is split.

#include "window/gl_resources_win.h"
#include "window/level_of_detail.h"
#include "window/shared_picture_win.h"

/// Uploads the tiles to the planet. The caller must hold the mutex of the picture, and the context
/// must be current. @return 0 or a GL error
std::uint32_t AttachTiles(SharedPicture& shared, const GlResources& gl);

/// Uploads the tiles, if all tiles are in memory, none is too large for this OpenGL, and no worker
/// is using the picture. The context must be current. @return whether the tiles were uploaded
bool AttachPresentTiles(SharedPicture& shared, const GlResources& gl);

/// Uploads the tiles that were ready while the context could not be made current, if there are any.
/// The context must be current now. @return whether tiles were uploaded
bool AttachWaitingTiles(SharedPicture& shared, const GlResources& gl);

/// Records the display lists for the tiles of a new picture. Then starts to measure frames, except
/// at the coarsest level of detail. The context must be current.
void OnTilesAttached(GlResources& gl, LevelOfDetail& detail);
