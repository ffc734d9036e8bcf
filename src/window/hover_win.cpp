#include "window/hover_win.h"

#include "window/city_pick.h"
#include "window/host_notice_win.h"
#include "window/timers_win.h"

namespace {

constexpr UINT kHoverMs = 500;  // ms that the pointer must rest

bool CursorIsAt(HWND window, std::int32_t x, std::int32_t y) noexcept {
    POINT cursor = {};
    RECT client = {};
    if (!GetCursorPos(&cursor) || !GetClientRect(window, &client)) return false;
    MapWindowPoints(nullptr, window, &cursor, 1);
    return cursor.x == x && client.bottom - 1 - cursor.y == y;
}

}  // namespace

void StartHover(MapState& map, HWND window, std::int32_t signedIndex, std::int32_t x,
                std::int32_t y) noexcept {
    CancelHover(map);
    if (!IsSignedIndexIn(signedIndex, map.host.cities.count)) return;
    map.hover = {window, signedIndex, x, y, SetTimer(window, kHoverTimer, kHoverMs, nullptr)};
}

void CancelHover(MapState& map) noexcept {
    if (map.hover.timer != 0) KillTimer(map.hover.window, map.hover.timer);
    map.hover = {};
}

void OnHoverTimer(MapState& map, HWND window) {
    if (map.hover.timer == 0 || map.hover.window != window) return;
    const HoverState hover = map.hover;
    CancelHover(map);
    if (!CursorIsAt(window, hover.x, hover.y)) return;
    OfferPhotos(map, window, hover.signedIndex,
                hover.signedIndex >= 0 ? PhotosOf::City : PhotosOf::Country);
    if (map.windows.IsLive(window)) InvalidateRect(window, nullptr, FALSE);
}
