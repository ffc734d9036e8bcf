#include "image/picture_win.h"

#include <cstdlib>
#include <cwchar>
#include <new>
#include <utility>

namespace {

using Gdiplus::Bitmap;
using Gdiplus::Graphics;
using Gdiplus::PixelFormat;
using Gdiplus::Status;

static_assert(kPixelFormat24bppRgb == PixelFormat24bppRGB);
static_assert(kPixelFormat32bppArgb == PixelFormat32bppARGB);

/// Creates a bitmap in memory that GDI+ allocates; null when memory runs out. Does not use the
/// operator new of GDI+: when that operator returns null, the constructor still runs.
template <class... Arguments>
std::unique_ptr<Bitmap> MakeBitmap(Arguments... arguments) noexcept {
    void* const memory = Gdiplus::DllExports::GdipAlloc(sizeof(Bitmap));
    if (memory == nullptr) return nullptr;
    return std::unique_ptr<Bitmap>(::new (memory) Bitmap(arguments...));
}

bool Draw(Bitmap& source, Bitmap& target, INT width, INT height) {
    Graphics surface(&target);
    surface.SetCompositingMode(Gdiplus::CompositingModeSourceCopy);
    surface.SetInterpolationMode(Gdiplus::InterpolationModeLowQuality);
    surface.SetSmoothingMode(Gdiplus::SmoothingModeNone);
    surface.SetPixelOffsetMode(Gdiplus::PixelOffsetModeNone);
    return surface.DrawImage(&source, 0, 0, width, height) == Gdiplus::Ok;
}

/// The quality parameter of the JPEG encoder.
class QualityParameter {
public:
    explicit QualityParameter(int quality) noexcept
        : quality_(static_cast<ULONG>(quality >= 1 ? quality : kDefaultQuality)) {
        parameters_.Count = 1;
        parameters_.Parameter[0].Guid = kEncoderQuality;
        parameters_.Parameter[0].NumberOfValues = 1;
        parameters_.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
        parameters_.Parameter[0].Value = &quality_;
    }
    QualityParameter(const QualityParameter&) = delete;
    QualityParameter& operator=(const QualityParameter&) = delete;
    const Gdiplus::EncoderParameters* Get() const noexcept { return &parameters_; }

private:
    static constexpr int kDefaultQuality = 75;
    /// The identifier that GDI+ calls EncoderQuality.
    static constexpr GUID kEncoderQuality = {
        0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
    ULONG quality_;
    Gdiplus::EncoderParameters parameters_ = {};
};

}  // namespace

GdiplusPicture::GdiplusPicture(std::unique_ptr<Bitmap> bitmap) noexcept
    : bitmap_(std::move(bitmap)), ok_(bitmap_ != nullptr) {
    NoteStatus();
}

GdiplusPicture::~GdiplusPicture() { Unlock(); }

void GdiplusPicture::NoteStatus() const noexcept {
    // GetLastStatus of GDI+ resets the status, so a failure is kept in `ok_`.
    if (bitmap_ != nullptr && bitmap_->GetLastStatus() != Gdiplus::Ok) ok_ = false;
}

std::int32_t GdiplusPicture::GetWidth() const noexcept {
    if (bitmap_ == nullptr) return 0;
    const UINT width = bitmap_->GetWidth();
    NoteStatus();
    return static_cast<std::int32_t>(width);
}

std::int32_t GdiplusPicture::GetHeight() const noexcept {
    if (bitmap_ == nullptr) return 0;
    const UINT height = bitmap_->GetHeight();
    NoteStatus();
    return static_cast<std::int32_t>(height);
}

std::int32_t GdiplusPicture::GetPixelFormat() const noexcept {
    if (bitmap_ == nullptr) return 0;
    const PixelFormat format = bitmap_->GetPixelFormat();
    NoteStatus();
    return format;
}

PixelRows GdiplusPicture::LockForReading() {
    if (bitmap_ == nullptr || isLocked_) return {};
    const Gdiplus::Rect whole(0, 0, GetWidth(), GetHeight());
    const Status status =
        bitmap_->LockBits(&whole, Gdiplus::ImageLockModeRead, GetPixelFormat(), &locked_);
    NoteStatus();
    isLocked_ = status == Gdiplus::Ok;
    if (!isLocked_) return {};
    return {static_cast<const std::uint8_t*>(locked_.Scan0), locked_.Stride};
}

void GdiplusPicture::Unlock() noexcept {
    if (!std::exchange(isLocked_, false)) return;
    bitmap_->UnlockBits(&locked_);
    NoteStatus();
}

bool GdiplusPicture::GetPixel(std::int32_t x, std::int32_t y,
                              std::uint32_t& colour) const noexcept {
    if (bitmap_ == nullptr) return false;
    Gdiplus::Color value;
    const bool read = bitmap_->GetPixel(x, y, &value) == Gdiplus::Ok;
    NoteStatus();
    if (read) colour = value.GetValue();
    return read;
}

bool GdiplusPicture::SetPixel(std::int32_t x, std::int32_t y, std::uint32_t colour) noexcept {
    if (bitmap_ == nullptr) return false;
    const bool written = bitmap_->SetPixel(x, y, Gdiplus::Color(colour)) == Gdiplus::Ok;
    NoteStatus();
    return written;
}

std::unique_ptr<Bitmap> GdiplusPicture::Release() noexcept {
    Unlock();
    ok_ = false;
    return std::move(bitmap_);
}

std::unique_ptr<Gdiplus::Image> CloneImage(Gdiplus::Image& image) {
    return std::unique_ptr<Gdiplus::Image>(image.Clone());
}

std::unique_ptr<Bitmap> ConvertPixelFormat(std::unique_ptr<Bitmap> bitmap, PixelFormat format,
                                           bool destroySourceOnFailure) {
    if (bitmap == nullptr || bitmap->GetPixelFormat() == format) return bitmap;
    const auto width = static_cast<INT>(bitmap->GetWidth());
    const auto height = static_cast<INT>(bitmap->GetHeight());
    std::unique_ptr<Bitmap> redrawn = MakeBitmap(width, height, format);
    if (redrawn != nullptr && Draw(*bitmap, *redrawn, width, height)) return redrawn;
    if (destroySourceOnFailure) return nullptr;
    return bitmap;
}

int GetEncoderClsid(const wchar_t* mimeType, CLSID& clsid) noexcept {
    UINT count = 0;
    UINT bytes = 0;
    if (Gdiplus::GetImageEncodersSize(&count, &bytes) != Gdiplus::Ok || bytes == 0) return -1;
    // One block for the records and, behind the records, the texts that the records point to.
    const std::unique_ptr<std::byte[]> block(new (std::nothrow) std::byte[bytes]);
    if (block == nullptr) return -1;
    auto* const codecs = reinterpret_cast<Gdiplus::ImageCodecInfo*>(block.get());
    if (Gdiplus::GetImageEncoders(count, bytes, codecs) != Gdiplus::Ok) return -1;
    for (UINT i = 0; i < count; ++i) {
        if (std::wcscmp(codecs[i].MimeType, mimeType) != 0) continue;
        clsid = codecs[i].Clsid;
        return static_cast<int>(i);
    }
    return -1;
}

std::unique_ptr<Picture> OpenPicture(const std::wstring& path) {
    return std::make_unique<GdiplusPicture>(MakeBitmap(path.c_str(), FALSE));
}

std::unique_ptr<Picture> ConvertPicture(std::unique_ptr<Picture> picture, std::int32_t format) {
    if (picture == nullptr || picture->GetPixelFormat() == format) return picture;
    auto* const source = dynamic_cast<GdiplusPicture*>(picture.get());
    if (source == nullptr) return nullptr;
    auto redrawn = ConvertPixelFormat(source->Release(), format, true);
    if (redrawn == nullptr) return nullptr;
    return std::make_unique<GdiplusPicture>(std::move(redrawn));
}

bool EncodeJpeg(const PixelBlock& block, const std::wstring& path, int quality) {
    const PixelFormat format =
        block.bytesPerPixel == kRgbaBytes ? PixelFormat32bppARGB : PixelFormat24bppRGB;
    const std::unique_ptr<Bitmap> bitmap =
        MakeBitmap(block.width, block.height, block.stride, format, block.firstRow);
    if (bitmap == nullptr || bitmap->GetLastStatus() != Gdiplus::Ok) return false;
    CLSID encoder = {};
    if (GetEncoderClsid(L"image/jpeg", encoder) < 0) return false;
    const QualityParameter parameter(quality);
    return bitmap->Save(path.c_str(), &encoder, parameter.Get()) == Gdiplus::Ok;
}
