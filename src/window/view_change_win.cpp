#include "window/view_change_win.h"

#include "window/globe_pick_win.h"
#include "window/view_control.h"

void ApplyViewChange(MapState& map, HWND window, const AfterViewChange& after) noexcept {
    ApplyView(map.view, map.gl.Scene());
    if (after.measure) map.gl.Measure();
    if (after.pick) UpdatePick(map.pointer, map.gl, window, map.pointer.Position());
    if (after.cancelHover) map.hover.Cancel();
}
