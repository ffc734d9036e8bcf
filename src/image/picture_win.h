#pragma once
// Pictures by GDI+: files, pixel formats, encoders. Opening, converting and saving for the portable
// code is declared in picture.h.
//
// A GdiplusSession must exist while any of this is used; without one everything fails as for a file
// that cannot be read.

#include <cstdint>
#include <memory>

#include "image/gdiplus_win.h"
#include "image/picture.h"

/// Colour with red and blue exchanged: 0xAARRGGBB to 0xAABBGGRR and back.
constexpr std::uint32_t ExchangeRedBlue(std::uint32_t colour) noexcept {
    return (colour & 0xFF00FF00U) | ((colour & 0xFFU) << 16U) | ((colour >> 16U) & 0xFFU);
}

/// A GDI+ bitmap as a picture. The file it came from stays open for reading while it lives.
class GdiplusPicture final : public Picture {
public:
    /// @param bitmap  may be null or failed: the picture is not ok then
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

    /// Reads pixel (x, y), counted from the upper left, as 0xAARRGGBB; false outside.
    bool GetPixel(std::int32_t x, std::int32_t y, std::uint32_t& colour) const noexcept;
    /// Sets pixel (x, y) to 0xAARRGGBB; false outside.
    bool SetPixel(std::int32_t x, std::int32_t y, std::uint32_t colour) noexcept;

    /// Takes the bitmap out; the picture is not ok afterwards.
    std::unique_ptr<Gdiplus::Bitmap> Release() noexcept;

private:
    void NoteStatus() const noexcept;

    std::unique_ptr<Gdiplus::Bitmap> bitmap_;
    Gdiplus::BitmapData locked_ = {};
    bool isLocked_ = false;
    mutable bool ok_ = false;  ///< asking for a size may fail as well
};

/// An independent copy of an image; null when copying failed.
std::unique_ptr<Gdiplus::Image> CloneImage(Gdiplus::Image& image);

/// Redraws a bitmap in another pixel format.
/// @param bitmap  itself returned when it has the format already; null gives null
/// @param destroySourceOnFailure  null is returned on failure; else `bitmap`
std::unique_ptr<Gdiplus::Bitmap> ConvertPixelFormat(std::unique_ptr<Gdiplus::Bitmap> bitmap,
                                                    Gdiplus::PixelFormat format,
                                                    bool destroySourceOnFailure);

/// Looks for an installed encoder.
/// @param mimeType  such as L"image/jpeg", compared exactly
/// @param clsid  out, untouched without a match
/// @return its place in the list of encoders, or -1
int GetEncoderClsid(const wchar_t* mimeType, CLSID& clsid) noexcept;
