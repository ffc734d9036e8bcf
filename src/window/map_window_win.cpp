#include "window/map_window_win.h"

bool ClientSize(HWND window, std::int32_t& width, std::int32_t& height) noexcept {
    RECT client = {};
    if (!GetClientRect(window, &client) || client.right < 1 || client.bottom < 1) return false;
    width = client.right;
    height = client.bottom;
    return true;
}

void MapWindow::UseFont(UniqueFont font) {
    font_ = std::move(font);
    if (font_) selectedFont_ = std::make_unique<SelectedObject>(dc.Get(), font_.get());
}

bool MapWindow::NoteShownSize(std::int32_t width, std::int32_t height) noexcept {
    const bool first = shownWidth_ == 0;
    const bool same = shownWidth_ == width && shownHeight_ == height;
    shownWidth_ = width;
    shownHeight_ = height;
    return !first && !same;
}
