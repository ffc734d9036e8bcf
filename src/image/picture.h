#pragma once
// Interface to decoded pictures: declared here for the portable code, implemented with GDI+ in
// picture_win.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "image/pixel_block.h"

/// Pixel formats by their GDI+ codes.
inline constexpr std::int32_t kPixelFormat24bppRgb = 0x21808;    ///< bytes B, G, R
inline constexpr std::int32_t kPixelFormat32bppArgb = 0x26200A;  ///< bytes B, G, R, A

/// Read-only view of the locked pixels of a picture.
struct PixelRows {
    const std::uint8_t* firstRow = nullptr;  ///< top row of the picture; null when locking failed
    std::ptrdiff_t stride = 0;               ///< bytes from a row to the one below; may be negative
};

/// A decoded picture file. One thread at a time.
class Picture {
public:
    virtual ~Picture() = default;
    /// Whether the file was opened and every operation since then has succeeded.
    virtual bool IsOk() const noexcept = 0;
    virtual std::int32_t GetWidth() const noexcept = 0;
    virtual std::int32_t GetHeight() const noexcept = 0;
    virtual std::int32_t GetPixelFormat() const noexcept = 0;
    /// Locks the whole picture for reading in its own pixel format. The result is valid until
    /// Unlock.
    virtual PixelRows LockForReading() = 0;
    virtual void Unlock() noexcept = 0;
};

/// Opens a picture file and ignores its colour profile. A file that cannot be read gives a picture
/// for which IsOk is false, not null. Throws std::bad_alloc.
std::unique_ptr<Picture> OpenPicture(const std::wstring& path);

/// Converts a picture to `format`: returns `picture` when it has that format already, else a
/// redrawn copy. Null when redrawing failed; `picture` is destroyed then.
std::unique_ptr<Picture> ConvertPicture(std::unique_ptr<Picture> picture, std::int32_t format);

/// Writes a JPEG file. @param quality  1..100; below 1 means 75
bool EncodeJpeg(const PixelBlock& block, const std::wstring& path, int quality);
