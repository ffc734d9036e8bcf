#include "window/drag_win.h"

#include "window/view_control.h"

void BeginDrag(MapState& map, HWND window, const WindowPoint& point) noexcept {
    const auto place = PickInView(map, window, point);
    map.pointer.anchored = place.has_value();
    if (!place) return;
    CGeoPoint& geoPoint = map.pointer.geoPoint;
    geoPoint.pressTilt = map.view.viewTilt;
    geoPoint.pressSpin = map.view.viewSpin;
    geoPoint.pressLatitude = place->latitude;
    geoPoint.pressLongitude = place->longitude;
}

void Drag(MapState& map, HWND window, const WindowPoint& point) noexcept {
    // Windows sends moves without a movement, after a capture for one; they must not eat a click.
    if (point.x != map.pointer.pressX || point.y != map.pointer.pressY) map.pointer.dragged = true;
    if (!map.pointer.anchored) return;
    const auto place = PickInView(map, window, point);
    if (!place) return;
    const CGeoPoint& geoPoint = map.pointer.geoPoint;
    const DragAnchor anchor{
        {geoPoint.pressTilt, geoPoint.pressSpin}, geoPoint.pressLatitude, geoPoint.pressLongitude};
    const ViewAngles view = DragView(anchor, place->latitude, place->longitude);
    map.view.viewTilt = view.tilt;
    map.view.viewSpin = view.spin;
    ApplyView(map.view, map.drawing.scene);
}

void ReanchorDrag(MapState& map, HWND window) noexcept {
    if (GetCapture() != window || map.pointer.pressedKey != 0) return;
    POINT cursor = {};
    GetCursorPos(&cursor);
    ScreenToClient(window, &cursor);
    RECT client = {};
    GetClientRect(window, &client);
    BeginDrag(map, window, {cursor.x, client.bottom - 1 - cursor.y});
}
