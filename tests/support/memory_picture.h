#pragma once
// Pictures in memory for the portable tests, in place of GDI+. The fakes of OpenPicture,
// ConvertPicture and EncodeJpeg use PictureFiles().

#include <limits>
#include <map>
#include <vector>

#include "image/jpeg_texture.h"
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
};

std::int32_t BytesPerPixel(std::int32_t format);

/// A picture of reproducible noise.
MemoryImage NoiseImage(std::int32_t width, std::int32_t height,
                       std::int32_t format = kPixelFormat24bppRgb);

class MemoryPicture final : public Picture {
public:
    explicit MemoryPicture(MemoryImage image);
    ~MemoryPicture() override { --live; }

    bool IsOk() const noexcept override { return image.readable; }
    std::int32_t GetWidth() const noexcept override { return image.width; }
    std::int32_t GetHeight() const noexcept override { return image.height; }
    std::int32_t GetPixelFormat() const noexcept override { return image.format; }
    PixelRows LockForReading() override;
    void Unlock() noexcept override { --locks; }

    static inline int live = 0;   ///< pictures that exist
    static inline int locks = 0;  ///< locks that were not given back
    const MemoryImage image;

private:
    std::vector<std::uint8_t> rows_;  ///< as locked: with padding behind each row
};

/// By path.
std::map<std::wstring, MemoryImage>& PictureFiles();

int LoadImage(CJpegTexture& texture, const MemoryImage& image, int maxWidth = 0, int maxHeight = 0);

/// The whole buffer; empty without pixels.
std::vector<int> Bytes(const CJpegTexture& texture);

inline constexpr std::int32_t kHugeSide = std::numeric_limits<std::int32_t>::max();

/// A texture class whose sizes a test may claim, to ask for more memory than there is.
template <class Texture>
struct Claimed : Texture {
    void ClaimBuffer(std::int32_t width, std::int32_t height) {
        this->SetSizes({width, height, width, height});
    }
};
