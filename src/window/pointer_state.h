#pragma once

#include <cstdint>
#include <optional>

#include "math/geographic.h"
#include "render/geo_point.h"
#include "window/view_state.h"

class CScene;
class CSphere;

/// A point of a window, pixels.
struct WindowPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;  ///< from the bottom
    bool operator==(const WindowPoint&) const = default;
};

/// Identifies a photo of the panel. The number alone is not enough, because two cities may have
/// photos of the same number.
struct PressedPhoto {
    std::int32_t cityIndex = -1;  ///< -1: no photo
    std::int32_t photoNumber = 0;
    bool operator==(const PressedPhoto&) const = default;
};

/// The place under the pointer, and what the left mouse button was pressed on.
class PointerState {
public:
    /// The pointer position and the pointed place: the place that PickAt or PointAt stored last.
    const CGeoPoint& GeoPoint() const noexcept { return geoPoint_; }
    WindowPoint Position() const noexcept { return {geoPoint_.mouseX, geoPoint_.mouseY}; }

    /// Stores `point` as the pointer position, and the place under it as the pointed place. When
    /// `point` is beside the globe, the pointed place does not change.
    /// @return whether `point` is on the globe
    bool PickAt(const CScene& scene, const CSphere& globe, const WindowPoint& point) noexcept;
    /// Stores the pointer position only.
    void MoveTo(const WindowPoint& point) noexcept;
    /// Makes `place` (in the globe's frame) the pointed place, as if the pointer were there.
    void PointAt(const CVector4& place, const CScene& scene) noexcept;

    /// Notes that the pointer is inside `window` (a handle).
    /// @return whether the pointer was outside before. If so, the caller must request a
    /// WM_MOUSELEAVE.
    bool Enter(const void* window) noexcept;
    /// Notes that the pointer has left its window.
    void Leave() noexcept { geoPoint_.valid = false; }
    /// Notes that `window` is destroyed. If the pointer was inside it, the pointer counts as
    /// outside from now on, because a destroyed window gets no WM_MOUSELEAVE.
    void LeaveDestroyed(const void* window) noexcept;

    /// Notes where the left button went down.
    void Press(const WindowPoint& point) noexcept;
    void HoldPhoto(const PressedPhoto& photo) noexcept { pressedPhoto_ = photo; }
    void HoldKey(std::int32_t key) noexcept { pressedKey_ = key; }
    const PressedPhoto& HeldPhoto() const noexcept { return pressedPhoto_; }
    /// Virtual-key code of the button over the map that the mouse holds down; 0: none.
    std::int32_t HeldKey() const noexcept { return pressedKey_; }
    /// Forgets the press, because the button was released or the window has lost the mouse capture.
    void ForgetPress() noexcept;

    /// Makes `place` the anchor of a drag. Without a place (the press was beside the globe),
    /// removes the anchor, so that the drag does not turn the globe.
    /// @param view   the view now
    /// @param place  the grabbed point, as PickInView returns it
    void BeginDrag(const ViewAngles& view, const std::optional<LatLon>& place) noexcept;
    bool IsAnchored() const noexcept { return anchored_; }
    /// Notes that the pointer is at `point` while the button is held. Windows also sends
    /// WM_MOUSEMOVE without a movement, for example after a capture; such a message must not turn a
    /// click into a drag.
    void NoteDragTo(const WindowPoint& point) noexcept;
    /// Whether the pointer has moved since the button went down.
    bool WasDragged() const noexcept { return dragged_; }
    /// Returns the view that moves the grabbed point to the pointer. Call this function only while
    /// IsAnchored is true. @param place  the point under the pointer, as PickInView returns it
    ViewAngles DragTo(const LatLon& place) const noexcept;

private:
    CGeoPoint geoPoint_;
    /// The window that the pointer is inside. Meaningful only while `geoPoint_.valid` is true.
    const void* overWindow_ = nullptr;
    WindowPoint press_;      ///< where the button went down
    bool anchored_ = false;  ///< the press grabbed the globe: a drag turns the globe
    bool dragged_ = false;
    PressedPhoto pressedPhoto_;
    std::int32_t pressedKey_ = 0;
};
