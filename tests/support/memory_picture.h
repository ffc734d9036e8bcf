#pragma once
// Pictures in memory for the portable tests, in place of GDI+. The fakes of OpenPicture,
// ConvertPicture and EncodeJpeg use PictureFiles().

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "image/picture.h"

inline constexpr std::int32_t kPixelFormat8bppIndexed = 0x30803;  ///< here: grey

/// What a picture file contains and how it behaves.
struct MemoryImage {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t format = kPixelFormat24bppRgb;
    std::vector<std::uint8_t> bytes;  ///< top row first, tightly packed; B, G, R[, A] or grey
    bool readable = true;
    bool lockable = true;
    bool convertible = true;
    bool bottomUp = false;  ///< locked rows lie the other way round: the stride is negative
};

std::int32_t BytesPerPixel(std::int32_t format);

/// A picture of reproducible noise.
MemoryImage NoiseImage(std::int32_t width, std::int32_t height,
                       std::int32_t format = kPixelFormat24bppRgb);

class MemoryPicture final : public Picture {
public:
    explicit MemoryPicture(MemoryImage image);
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;
    ~MemoryPicture() override;

    bool IsOk() const noexcept override { return image_.readable; }
    std::int32_t GetWidth() const noexcept override { return image_.width; }
    std::int32_t GetHeight() const noexcept override { return image_.height; }
    std::int32_t GetPixelFormat() const noexcept override { return image_.format; }
    PixelRows LockForReading() override;
    void Unlock() noexcept override;

    const MemoryImage& Image() const noexcept { return image_; }
    /// Pictures that exist, and locks that have not been given back.
    static int LiveCount() noexcept;
    static int LockCount() noexcept;
    /// Pictures that were converted so far.
    static int ConversionCount() noexcept;

private:
    MemoryImage image_;
    std::vector<std::uint8_t> rows_;  ///< as locked: with padding behind each row
};

/// By path.
std::map<std::wstring, MemoryImage>& PictureFiles();
