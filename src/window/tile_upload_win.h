#pragma once
// Attaches the tiles of the map picture to the planet.

#include "window/gl_resources_win.h"
#include "window/level_of_detail.h"
#include "window/shared_picture_win.h"

/// Uploads the tiles to the planet. The caller holds the scene mutex; the context is current.
/// @return 0 or a GL error
std::uint32_t AttachTiles(SharedPicture& shared, const GlResources& gl);

/// Uploads the tiles if they are complete, fit this OpenGL, and no worker has the picture. The
/// context is current. @return whether the planet shows them now
bool AttachPresentTiles(SharedPicture& shared, const GlResources& gl);

/// Uploads tiles that came while the context could not be made current; now it is.
/// @return whether the planet shows them now
bool AttachWaitingTiles(SharedPicture& shared, const GlResources& gl);

/// Records the display lists for the tiles of a new picture and starts a measurement, except at the
/// coarsest level. The context is current.
void OnTilesAttached(GlResources& gl, LevelOfDetail& detail);
