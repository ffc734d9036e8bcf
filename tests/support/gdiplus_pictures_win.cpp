#include "support/gdiplus_pictures_win.h"

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

}  // namespace

void SavePattern(const std::filesystem::path& path, int width, int height, int format,
                 ULONG quality) {
    const GdiplusScope gdiplus;
    Gdiplus::Bitmap bitmap(width, height, format);
    for (int i = 0; i < width * height; ++i) {
        const int red = i / width * 255 / height;
        const int green = i % width * 255 / width;
        const Gdiplus::Color colour(static_cast<BYTE>(red), static_cast<BYTE>(green), 0);
        bitmap.SetPixel(i % width, i / width, colour);
    }
    const Gdiplus::EncoderParameters parameters = {
        1, {{Gdiplus::EncoderQuality, 1, Gdiplus::EncoderParameterValueTypeLong, &quality}}};
    const bool isPng = path.extension() == ".png";
    bitmap.Save(path.c_str(), isPng ? &kPngEncoder : &kJpegEncoder, &parameters);
}

RgbPicture DecodePicture(const std::filesystem::path& path) {
    const GdiplusScope gdiplus;
    Gdiplus::Bitmap bitmap(path.c_str(), FALSE);
    RgbPicture picture{
        static_cast<int>(bitmap.GetWidth()), static_cast<int>(bitmap.GetHeight()), {}};
    for (int i = 0; i < picture.width * picture.height; ++i) {
        Gdiplus::Color pixel;
        bitmap.GetPixel(i % picture.width, i / picture.width, &pixel);
        picture.pixels.insert(picture.pixels.end(), {pixel.GetR(), pixel.GetG(), pixel.GetB()});
    }
    return picture;
}
