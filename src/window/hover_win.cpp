#include "window/hover_win.h"

#include "cities/city_pick.h"
#include "window/host_notice_win.h"

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
    map.hover.signedIndex = signedIndex;
    map.hover.x = x;
    map.hover.y = y;
    map.hover.timer.Start(window, kHoverTimer, kHoverMs);
}

void CancelHover(MapState& map) noexcept { map.hover.timer.Stop(); }

void OnHoverTimer(MapState& map, HWND window) {
    CancelHover(map);
    if (!CursorIsAt(window, map.hover.x, map.hover.y)) return;
    const std::int32_t signedIndex = map.hover.signedIndex;
    OfferPhotos(map, window, signedIndex, signedIndex >= 0 ? PhotosOf::City : PhotosOf::Country);
    if (map.windows.IsLive(window)) InvalidateRect(window, nullptr, FALSE);
}
