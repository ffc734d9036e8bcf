#include "window/pointer_win.h"

#include <windowsx.h>

#include "cities/city_pick.h"
#include "photos/photo_web_page_win.h"
#include "window/drag_win.h"
#include "window/globe_pick_win.h"
#include "window/host_notice_win.h"
#include "window/view_change_win.h"
#include "window/view_control.h"

namespace {

/// Returns the point of a mouse message. Both coordinates are signed: while the mouse is captured,
/// the pointer may leave the window on every side.
WindowPoint PointOf(HWND window, LPARAM lParam) noexcept {
    RECT client = {};
    GetClientRect(window, &client);
    return {GET_X_LPARAM(lParam), client.bottom - 1 - GET_Y_LPARAM(lParam)};
}

/// Requests a WM_MOUSELEAVE from Windows, if the pointer has just entered the window.
void ArmLeaveTracking(PointerState& pointer, HWND window) noexcept {
    if (!pointer.Enter(window)) return;
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, window, 0};
    TrackMouseEvent(&track);
}

/// Starts the hover. If the pointer rests at `point`, the hover offers the photos of the city
/// there, or of the country of the nearest city. Needs MapState because it uses the panel, the
/// cities, the pointer and the hover.
void HoverAt(MapState& map, HWND window, const WindowPoint& point) noexcept {
    if (map.overlay.Panel().IsHoverOverPanel(point.x)) return;
    const CityPick pick = PickCity(map.host.Cities(), map.pointer.GeoPoint().globePoint);
    // Deliberate: the index must be above 0. The first city of the table never starts a hover, but
    // a click on that city works.
    if (pick.index > 0 && pick.index < map.host.Cities().count)
        map.hover.Start(window, pick.SignedIndex(), point);
}

PressedPhoto PhotoAt(const PhotoPanel& panel, const WindowPoint& point) noexcept {
    const PhotoRecord* photo = panel.FindPhotoAt(point.x, point.y);
    return photo != nullptr ? PressedPhoto{photo->cityIndex, photo->photoNumber} : PressedPhoto{};
}

void PressButton(HWND window, std::int32_t key) {
    SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
}

/// Opens the page of the photo at `point` if the button went down on the same photo, so that the
/// end of a drag over the panel opens nothing.
void OpenPhotoAt(const PhotoPanel& panel, const WindowPoint& point, const PressedPhoto& pressed) {
    if (pressed.cityIndex < 0 || pressed != PhotoAt(panel, point)) return;
    OpenPhotoLink(WideString(panel.FindPhotoAt(point.x, point.y)->link));
}

/// Handles a click without a drag on the globe: reports a hit city to the host, offers photos, and
/// flies to the clicked place, also when there is no city. Needs MapState because it uses the
/// overlay, the cities, the pointer, the windows, the view and the flight.
void Click(MapState& map, HWND window, const WindowPoint& point, bool onGlobe) {
    if (map.overlay.Panel().IsClickOnPanel(point.x) || !onGlobe) return;
    const CityPick pick = PickCity(map.host.Cities(), map.pointer.GeoPoint().globePoint);
    if (pick.IsIn(map.host.Cities().count)) {
        const bool hit = pick.hits > 0;
        if (hit) NotifyCityClicked(map.host.Cities(), window, pick.index);
        map.overlay.OfferPhotos(window, pick.SignedIndex(),
                                hit ? PhotosOf::City : PhotosOf::Country);
        if (!map.windows.IsLive(window)) return;
    }
    const CGeoPoint& pointed = map.pointer.GeoPoint();
    map.flight.Start(window, map.view.Angles(),
                     ViewOfPlace(pointed.latitudeDeg, pointed.longitudeDeg));
}

}  // namespace

LRESULT OnMouseMove(HWND window, WPARAM wParam, LPARAM lParam) {
    MapState& map = Map();
    const WindowPoint point = PointOf(window, lParam);
    map.hover.Cancel();
    map.repeat.CancelLostPress(map.pointer, window);
    map.overlay.FitTo(window);
    ArmLeaveTracking(map.pointer, window);
    if (map.flight.IsUnderWay()) {
        map.pointer.MoveTo(point);
        return 0;
    }
    const bool onGlobe = UpdatePick(map.pointer, map.gl, window, point);
    map.overlay.HighlightButtonAt(window, point);
    const bool buttonHeld = map.pointer.HeldKey() != 0;
    if (wParam == MK_LBUTTON && !buttonHeld) {
        Drag(map, window, point);
    } else if (onGlobe && !buttonHeld) {
        HoverAt(map, window, point);
    }
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnButtonDown(HWND window, WPARAM, LPARAM lParam) {
    MapState& map = Map();
    const WindowPoint point = PointOf(window, lParam);
    map.pointer.Press(point);
    map.pointer.BeginDrag(map.view.Angles(), PickInView(map.gl, window, point));
    map.overlay.FitTo(window);
    SetFocus(window);
    SetCapture(window);
    map.pointer.HoldPhoto(PhotoAt(map.overlay.Panel(), point));
    map.pointer.HoldKey(map.overlay.HighlightButtonAt(window, point));
    const std::int32_t key = map.pointer.HeldKey();
    if (key != 0 && !ActsOnRelease(key)) {
        PressButton(window, key);
        // Repeat only a button that is still held: during the key message the host may have taken
        // the capture or destroyed the window.
        if (map.windows.IsLive(window) && GetCapture() == window) map.repeat.Start(window);
        return 0;
    }
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnButtonUp(HWND window, WPARAM, LPARAM lParam) {
    MapState& map = Map();
    const WindowPoint point = PointOf(window, lParam);
    const bool onGlobe = UpdatePick(map.pointer, map.gl, window, point);
    map.overlay.FitTo(window);
    map.repeat.Stop();
    ReleaseCapture();
    const std::int32_t under = map.overlay.HighlightButtonAt(window, point);
    map.overlay.ClearHighlights();
    // A button acts only when the press and the release are both on this button.
    const std::int32_t released = under == map.pointer.HeldKey() ? under : 0;
    if (ActsOnRelease(released)) {
        PressButton(window, released);
    } else {
        OpenPhotoAt(map.overlay.Panel(), point, map.pointer.HeldPhoto());
    }
    // In both branches above, the host or the user may have destroyed the window.
    if (!map.windows.IsLive(window)) return 0;
    if (!map.pointer.WasDragged() && map.pointer.HeldKey() == 0) Click(map, window, point, onGlobe);
    if (!map.windows.IsLive(window)) return 0;
    map.pointer.ForgetPress();
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnMouseWheel(HWND window, WPARAM wParam, LPARAM) {
    MapState& map = Map();
    const std::int32_t notches = WheelNotches(GET_WHEEL_DELTA_WPARAM(wParam));
    map.overlay.FitTo(window);
    if (map.overlay.Panel().IsWheelOverPanel(map.pointer.Position().x)) {
        if (notches != 0) PressButton(window, notches > 0 ? VK_NEXT : VK_PRIOR);
        return 0;
    }
    map.view.MoveTo(ZoomByWheel(map.view.CameraDistance(), notches));
    ApplyViewChange(map, window, {.measure = true, .pick = true, .cancelHover = true});
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnMouseLeave(HWND window, WPARAM, LPARAM) {
    MapState& map = Map();
    map.pointer.Leave();
    map.overlay.ClearHighlights();
    // Paint again: otherwise a button would still be highlighted on the screen.
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}
