#pragma once
// Pictures implemented with GDI+: files, pixel formats, encoders. This unit also implements the
// functions of picture.h.
//
// A GdiplusSession must exist while this unit is used. Without a session, every function fails as
// for a file that cannot be read.

#include <cstdint>
#include <memory>

#include "image/gdiplus_win.h"
#include "image/picture.h"

/// Exchanges red and blue of a colour: 0xAARRGGBB becomes 0xAABBGGRR, and the other way round.
constexpr std::uint32_t ExchangeRedBlue(std::uint32_t colour) noexcept {
    return (colour & 0xFF00FF00U) | ((colour & 0xFFU) << 16U) | ((colour >> 16U) & 0xFFU);
}

/// A picture that owns a GDI+ bitmap. When the bitmap was opened from a file, GDI+ keeps the file
/// open for reading as long as the picture lives.
class GdiplusPicture final : public Picture {
public:
    /// @param bitmap  may be null or in a failed state: IsOk is false then
    explicit GdiplusPicture(std::unique_ptr<Gdiplus::Bitmap> bitmap) noexcept;
    GdiplusPicture(const GdiplusPicture&) = delete;
    GdiplusPicture& operator=(const GdiplusPicture&) = delete;
    ~GdiplusPicture() override;

    bool IsOk() const noexcept override { return ok_; }
    std::int32_t GetWidth() const noexcept override;
    std::int32_t GetHeight() const noexcept override;
    std::int32_t GetPixelFormat() const noexcept override;
    PixelRows LockForReading() override;
    void Unlock() noexcept override;

    /// Reads pixel (x, y), counted from the upper left, as 0xAARRGGBB; false when it lies outside.
    bool GetPixel(std::int32_t x, std::int32_t y, std::uint32_t& colour) const noexcept;
    /// Sets pixel (x, y) to 0xAARRGGBB; false when it lies outside.
    bool SetPixel(std::int32_t x, std::int32_t y, std::uint32_t colour) noexcept;

    /// Gives the bitmap to the caller; IsOk is false afterwards.
    std::unique_ptr<Gdiplus::Bitmap> Release() noexcept;

private:
    /// Sets `ok_` to false when the last GDI+ call has failed.
    void NoteStatus() const noexcept;

    std::unique_ptr<Gdiplus::Bitmap> bitmap_;
    Gdiplus::BitmapData locked_ = {};
    bool isLocked_ = false;
    mutable bool ok_ = false;  ///< mutable, because reading a size may fail, too
};

/// Makes an independent copy of an image; null when GDI+ reports an error.
std::unique_ptr<Gdiplus::Image> CloneImage(Gdiplus::Image& image);

/// Redraws a bitmap in another pixel format.
/// @param bitmap  when this bitmap has the format already, the function returns it; null gives null
/// @param destroySourceOnFailure  true: a failure destroys `bitmap` and gives null; false: a
///                                failure gives `bitmap`
std::unique_ptr<Gdiplus::Bitmap> ConvertPixelFormat(std::unique_ptr<Gdiplus::Bitmap> bitmap,
                                                    Gdiplus::PixelFormat format,
                                                    bool destroySourceOnFailure);

/// Finds an installed encoder.
/// @param mimeType  such as L"image/jpeg", compared exactly
/// @param clsid  out: the encoder; unchanged when there is none
/// @return its index in the list of encoders, or -1
int GetEncoderClsid(const wchar_t* mimeType, CLSID& clsid) noexcept;
