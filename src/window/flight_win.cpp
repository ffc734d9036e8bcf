#include "window/flight_win.h"

#include "math/angles.h"

namespace {

constexpr UINT kFlyStepMs = 20;  // ms between two steps: 50 a second

}  // namespace

void Flight::Start(HWND window, const ViewAngles& from, const ViewAngles& to) noexcept {
    Stop();
    if (path_.Start(from, to)) timer_.Start(window, kFlightTimer, kFlyStepMs);
}

void Flight::StopFor(HWND window) noexcept {
    if (timer_.RunsFor(window)) Stop();
}

bool Flight::Step() noexcept {
    const bool goesOn = path_.Step();
    if (!goesOn) Stop();
    return goesOn;
}

ViewAngles ViewOfPlace(double latitudeDeg, double longitudeDeg) noexcept {
    return {latitudeDeg, kFullTurnDeg - longitudeDeg};
}
