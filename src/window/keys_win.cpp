#include "window/keys_win.h"

#include <algorithm>
#include <iterator>

#include "window/drag_win.h"
#include "window/flight_win.h"
#include "window/gl_resources_win.h"
#include "window/hover_win.h"
#include "window/level_of_detail.h"
#include "window/loader_win.h"
#include "window/overlay_win.h"
#include "window/pick_win.h"

namespace {

constexpr double kTurnStepDeg = 1.0;
constexpr LPARAM kWasDownBit = LPARAM{1} << 30;  // of lParam: the key repeats while it is held

void Turn(MapState& map, HWND window, double right, double up) {
    const ViewAngles view = TurnView({map.view.viewTilt, map.view.viewSpin}, right, up);
    map.view.viewTilt = view.tilt;
    map.view.viewSpin = view.spin;
    ApplyView(map.view, map.drawing.scene);
    UpdatePickAtPointer(map, window);
}

void Zoom(MapState& map, HWND window, bool in) {
    map.view.cameraDistance = ZoomByKey(map.view.cameraDistance, in);
    ApplyView(map.view, map.drawing.scene);
    MeasureScene(map);
    UpdatePickAtPointer(map, window);
    CancelHover(map);
}

void Home(MapState& map, HWND window) {
    map.view.cameraDistance = kStartDistance;
    map.view.viewTilt = kStartTilt;
    map.view.viewSpin = 0.0;
    ApplyView(map.view, map.drawing.scene);
    MeasureScene(map);
    UpdatePickAtPointer(map, window);
}

/// One level coarser or finer; nothing happens at the ends.
void StepDetail(MapState& map, HWND window, bool coarser) {
    const std::int32_t factor = StepFactor(map.detail.perfFactor, coarser);
    if (factor != map.detail.perfFactor) LoadAtDetail(map, window, factor);
}

void ToggleFps(MapState& map, HWND) {
    map.view.showFps = !map.view.showFps;
    map.view.lastPaintTick = GetTickCount();
}
void ToggleInfo(MapState& map, HWND) { map.view.showInfo = !map.view.showInfo; }
void FinerDetail(MapState& map, HWND window) { StepDetail(map, window, false); }
void CoarserDetail(MapState& map, HWND window) { StepDetail(map, window, true); }
void TurnLeft(MapState& map, HWND window) { Turn(map, window, -kTurnStepDeg, 0.0); }
void TurnRight(MapState& map, HWND window) { Turn(map, window, kTurnStepDeg, 0.0); }
void TurnUp(MapState& map, HWND window) { Turn(map, window, 0.0, kTurnStepDeg); }
void TurnDown(MapState& map, HWND window) { Turn(map, window, 0.0, -kTurnStepDeg); }
void ZoomIn(MapState& map, HWND window) { Zoom(map, window, true); }
void ZoomOut(MapState& map, HWND window) { Zoom(map, window, false); }

enum class Held : bool { Repeats, Once };  // whether a held key acts again and again

struct KeyRoute {
    WPARAM key;
    Held held;
    void (*act)(MapState& map, HWND window);
};
constexpr KeyRoute kKeyRoutes[] = {
    {VK_CLEAR, Held::Repeats, Home},
    {VK_HOME, Held::Repeats, Home},
    {VK_LEFT, Held::Repeats, TurnLeft},
    {VK_UP, Held::Repeats, TurnUp},
    {VK_RIGHT, Held::Repeats, TurnRight},
    {VK_DOWN, Held::Repeats, TurnDown},
    {'F', Held::Once, ToggleFps},
    {'H', Held::Once, FinerDetail},
    {'I', Held::Once, ToggleInfo},
    {'L', Held::Once, CoarserDetail},
    {VK_INSERT, Held::Once, AddPhoto},
    {VK_PRIOR, Held::Repeats, ShowPreviousPhotos},
    {VK_NEXT, Held::Repeats, ShowNextPhotos},
    {VK_ADD, Held::Repeats, ZoomIn},
    {VK_SUBTRACT, Held::Repeats, ZoomOut},
};

}  // namespace

LRESULT OnKeyDown(HWND window, WPARAM wParam, LPARAM lParam) {
    const auto* const route = std::find_if(std::begin(kKeyRoutes), std::end(kKeyRoutes),
                                           [=](const KeyRoute& r) { return r.key == wParam; });
    if (route == std::end(kKeyRoutes)) return DefWindowProcW(window, WM_KEYDOWN, wParam, lParam);
    // A key held down must not start a load, or open a page, thirty times a second.
    if (route->held == Held::Once && (lParam & kWasDownBit) != 0) return 0;
    MapState& map = Map();
    route->act(map, window);
    // Windows handles messages while a page is opened: the window may be gone.
    if (!map.windows.IsLive(window)) return 0;
    if (IsFlying(map)) {
        StopFlight(map);
        ReanchorDrag(map, window);
    }
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}
