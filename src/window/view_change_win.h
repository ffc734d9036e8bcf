#pragma once
// The steps that follow when input has changed the view.

#include "window/map_state_win.h"

/// The steps that follow a change of the view; which ones depends on the input.
struct AfterViewChange {
    bool measure = false;      ///< measure the edge of the globe: the distance has changed
    bool pick = false;         ///< pick the place under the pointer again
    bool cancelHover = false;  ///< the pointer does not rest any more
};

/// Gives the view to the scene and does what follows, in the order of the members. Takes the whole
/// state: view, scene, pointer and hover.
void ApplyViewChange(MapState& map, HWND window, const AfterViewChange& after) noexcept;
