#pragma once
// Pictures of a window: taken from its DC, kept as PNG files.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host_windows.h"

/// Rows from the top, no padding; each pixel 0x00RRGGBB.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    bool operator==(const Picture&) const = default;
};

/// Takes what the client area of `window` shows now; empty when that fails.
Picture TakePicture(HWND window);

/// Writes a PNG file. GDI+ must be running. @return false when it could not be written
bool SavePng(const Picture& picture, const std::wstring& path);
