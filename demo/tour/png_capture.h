#pragma once
// Pictures of a window: taken from its DC, kept as PNG files.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "window/host_windows.h"

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

/// Takes the part of the screen that `window` covers with its frame, with all that lies over it:
/// menus, dialogs. Empty when that fails.
Picture TakeScreenPicture(HWND window);

/// GDI+ for as long as a tour lasts.
class GdiplusSession {
public:
    GdiplusSession();
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
    ~GdiplusSession();

private:
    ULONG_PTR token_ = 0;
    bool started_ = false;
};

/// Writes a PNG file. GDI+ must be running. @return false when it could not be written
bool SavePng(const Picture& picture, const std::wstring& path);
