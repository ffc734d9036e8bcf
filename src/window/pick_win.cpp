#include "window/pick_win.h"

#include "window/view_control.h"

bool UseSizeOf(MapState& map, HWND window) noexcept {
    return ClientSize(window, map.drawing.scene.width, map.drawing.scene.height);
}

bool UpdatePick(MapState& map, HWND window, const WindowPoint& point) noexcept {
    if (!UseSizeOf(map, window) || map.drawing.planet == nullptr) return false;
    return RepickAt(map.pointer.geoPoint, map.drawing.scene, *map.drawing.planet, point.x, point.y);
}

void UpdatePickAtPointer(MapState& map, HWND window) noexcept {
    UpdatePick(map, window, {map.pointer.geoPoint.mouseX, map.pointer.geoPoint.mouseY});
}

std::optional<LatLon> PickInView(MapState& map, HWND window, const WindowPoint& point) noexcept {
    if (!UseSizeOf(map, window) || map.drawing.planet == nullptr) return std::nullopt;
    const auto hit = PickGlobe(map.drawing.scene, *map.drawing.planet, point.x, point.y, false);
    if (!hit) return std::nullopt;
    return PointToLatLonDeg(*hit);
}
