#include "window/globe_pick_win.h"

#include "window/globe_pick.h"

bool UpdatePick(PointerState& pointer, GlResources& gl, HWND window,
                const WindowPoint& point) noexcept {
    return gl.CanPickIn(window) && pointer.PickAt(gl.Scene(), *gl.Planet(), point);
}

std::optional<LatLon> PickInView(GlResources& gl, HWND window, const WindowPoint& point) noexcept {
    if (!gl.CanPickIn(window)) return std::nullopt;
    const auto hit = PickGlobe(gl.Scene(), *gl.Planet(), point.x, point.y, false);
    if (!hit) return std::nullopt;
    return PointToLatLonDeg(*hit);
}
