#include "window/timers_win.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "window/drag_win.h"
#include "window/sun_timer_win.h"
#include "window/view_change_win.h"

namespace {

/// Maximum number of timer messages that one paint removes from the queue. It is enough for the
/// timers of the map and some timers of a host.
constexpr std::size_t kMaxTaken = 16;

// The handlers of the timers. The table below lists them. Each handler uses different parts of
// MapState.

void OnRepeatTimer(MapState& map, HWND window) { map.repeat.Repeat(map.pointer, window); }

/// Ends a flight: picks the place at the centre of the window, as if the pointer were there, and
/// gives a drag under way a new anchor.
void LandAtCentre(PointerState& pointer, const ViewState& view, GlResources& gl,
                  HWND window) noexcept {
    if (!gl.CanPickIn(window)) return;
    pointer.PickAt(gl.Scene(), *gl.Planet(), {gl.Scene().width / 2, gl.Scene().height / 2});
    ReanchorDrag(pointer, view, gl, window);
}

void OnFlightTimer(MapState& map, HWND window) {
    const bool goesOn = map.flight.Step();
    map.view.TurnTo(map.flight.Current());
    ApplyViewChange(map, window, {});
    if (!goesOn) LandAtCentre(map.pointer, map.view, map.gl, window);
    InvalidateRect(window, nullptr, FALSE);
}

void OnHoverTimer(MapState& map, HWND window) {
    const std::optional<std::int32_t> signedIndex = map.hover.End(window);
    if (!signedIndex) return;
    map.overlay.OfferPhotos(window, *signedIndex,
                            *signedIndex >= 0 ? PhotosOf::City : PhotosOf::Country);
    if (map.windows.IsLive(window)) InvalidateRect(window, nullptr, FALSE);
}

struct TimerRoute {
    UINT_PTR id;
    void (*handle)(MapState& map, HWND window);
};
constexpr TimerRoute kTimerRoutes[kMapTimers] = {
    {kRepeatTimer, OnRepeatTimer},
    {kFlightTimer, OnFlightTimer},
    {kHoverTimer, OnHoverTimer},
    {kSunTimer, OnSunTimer},
};

const TimerRoute* FindRoute(UINT_PTR id) noexcept {
    const auto* const route = std::find_if(std::begin(kTimerRoutes), std::end(kTimerRoutes),
                                           [=](const TimerRoute& r) { return r.id == id; });
    return route != std::end(kTimerRoutes) ? route : nullptr;
}

/// Returns the timer with the id `id`, one of the map's timers. Needs MapState because each timer
/// is in a different part of MapState.
const WindowTimer& TimerOf(const MapState& map, const MapWindow& entry, UINT_PTR id) noexcept {
    switch (id) {
        case kRepeatTimer:
            return map.repeat.Timer();
        case kFlightTimer:
            return map.flight.Timer();
        case kHoverTimer:
            return map.hover.Timer();
        default:
            return entry.sunTimer;
    }
}

/// Removes the note that a WM_TIMER was posted back, if there is such a note.
/// @return whether the message belongs to the current run of the timer. A message that was posted
/// back may be older than the last stop or start of the timer.
bool TakeTick(MapWindow& entry, const WindowTimer& timer, UINT_PTR id) noexcept {
    const std::uint32_t postedFor = entry.TakePostedBack(id);
    return timer.RunsFor(entry.window) && (postedFor == 0 || postedFor == timer.Starts());
}

/// Removes the next timer message from the queue, also a message that was posted back before. Does
/// not handle messages that other threads have sent, because no message may be handled during a
/// paint.
bool TakeDueTimer(HWND window, MSG& message) noexcept {
    if (!PeekMessageW(&message, window, WM_TIMER, WM_TIMER, PM_REMOVE | PM_QS_POSTMESSAGE))
        return false;
    if (message.message != WM_QUIT) return true;
    // Post WM_QUIT again, because the host's loop needs it: PeekMessageW returns it in spite of the
    // filter.
    PostQuitMessage(static_cast<int>(message.wParam));
    return false;
}

/// A timer message that was removed from the queue.
struct DueTimer {
    MSG message;
    /// The timer of the map. Null when the host has set the timer, for the map window or for a
    /// child window in it.
    const WindowTimer* timer;

    bool IsSameAs(const DueTimer& other) const noexcept {
        return message.hwnd == other.message.hwnd && message.wParam == other.message.wParam;
    }
};

/// Posts a timer message back to the queue. When the queue is full, this message is lost; Windows
/// sends another one when the timer is due again.
void PostBack(MapWindow& entry, const DueTimer& due) noexcept {
    const MSG& message = due.message;
    if (!PostMessageW(message.hwnd, WM_TIMER, message.wParam, message.lParam)) return;
    if (due.timer != nullptr) entry.NotePostedBack(message.wParam, due.timer->Starts());
}

}  // namespace

void PostDueTimers(MapState& map, HWND window) noexcept {
    MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    std::array<DueTimer, kMaxTaken> taken;
    auto* end = taken.data();
    DueTimer due = {};
    for (std::size_t i = 0; i < taken.size() && TakeDueTimer(window, due.message); ++i) {
        const UINT_PTR id = due.message.wParam;
        const bool ours = due.message.hwnd == window && FindRoute(id) != nullptr;
        due.timer = ours ? &TimerOf(map, *entry, id) : nullptr;
        if (ours && !TakeTick(*entry, *due.timer, id)) continue;
        // Keep only one message of each timer, as Windows does.
        const bool isNew = std::none_of(taken.data(), end,
                                        [&](const DueTimer& other) { return due.IsSameAs(other); });
        if (isNew) *end++ = due;
    }
    std::for_each(taken.data(), end, [&](const DueTimer& each) { PostBack(*entry, each); });
}

LRESULT OnTimer(HWND window, WPARAM wParam, LPARAM) {
    MapState& map = Map();
    MapWindow* entry = map.windows.Find(window);
    const TimerRoute* const route = FindRoute(wParam);
    if (entry != nullptr && route != nullptr &&
        TakeTick(*entry, TimerOf(map, *entry, route->id), route->id)) {
        route->handle(map, window);
    }
    return 0;
}
