#include "tour/picture.h"

#include <stdexcept>

// GDI+ uses min and max without a namespace, and NOMINMAX removes the macros.
#include <algorithm>
using std::max;
using std::min;
#include <objidl.h>

#include <gdiplus.h>

namespace {

// The PNG encoder of GDI+.
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr std::uint32_t kColourBits = 0x00FFFFFF;

/// A bitmap over the pixels of `picture`.
Gdiplus::Bitmap BitmapOf(Picture& picture) {
    return {picture.width, picture.height, picture.width * 4, PixelFormat32bppRGB,
            reinterpret_cast<BYTE*>(picture.pixels.data())};
}

/// Takes a picture of `area` in the device context of `window` (null: of the screen).
Picture Capture(HWND window, const RECT& area) {
    Picture picture{area.right - area.left, area.bottom - area.top, {}};
    if (picture.width < 1 || picture.height < 1) throw std::runtime_error("the window has no area");
    picture.pixels.resize(static_cast<std::size_t>(picture.width) *
                          static_cast<std::size_t>(picture.height));
    {
        Gdiplus::Bitmap bitmap = BitmapOf(picture);
        Gdiplus::Graphics graphics(&bitmap);
        const HDC source = GetDC(window);
        const HDC target = graphics.GetHDC();
        const BOOL copied = BitBlt(target, 0, 0, picture.width, picture.height, source, area.left,
                                   area.top, SRCCOPY);
        graphics.ReleaseHDC(target);
        ReleaseDC(window, source);
        if (!copied) throw std::runtime_error("the window cannot be copied");
    }
    for (std::uint32_t& pixel : picture.pixels) pixel &= kColourBits;
    return picture;
}

}  // namespace

GdiplusSession::GdiplusSession() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token_, &input, nullptr);
}

GdiplusSession::~GdiplusSession() { Gdiplus::GdiplusShutdown(token_); }

Picture CaptureClient(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    return Capture(window, area);
}

Picture CaptureScreen(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return Capture(nullptr, area);
}

void SavePng(Picture& picture, const std::wstring& path) {
    if (BitmapOf(picture).Save(path.c_str(), &kPngEncoder, nullptr) != Gdiplus::Ok) {
        throw std::runtime_error("the picture could not be written");
    }
}
