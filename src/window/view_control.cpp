#include "window/view_control.h"

#include "math/angles.h"

namespace {

constexpr double kQuadrantDeg = 90.0;
constexpr double kUpsideDownFromDeg = 90.0;
constexpr double kUpsideDownToDeg = 270.0;

constexpr float kZoomStep = 0.1F;          // scene units per key press or wheel notch
constexpr std::int32_t kNotchDelta = 120;  // units of WM_MOUSEWHEEL per notch

}  // namespace

ViewAngles DragView(const DragAnchor& press, double latitude, double longitude) noexcept {
    // Deliberate: at a tilt of exactly 270 degrees, a drag treats the globe as upright, TurnView as
    // upside down.
    const int quadrant = static_cast<int>(press.view.tilt / kQuadrantDeg);
    const bool upsideDown = quadrant == 1 || quadrant == 2;
    const double turn = upsideDown ? press.longitude - longitude : longitude - press.longitude;
    return {WrapDegrees(press.view.tilt - (latitude - press.latitude)),
            WrapDegrees(press.view.spin + turn)};
}

ViewAngles TurnView(const ViewAngles& view, double right, double up) noexcept {
    const bool upright = view.tilt < kUpsideDownFromDeg || view.tilt > kUpsideDownToDeg;
    return {WrapDegrees(view.tilt + up),
            WrapDegrees(upright ? view.spin - right : view.spin + right)};
}

float ZoomByKey(float distance, bool in) noexcept {
    if (in && distance < kNearestDistance) distance += kZoomStep;
    if (!in && distance > kFarthestDistance) distance -= kZoomStep;
    // Clamp, because the sum of steps of 0.1 is not exact in float: one more step could pass the
    // limit, and the near plane would cut the globe.
    return Clamp(distance, kFarthestDistance, kNearestDistance);
}

float ZoomByWheel(float distance, std::int32_t notches) noexcept {
    return Clamp(distance + kZoomStep * static_cast<float>(notches), kFarthestDistance,
                 kNearestDistance);
}

std::int32_t WheelNotches(std::int32_t delta) noexcept { return -delta / kNotchDelta; }

void ApplyView(const ViewState& view, CScene& scene) noexcept {
    scene.position.z = view.CameraDistance();
    scene.rotation = {view.Angles().tilt, view.Angles().spin, 0.0};
}
