#include "window/timers_win.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "window/button_repeat_win.h"
#include "window/flight_win.h"
#include "window/hover_win.h"
#include "window/sun_timer_win.h"

namespace {

/// Messages that a paint takes out of the queue: the map's own and some of a host's.
constexpr std::size_t kMaxTaken = 16;

const WindowTimer& RepeatTimer(const MapState& map, const MapWindow&) { return map.repeat; }
const WindowTimer& FlightTimer(const MapState& map, const MapWindow&) { return map.flight.timer; }
const WindowTimer& HoverTimer(const MapState& map, const MapWindow&) { return map.hover.timer; }
const WindowTimer& SunTimer(const MapState&, const MapWindow& entry) { return entry.sunTimer; }

struct TimerRoute {
    UINT_PTR id;
    const WindowTimer& (*timer)(const MapState& map, const MapWindow& entry);
    void (*handle)(MapState& map, HWND window);
};
constexpr TimerRoute kTimerRoutes[kMapTimers] = {
    {kRepeatTimer, RepeatTimer, OnRepeatTimer},
    {kFlightTimer, FlightTimer, OnFlightTimer},
    {kHoverTimer, HoverTimer, OnHoverTimer},
    {kSunTimer, SunTimer, OnSunTimer},
};

const TimerRoute* FindRoute(UINT_PTR id) noexcept {
    const auto* const route = std::find_if(std::begin(kTimerRoutes), std::end(kTimerRoutes),
                                           [=](const TimerRoute& r) { return r.id == id; });
    return route != std::end(kTimerRoutes) ? route : nullptr;
}

/// Takes note of a WM_TIMER that has come. @return whether the timer as it runs now has ticked: a
/// message that was posted back may be older than its last stop or start
bool TakeTick(const MapState& map, MapWindow& entry, const TimerRoute& route) noexcept {
    const WindowTimer& timer = route.timer(map, entry);
    const std::uint32_t postedFor = std::exchange(entry.postedBack[route.id], 0);
    return timer.RunsFor(entry.window) && (postedFor == 0 || postedFor == timer.Starts());
}

/// Null for a timer that the host has set for the window or for a child that it has put there.
const TimerRoute* RouteOf(const MSG& message, const MapWindow& entry) noexcept {
    return message.hwnd == entry.window ? FindRoute(message.wParam) : nullptr;
}

/// Takes the next due timer out of the queue, also one that was posted back before. Messages that
/// other threads send stay where they are: nothing is to be handled during a paint.
bool TakeDueTimer(HWND window, MSG& message) noexcept {
    if (!PeekMessageW(&message, window, WM_TIMER, WM_TIMER, PM_REMOVE | PM_QS_POSTMESSAGE))
        return false;
    if (message.message != WM_QUIT) return true;
    // It passes every filter, and is for the host's loop.
    PostQuitMessage(static_cast<int>(message.wParam));
    return false;
}

/// One that cannot be posted, because the queue is full, comes when it is due again.
void PostBack(const MapState& map, MapWindow& entry, const MSG& message) noexcept {
    if (!PostMessageW(message.hwnd, WM_TIMER, message.wParam, message.lParam)) return;
    if (const TimerRoute* const route = RouteOf(message, entry))
        entry.postedBack[route->id] = route->timer(map, entry).Starts();
}

}  // namespace

void PostDueTimers(MapState& map, HWND window) noexcept {
    MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    std::array<MSG, kMaxTaken> due;
    auto* end = due.data();
    MSG message = {};
    for (std::size_t taken = 0; taken < due.size() && TakeDueTimer(window, message); ++taken) {
        const TimerRoute* const route = RouteOf(message, *entry);
        if (route != nullptr && !TakeTick(map, *entry, *route)) continue;
        // Twice due before it is heard is once, as with Windows.
        const bool isNew = std::none_of(due.data(), end, [&](const MSG& other) {
            return other.hwnd == message.hwnd && other.wParam == message.wParam;
        });
        if (isNew) *end++ = message;
    }
    std::for_each(due.data(), end, [&](const MSG& each) { PostBack(map, *entry, each); });
}

LRESULT OnTimer(HWND window, WPARAM wParam, LPARAM) {
    MapState& map = Map();
    MapWindow* entry = map.windows.Find(window);
    const TimerRoute* const route = FindRoute(wParam);
    if (entry != nullptr && route != nullptr && TakeTick(map, *entry, *route))
        route->handle(map, window);
    return 0;
}
