#include "window/pointer_win.h"

#include <windowsx.h>

#include "cities/city_pick.h"
#include "photos/photo_page_win.h"
#include "window/button_repeat_win.h"
#include "window/drag_win.h"
#include "window/flight_win.h"
#include "window/gl_resources_win.h"
#include "window/host_notice_win.h"
#include "window/hover_win.h"
#include "window/overlay_win.h"

namespace {

/// Both words are signed: with the mouse captured they leave the window on every side.
WindowPoint PointOf(HWND window, LPARAM lParam) noexcept {
    RECT client = {};
    GetClientRect(window, &client);
    return {GET_X_LPARAM(lParam), client.bottom - 1 - GET_Y_LPARAM(lParam)};
}

void ArmLeaveTracking(MapState& map, HWND window) noexcept {
    if (map.pointer.geoPoint.valid) return;
    map.pointer.geoPoint.valid = true;
    map.pointer.overWindow = window;
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, window, 0};
    TrackMouseEvent(&track);
}

/// Waits for the pointer to rest when it is on a city.
void HoverAt(MapState& map, HWND window, const WindowPoint& point) noexcept {
    if (map.overlay.panel.IsHoverOverPanel(point.x)) return;
    const CityPick pick = PickCity(map.host.cities, map.pointer.geoPoint.globePoint);
    // Deliberate: above 0, so the first city of the table never starts a hover; a click takes it.
    if (pick.index > 0 && pick.index < map.host.cities.count)
        StartHover(map, window, pick.SignedIndex(), point.x, point.y);
}

PressedPhoto PhotoAt(const MapState& map, const WindowPoint& point) noexcept {
    const PhotoRecord* photo = map.overlay.panel.FindPhotoAt(point.x, point.y);
    return photo != nullptr ? PressedPhoto{photo->cityIndex, photo->photoNumber} : PressedPhoto{};
}

bool ActsOnRelease(std::int32_t key) noexcept {
    return key == VK_HOME || key == VK_PRIOR || key == VK_NEXT || key == VK_INSERT;
}

void PressButton(HWND window, std::int32_t key) {
    SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
}

/// Opens the photo's page when the press was on the same photo: the end of a drag over the panel
/// opens nothing.
void OpenPhotoUnder(const MapState& map, const WindowPoint& point) {
    const PressedPhoto pressed = map.pointer.pressedPhoto;
    const PressedPhoto under = PhotoAt(map, point);
    if (pressed.cityIndex < 0 || pressed.cityIndex != under.cityIndex ||
        pressed.photoNumber != under.photoNumber) {
        return;
    }
    // The record behind the picture that was hit: two cities may have photos of one number.
    OpenPhotoLink(WideString(map.overlay.panel.FindPhotoAt(point.x, point.y)->link));
}

/// A plain click: tells the host of a city, offers photos, and flies there in any case.
void Click(MapState& map, HWND window, const WindowPoint& point, bool onGlobe) {
    if (map.overlay.panel.IsClickOnPanel(point.x) || !onGlobe) return;
    const CityPick pick = PickCity(map.host.cities, map.pointer.geoPoint.globePoint);
    if (pick.IsIn(map.host.cities.count)) {
        const bool hit = pick.hits > 0;
        if (hit) TellCityClicked(map, window, pick.index);
        OfferPhotos(map, window, pick.SignedIndex(), hit ? PhotosOf::City : PhotosOf::Country);
        if (!map.windows.IsLive(window)) return;
    }
    const CGeoPoint& geoPoint = map.pointer.geoPoint;
    StartFlight(map, window, ViewOfPlace(geoPoint.latitudeDeg, geoPoint.longitudeDeg));
}

}  // namespace

LRESULT OnMouseMove(HWND window, WPARAM wParam, LPARAM lParam) {
    MapState& map = Map();
    const WindowPoint point = PointOf(window, lParam);
    CancelHover(map);
    GiveUpLostPress(map, window);
    FitOverlayTo(map, window);
    ArmLeaveTracking(map, window);
    if (IsFlying(map)) {
        map.pointer.geoPoint.mouseX = point.x;
        map.pointer.geoPoint.mouseY = point.y;
        return 0;
    }
    const bool onGlobe = UpdatePick(map, window, point);
    HitTestButtons(map, window, point.x, point.y, false);
    const bool buttonHeld = map.pointer.pressedKey != 0;
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
    map.pointer.dragged = false;
    map.pointer.pressX = point.x;
    map.pointer.pressY = point.y;
    BeginDrag(map, window, point);
    FitOverlayTo(map, window);
    SetFocus(window);
    SetCapture(window);
    map.pointer.pressedPhoto = PhotoAt(map, point);
    map.pointer.pressedKey = HitTestButtons(map, window, point.x, point.y, false);
    if (map.pointer.pressedKey != 0 && !ActsOnRelease(map.pointer.pressedKey)) {
        PressButton(window, map.pointer.pressedKey);
        // The key may have let the host act: only a button that is still held repeats.
        if (map.windows.IsLive(window) && GetCapture() == window) StartButtonRepeat(map, window);
        return 0;
    }
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnButtonUp(HWND window, WPARAM, LPARAM lParam) {
    MapState& map = Map();
    const WindowPoint point = PointOf(window, lParam);
    const bool onGlobe = UpdatePick(map, window, point);
    FitOverlayTo(map, window);
    map.repeat.Stop();
    ReleaseCapture();
    const std::int32_t under = HitTestButtons(map, window, point.x, point.y, false);
    HitTestButtons(map, window, point.x, point.y, true);
    // Released off the button that was pressed: nothing is meant.
    const std::int32_t released = under == map.pointer.pressedKey ? under : 0;
    if (ActsOnRelease(released)) {
        PressButton(window, released);
    } else {
        OpenPhotoUnder(map, point);
    }
    // Both may have let the host or the user act: the window may be gone.
    if (!map.windows.IsLive(window)) return 0;
    if (!map.pointer.dragged && map.pointer.pressedKey == 0) Click(map, window, point, onGlobe);
    if (!map.windows.IsLive(window)) return 0;
    map.pointer.ForgetPress();
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnMouseWheel(HWND window, WPARAM wParam, LPARAM) {
    MapState& map = Map();
    const std::int32_t notches = WheelNotches(GET_WHEEL_DELTA_WPARAM(wParam));
    FitOverlayTo(map, window);
    if (map.overlay.panel.IsWheelOverPanel(map.pointer.geoPoint.mouseX)) {
        if (notches != 0) PressButton(window, notches > 0 ? VK_NEXT : VK_PRIOR);
        return 0;
    }
    map.view.cameraDistance = ZoomByWheel(map.view.cameraDistance, notches);
    ApplyView(map.view, map.drawing.scene);
    MeasureScene(map);
    UpdatePickAtPointer(map, window);
    CancelHover(map);
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnMouseLeave(HWND window, WPARAM, LPARAM) {
    MapState& map = Map();
    map.pointer.geoPoint.valid = false;
    HitTestButtons(map, window, 0, 0, true);
    // What was lit under the pointer must not stay in a picture that nobody redraws.
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}
