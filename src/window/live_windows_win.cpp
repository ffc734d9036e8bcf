#include "window/live_windows_win.h"

#include <algorithm>

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
