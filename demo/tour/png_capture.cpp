#include "tour/png_capture.h"

// GDI+ wants min and max, which NOMINMAX takes away.
#include <algorithm>
using std::max;
using std::min;
#include <objidl.h>

#include <gdiplus.h>

namespace {

// The PNG encoder that comes with every GDI+.
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr std::uint32_t kColourBits = 0x00FFFFFF;

/// A bitmap whose rows run from the top, selected into a DC of its own.
class PixelBoard {
public:
    PixelBoard(HDC like, int width, int height) : dc_(CreateCompatibleDC(like)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &pixels_, nullptr, 0);
        before_ = SelectObject(dc_, bitmap_);
    }
    PixelBoard(const PixelBoard&) = delete;
    PixelBoard& operator=(const PixelBoard&) = delete;
    ~PixelBoard() {
        SelectObject(dc_, before_);
        DeleteObject(bitmap_);
        DeleteDC(dc_);
    }
    HDC Dc() const { return dc_; }
    /// Null when Windows could not make the bitmap.
    const std::uint32_t* Pixels() const { return static_cast<const std::uint32_t*>(pixels_); }

private:
    HDC dc_;
    void* pixels_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

/// A part of what `dc` shows.
Picture CopyPixels(HDC dc, int x, int y, int width, int height) {
    Picture picture{width, height, {}};
    const PixelBoard board(dc, width, height);
    if (board.Pixels() == nullptr || !BitBlt(board.Dc(), 0, 0, width, height, dc, x, y, SRCCOPY)) {
        return {};
    }
    GdiFlush();
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    picture.pixels.assign(board.Pixels(), board.Pixels() + count);
    for (std::uint32_t& pixel : picture.pixels) pixel &= kColourBits;
    return picture;
}

}  // namespace

Picture TakePicture(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    if (area.right < 1 || area.bottom < 1) return {};
    const HDC dc = GetDC(window);
    Picture picture = CopyPixels(dc, 0, 0, area.right, area.bottom);
    ReleaseDC(window, dc);
    return picture;
}

Picture TakeScreenPicture(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    if (area.right <= area.left || area.bottom <= area.top) return {};
    const HDC screen = GetDC(nullptr);
    Picture picture =
        CopyPixels(screen, area.left, area.top, area.right - area.left, area.bottom - area.top);
    ReleaseDC(nullptr, screen);
    return picture;
}

GdiplusSession::GdiplusSession() {
    const Gdiplus::GdiplusStartupInput input;
    started_ = Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
}

GdiplusSession::~GdiplusSession() {
    if (started_) Gdiplus::GdiplusShutdown(token_);
}

bool SavePng(const Picture& picture, const std::wstring& path) {
    if (picture.pixels.empty()) return false;
    std::vector<std::uint32_t> pixels = picture.pixels;
    Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppRGB,
                           reinterpret_cast<BYTE*>(pixels.data()));
    return bitmap.Save(path.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
}
