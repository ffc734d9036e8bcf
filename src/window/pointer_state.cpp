#include "window/pointer_state.h"

#include "window/globe_pick.h"
#include "window/view_control.h"

bool PointerState::PickAt(const CScene& scene, const CSphere& globe,
                          const WindowPoint& point) noexcept {
    return RepickAt(geoPoint_, scene, globe, point.x, point.y);
}

void PointerState::MoveTo(const WindowPoint& point) noexcept {
    geoPoint_.mouseX = point.x;
    geoPoint_.mouseY = point.y;
}

void PointerState::PointAt(const CVector4& place, const CScene& scene) noexcept {
    geoPoint_.globePoint = place;
    UpdateGeoPoint(geoPoint_, scene);
}

bool PointerState::Enter(const void* window) noexcept {
    if (geoPoint_.valid) return false;
    geoPoint_.valid = true;
    overWindow_ = window;
    return true;
}

void PointerState::LeaveDestroyed(const void* window) noexcept {
    if (overWindow_ == window) Leave();
}

void PointerState::Press(const WindowPoint& point) noexcept {
    dragged_ = false;
    press_ = point;
}

void PointerState::ForgetPress() noexcept {
    pressedKey_ = 0;
    dragged_ = false;
    anchored_ = false;
    pressedPhoto_ = {};
}

void PointerState::BeginDrag(const ViewAngles& view, const std::optional<LatLon>& place) noexcept {
    anchored_ = place.has_value();
    if (!place) return;
    geoPoint_.pressTilt = view.tilt;
    geoPoint_.pressSpin = view.spin;
    geoPoint_.pressLatitude = place->latitude;
    geoPoint_.pressLongitude = place->longitude;
}

void PointerState::NoteDragTo(const WindowPoint& point) noexcept {
    if (point != press_) dragged_ = true;
}

ViewAngles PointerState::DragTo(const LatLon& place) const noexcept {
    const DragAnchor anchor{{geoPoint_.pressTilt, geoPoint_.pressSpin},
                            geoPoint_.pressLatitude,
                            geoPoint_.pressLongitude};
    return DragView(anchor, place.latitude, place.longitude);
}
