#include "window/hover_win.h"

namespace {

constexpr UINT kHoverMs = 500;  // ms that the pointer must rest before photos are offered

bool CursorIsAt(HWND window, const WindowPoint& point) noexcept {
    POINT cursor = {};
    RECT client = {};
    if (!GetCursorPos(&cursor) || !GetClientRect(window, &client)) return false;
    MapWindowPoints(nullptr, window, &cursor, 1);
    return point == WindowPoint{cursor.x, client.bottom - 1 - cursor.y};
}

}  // namespace

void Hover::Start(HWND window, std::int32_t signedIndex, const WindowPoint& point) noexcept {
    signedIndex_ = signedIndex;
    point_ = point;
    timer_.Start(window, kHoverTimer, kHoverMs);
}

void Hover::CancelFor(HWND window) noexcept {
    if (timer_.RunsFor(window)) Cancel();
}

void Hover::CancelForCity(std::int32_t signedIndex) noexcept {
    if (timer_.Runs() && signedIndex_ == signedIndex) Cancel();
}

std::optional<std::int32_t> Hover::End(HWND window) noexcept {
    Cancel();
    if (!CursorIsAt(window, point_)) return std::nullopt;
    return signedIndex_;
}
