#include "window/map_window_win.h"

#include <algorithm>

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

MapWindow& LiveWindows::Add(HWND window) {
    return *windows_.emplace_back(std::make_unique<MapWindow>(window));
}

void LiveWindows::Remove(HWND window) noexcept {
    std::erase_if(windows_, [=](const auto& entry) { return entry->window == window; });
}

MapWindow* LiveWindows::Find(HWND window) noexcept {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [=](const auto& entry) { return entry->window == window; });
    return found != windows_.end() ? found->get() : nullptr;
}

MapWindow* LiveWindows::Current() noexcept {
    return windows_.empty() ? nullptr : windows_.back().get();
}

void LiveWindows::InvalidateAll() const noexcept {
    for (const auto& entry : windows_) InvalidateRect(entry->window, nullptr, FALSE);
}
