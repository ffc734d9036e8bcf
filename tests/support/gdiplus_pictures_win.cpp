#include "support/gdiplus_pictures_win.h"

#include "image/gdiplus_win.h"

namespace {

constexpr CLSID kJpegEncoder = {
    0x557CF401, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};

/// GDI+ for as long as a test program runs a picture function.
class GdiplusScope {
public:
    GdiplusScope() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    GdiplusScope(const GdiplusScope&) = delete;
    GdiplusScope& operator=(const GdiplusScope&) = delete;
    ~GdiplusScope() { Gdiplus::GdiplusShutdown(token_); }

private:
    ULONG_PTR token_ = 0;
};

}  // namespace

void SavePatternJpeg(const std::filesystem::path& path, int width, int height, int quality) {
    const GdiplusScope gdiplus;
    const int stride = (width * 3 + 3) / 4 * 4;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(stride) *
                                    static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = bytes.data() + static_cast<std::ptrdiff_t>(y) * stride;
        for (int x = 0; x < width; ++x) {
            row[3 * x] = static_cast<std::uint8_t>((x * 5 + y * 3) / 8);
            row[3 * x + 1] = static_cast<std::uint8_t>(x * 255 / width);
            row[3 * x + 2] = static_cast<std::uint8_t>(y * 255 / height);
        }
    }
    Gdiplus::Bitmap bitmap(width, height, stride, PixelFormat24bppRGB, bytes.data());
    auto value = static_cast<ULONG>(quality);
    const Gdiplus::EncoderParameters parameters = {
        1, {{Gdiplus::EncoderQuality, 1, Gdiplus::EncoderParameterValueTypeLong, &value}}};
    bitmap.Save(path.c_str(), &kJpegEncoder, &parameters);
}

void SaveMarkedPng(const std::filesystem::path& path, int width, int height, int format) {
    const GdiplusScope gdiplus;
    Gdiplus::Bitmap bitmap(width, height, format);
    bitmap.SetPixel(0, 0, Gdiplus::Color(255, 10, 20, 30));
    bitmap.Save(path.c_str(), &kPngEncoder, nullptr);
}

RgbPicture DecodePicture(const std::filesystem::path& path) {
    const GdiplusScope gdiplus;
    Gdiplus::Bitmap bitmap(path.c_str(), FALSE);
    RgbPicture picture{
        static_cast<int>(bitmap.GetWidth()), static_cast<int>(bitmap.GetHeight()), {}};
    Gdiplus::BitmapData data;
    const Gdiplus::Rect whole(0, 0, picture.width, picture.height);
    if (bitmap.LockBits(&whole, Gdiplus::ImageLockModeRead, PixelFormat24bppRGB, &data) !=
        Gdiplus::Ok) {
        return {};
    }
    for (int y = 0; y < picture.height; ++y) {
        const auto* row = static_cast<const std::uint8_t*>(data.Scan0) +
                          static_cast<std::ptrdiff_t>(y) * data.Stride;
        for (int x = 0; x < picture.width; ++x)
            picture.pixels.insert(picture.pixels.end(),
                                  {row[3 * x + 2], row[3 * x + 1], row[3 * x]});
    }
    bitmap.UnlockBits(&data);
    return picture;
}
