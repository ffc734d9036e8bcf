#include "window/drag_win.h"

#include "window/globe_pick_win.h"
#include "window/view_change_win.h"

void Drag(MapState& map, HWND window, const WindowPoint& point) noexcept {
    map.pointer.NoteDragTo(point);
    if (!map.pointer.IsAnchored()) return;
    const auto place = PickInView(map.gl, window, point);
    if (!place) return;
    map.view.TurnTo(map.pointer.DragTo(*place));
    ApplyViewChange(map, window, {});
}

void ReanchorDrag(PointerState& pointer, const ViewState& view, GlResources& gl,
                  HWND window) noexcept {
    if (GetCapture() != window || pointer.HeldKey() != 0) return;
    POINT cursor = {};
    GetCursorPos(&cursor);
    ScreenToClient(window, &cursor);
    RECT client = {};
    GetClientRect(window, &client);
    const WindowPoint point{cursor.x, client.bottom - 1 - cursor.y};
    pointer.BeginDrag(view.Angles(), PickInView(gl, window, point));
}
