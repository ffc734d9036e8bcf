#include "window/flight_win.h"

#include "math/angles.h"
#include "window/drag_win.h"

namespace {

constexpr UINT kFlyStepMs = 20;  // ms between two steps: 50 a second

void LandAtCentre(MapState& map, HWND window) {
    if (!UseSizeOf(map, window) || map.drawing.planet == nullptr) return;
    const CScene& scene = map.drawing.scene;
    RepickAt(map.pointer.geoPoint, scene, *map.drawing.planet, scene.width / 2, scene.height / 2);
    ReanchorDrag(map, window);
}

}  // namespace

ViewAngles ViewOfPlace(double latitudeDeg, double longitudeDeg) noexcept {
    return {latitudeDeg, kFullTurnDeg - longitudeDeg};
}

void StartFlight(MapState& map, HWND window, const ViewAngles& to) noexcept {
    StopFlight(map);
    if (!map.flight.path.Start({map.view.viewTilt, map.view.viewSpin}, to)) return;
    map.flight.timer.Start(window, kFlightTimer, kFlyStepMs);
}

void StopFlight(MapState& map) noexcept { map.flight.timer.Stop(); }

void OnFlightTimer(MapState& map, HWND window) {
    const bool goesOn = map.flight.path.Step();
    if (!goesOn) StopFlight(map);
    const ViewAngles now = map.flight.path.Current();
    map.view.viewTilt = now.tilt;
    map.view.viewSpin = now.spin;
    ApplyView(map.view, map.drawing.scene);
    if (!goesOn) LandAtCentre(map, window);
    InvalidateRect(window, nullptr, FALSE);
}
