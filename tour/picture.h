#pragma once
// Pictures of windows: taken from the screen, stored as PNG files.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "windows_api.h"

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

/// Runs GDI+, which the functions below need.
class GdiplusSession {
public:
    GdiplusSession();
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
    ~GdiplusSession();

private:
    ULONG_PTR token_ = 0;
};

/// Takes a picture of the client area of `window`. Throws std::runtime_error when that fails.
Picture CaptureClient(HWND window);

/// Takes a picture of the screen where `window` is, with its frame and all that is in front of it
/// (menus, dialogs). Throws std::runtime_error when that fails.
Picture CaptureScreen(HWND window);

/// Writes a PNG file. Throws std::runtime_error when that fails. Does not change `picture`; it is
/// not const because GDI+ requires writable pixels.
void SavePng(Picture& picture, const std::wstring& path);
