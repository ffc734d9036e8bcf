#pragma once
// The tiles of the map picture on their way to the planet.

#include "window/map_state_win.h"

/// Uploads the tiles to the planet. The caller holds the scene mutex; the context is current.
/// @return 0 or a GL error
std::uint32_t AttachTiles(MapState& map);

/// Uploads the tiles if they can be shown as they are and no worker is at them.
/// @return whether the planet shows them now
bool AttachPresentTiles(MapState& map);

/// Uploads tiles that came while the context could not be made current; now it is.
void AttachWaitingTiles(MapState& map);

/// What follows once the planet has the tiles of a new picture. The context is current.
void OnTilesAttached(MapState& map);
