#pragma once
// The steps that follow when input has changed the view.

#include "window/map_state_win.h"

/// The steps that follow a change of the view. The kind of input decides which steps are needed.
struct AfterViewChange {
    bool measure = false;      ///< measure the edge of the globe: the distance has changed
    bool pick = false;         ///< pick the place under the pointer again
    bool cancelHover = false;  ///< the pointer does not rest any more
};

/// Copies the view to the scene, then does the steps that `after` names, in the order of its
/// members. Takes the whole state: view, scene, pointer and hover.
void ApplyViewChange(MapState& map, HWND window, const AfterViewChange& after) noexcept;
