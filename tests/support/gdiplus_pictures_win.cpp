#include "support/gdiplus_pictures_win.h"

#include "image/gdiplus_win.h"

namespace {

constexpr CLSID kJpegEncoder = {
    0x557CF401, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};

/// GDI+ for as long as a test program runs a picture function.
struct GdiplusScope {
    GdiplusScope() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token, &input, nullptr);
    }
    GdiplusScope(const GdiplusScope&) = delete;
    ~GdiplusScope() { Gdiplus::GdiplusShutdown(token); }

    ULONG_PTR token = 0;
};

void SavePattern(const std::filesystem::path& path, int width, int height, int format,
                 const CLSID& encoder, ULONG quality) {
    const GdiplusScope gdiplus;
    Gdiplus::Bitmap bitmap(width, height, format);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bitmap.SetPixel(
                x, y, {static_cast<BYTE>(y * 255 / height), static_cast<BYTE>(x * 255 / width), 0});
        }
    }
    const Gdiplus::EncoderParameters parameters = {
        1, {{Gdiplus::EncoderQuality, 1, Gdiplus::EncoderParameterValueTypeLong, &quality}}};
    bitmap.Save(path.c_str(), &encoder, &parameters);
}

}  // namespace

void SavePatternJpeg(const std::filesystem::path& path, int width, int height, int quality) {
    SavePattern(path, width, height, PixelFormat24bppRGB, kJpegEncoder,
                static_cast<ULONG>(quality));
}

void SavePatternPng(const std::filesystem::path& path, int width, int height, int format) {
    SavePattern(path, width, height, format, kPngEncoder, 100);
}

RgbPicture DecodePicture(const std::filesystem::path& path) {
    const GdiplusScope gdiplus;
    Gdiplus::Bitmap bitmap(path.c_str(), FALSE);
    RgbPicture picture{
        static_cast<int>(bitmap.GetWidth()), static_cast<int>(bitmap.GetHeight()), {}};
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            Gdiplus::Color pixel;
            bitmap.GetPixel(x, y, &pixel);
            for (const BYTE value : {pixel.GetR(), pixel.GetG(), pixel.GetB()})
                picture.pixels.push_back(value);
        }
    }
    return picture;
}
