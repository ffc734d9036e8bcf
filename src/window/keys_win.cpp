#include "window/keys_win.h"

#include <algorithm>
#include <iterator>

#include "photos/photo_web_page_win.h"
#include "window/drag_win.h"
#include "window/load_results_win.h"
#include "window/view_change_win.h"
#include "window/view_control.h"

namespace {

constexpr double kTurnStepDeg = 1.0;             // degrees that one key press turns the globe
constexpr LPARAM kWasDownBit = LPARAM{1} << 30;  // bit of lParam; set: the key was already down

void Turn(MapState& map, HWND window, double right, double up) {
    map.view.TurnTo(TurnView(map.view.Angles(), right, up));
    ApplyViewChange(map, window, {.pick = true});
}

// The handlers of the keys. The table below lists them. Each handler uses different parts of
// MapState. The table also gives the value of `direction`.

void TurnSideways(MapState& map, HWND window, int direction) {
    Turn(map, window, kTurnStepDeg * direction, 0.0);
}

void TurnUpward(MapState& map, HWND window, int direction) {
    Turn(map, window, 0.0, kTurnStepDeg * direction);
}

void Zoom(MapState& map, HWND window, int direction) {
    map.view.MoveTo(ZoomByKey(map.view.CameraDistance(), direction > 0));
    ApplyViewChange(map, window, {.measure = true, .pick = true, .cancelHover = true});
}

void ShowStartView(MapState& map, HWND window, int) {
    map.view.MoveTo(kStartDistance);
    map.view.TurnTo({kStartTilt, 0.0});
    ApplyViewChange(map, window, {.measure = true, .pick = true});
}

/// Makes the detail one level finer or coarser. Does nothing when there is no such level.
void StepDetail(MapState& map, HWND window, int direction) {
    const std::int32_t factor = StepFactor(map.detail.Factor(), direction < 0);
    if (factor != map.detail.Factor()) LoadAtDetail(map, window, factor);
}

void ToggleFrameRate(MapState& map, HWND, int) { map.view.ToggleFrameRate(); }
void ToggleInformation(MapState& map, HWND, int) { map.view.ToggleInformation(); }
void AddPhoto(MapState&, HWND, int) { OpenAddPhotoPage(); }

void TurnPage(MapState& map, HWND window, int direction) {
    if (direction > 0) {
        map.overlay.ShowNextPage(window);
    } else {
        map.overlay.ShowPreviousPage(window);
    }
}

struct KeyRoute {
    WPARAM key;
    void (*act)(MapState& map, HWND window, int direction);
    int direction = 0;  // +1 or -1; 0: the handler does not use it
    bool once = false;  // whether the key acts only once while it is held
};
constexpr KeyRoute kKeyRoutes[] = {
    {.key = VK_CLEAR, .act = ShowStartView},  // 5 of the numeric keypad without Num Lock
    {.key = VK_HOME, .act = ShowStartView},
    {.key = VK_LEFT, .act = TurnSideways, .direction = -1},
    {.key = VK_UP, .act = TurnUpward, .direction = +1},
    {.key = VK_RIGHT, .act = TurnSideways, .direction = +1},
    {.key = VK_DOWN, .act = TurnUpward, .direction = -1},
    {.key = 'F', .act = ToggleFrameRate, .once = true},
    {.key = 'H', .act = StepDetail, .direction = +1, .once = true},
    {.key = 'I', .act = ToggleInformation, .once = true},
    {.key = 'L', .act = StepDetail, .direction = -1, .once = true},
    {.key = VK_INSERT, .act = AddPhoto, .once = true},
    {.key = VK_PRIOR, .act = TurnPage, .direction = -1},
    {.key = VK_NEXT, .act = TurnPage, .direction = +1},
    {.key = VK_ADD, .act = Zoom, .direction = +1},
    {.key = VK_SUBTRACT, .act = Zoom, .direction = -1},
};

}  // namespace

LRESULT OnKeyDown(HWND window, WPARAM wParam, LPARAM lParam) {
    const auto* const route = std::find_if(std::begin(kKeyRoutes), std::end(kKeyRoutes),
                                           [=](const KeyRoute& r) { return r.key == wParam; });
    if (route == std::end(kKeyRoutes)) return DefWindowProcW(window, WM_KEYDOWN, wParam, lParam);
    // Ignore the repeats of a key that acts only once: a held key must not start a load or open a
    // page thirty times a second.
    if (route->once && (lParam & kWasDownBit) != 0) return 0;
    MapState& map = Map();
    route->act(map, window, route->direction);
    // The window may be destroyed now: if the key opened a page, Windows handled messages
    // meanwhile.
    if (!map.windows.IsLive(window)) return 0;
    if (map.flight.IsUnderWay()) {
        map.flight.Stop();
        ReanchorDrag(map.pointer, map.view, map.gl, window);
    }
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}
