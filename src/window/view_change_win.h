#pragma once
// Applies a change of the view to the scene, the pointer and the hover.

#include "window/map_state_win.h"

/// The steps that follow a change of the view. The kind of input decides which steps are needed.
struct AfterViewChange {
    bool measure = false;      ///< measure the edge of the globe, because the distance has changed
    bool pick = false;         ///< pick the place under the pointer again
    bool cancelHover = false;  ///< end the wait for the pointer to rest
};

/// Copies the view to the scene, then does the steps that `after` names, in the order of its
/// members. Needs MapState because it uses the view, the scene, the pointer and the hover.
void ApplyViewChange(MapState& map, HWND window, const AfterViewChange& after) noexcept;
