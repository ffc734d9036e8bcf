// Loads textures from pictures and saves them to files.

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "image/jpeg_texture.h"
#include "image/picture.h"
#include "image/pixel_block.h"
#include "image/red_blue.h"
#include "image/resample.h"

namespace {

// Lengths in pixels.
constexpr std::int64_t kMinBufferSide = 16;  // smallest side of the buffer when Load gets limits
constexpr std::int32_t kRowMultiple = 4;  // without limits, rows are padded to a multiple of this

/// The smallest 16 * 2^n that is not below the smaller one of `size` and `limit`.
std::int64_t DoubledSide(std::int64_t size, std::int64_t limit) noexcept {
    std::int64_t side = kMinBufferSide;
    while (side < limit && side < size) side *= 2;
    return side;
}

/// `width` rounded up to the next multiple of kRowMultiple.
std::int64_t PaddedRow(std::int64_t width) noexcept {
    return (width + kRowMultiple - 1) / kRowMultiple * kRowMultiple;
}

/// Locks the rows of a picture until the end of the scope.
class LockedRows {
public:
    explicit LockedRows(Picture& picture) : picture_(picture), rows_(picture.LockForReading()) {}
    LockedRows(const LockedRows&) = delete;
    LockedRows& operator=(const LockedRows&) = delete;
    ~LockedRows() {
        if (IsLocked()) picture_.Unlock();
    }
    bool IsLocked() const noexcept { return rows_.firstRow != nullptr; }
    const std::uint8_t* Row(std::int32_t fromTop) const noexcept {
        return rows_.firstRow + fromTop * rows_.stride;
    }
    /// Bytes from a row to the one below.
    std::ptrdiff_t Stride() const noexcept { return rows_.stride; }

private:
    Picture& picture_;
    PixelRows rows_;
};

bool IsGood(const std::unique_ptr<Picture>& picture) noexcept {
    return picture != nullptr && picture->IsOk();
}

/// Converts `picture` to 24-bit RGB. @return false when the picture is bad or cannot be converted
bool MakeRgb(std::unique_ptr<Picture>& picture) {
    if (!IsGood(picture)) return false;
    if (picture->GetPixelFormat() != kPixelFormat24bppRgb) {
        picture = ConvertPicture(std::move(picture), kPixelFormat24bppRgb);
    }
    return picture != nullptr;
}

/// The result of DoubledSide, or half of that result when it is above `size`.
std::int64_t FittedSide(std::int64_t size, std::int64_t limit) noexcept {
    const std::int64_t side = DoubledSide(size, limit);
    return side > size ? side / 2 : side;
}

}  // namespace

int CJpegTexture::LoadFromFile(const std::wstring& path, int maxWidth, int maxHeight) {
    Clear(true);
    try {
        return Load(OpenPicture(path), maxWidth, maxHeight);
    } catch (...) {  // out of memory while the file was opened
        Clear(true);
        return kLoadFailed;
    }
}

int CJpegTexture::Load(std::unique_ptr<Picture> picture, int maxWidth, int maxHeight) {
    Clear(true);
    try {
        // The size is checked first, because a conversion decodes the whole picture.
        if (IsGood(picture) &&
            ChooseBuffer(picture->GetWidth(), picture->GetHeight(), maxWidth, maxHeight) &&
            MakeRgb(picture) && CopyRows(*picture)) {
            return kLoadedUnchanged;
        }
    } catch (...) {  // out of memory during the conversion or the lock
    }
    Clear(false);
    ResetSizes();
    return kLoadFailed;
}

bool CJpegTexture::ChooseBuffer(std::int32_t width, std::int32_t height, int maxWidth,
                                int maxHeight) noexcept {
    bytesPerPixel_ = kRgbBytes;
    const bool limited = maxWidth >= 1 && maxHeight >= 1;
    const std::int64_t bufferWidth = limited ? DoubledSide(width, maxWidth) : PaddedRow(width);
    const std::int64_t bufferHeight = limited ? DoubledSide(height, maxHeight) : height;
    if (width < 1 || height < 1 || bufferWidth < width || bufferHeight < height) return false;
    if (std::max(bufferWidth, bufferHeight) > std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    width_ = width;
    height_ = height;
    bufferWidth_ = static_cast<std::int32_t>(bufferWidth);
    bufferHeight_ = static_cast<std::int32_t>(bufferHeight);
    return true;
}

bool CJpegTexture::CopyRows(Picture& picture) {
    const LockedRows rows(picture);
    if (!rows.IsLocked()) return false;
    pixels_ = AllocateBlock(BlockBytes(bufferWidth_, bufferHeight_, bytesPerPixel_));
    if (pixels_ == nullptr) return false;

    // Clear only the bytes outside the picture, because clearing the whole buffer of a large map is
    // slow.
    const std::size_t rowBytes = BlockBytes(bufferWidth_, 1, bytesPerPixel_);
    const std::size_t pictureBytes = BlockBytes(width_, 1, bytesPerPixel_);
    for (std::int32_t row = 0; row < height_; ++row) {
        std::uint8_t* const target = pixels_ + static_cast<std::size_t>(row) * rowBytes;
        CopyExchangingRedBlue(rows.Row(height_ - 1 - row), static_cast<std::size_t>(width_),
                              target);
        std::memset(target + pictureBytes, 0, rowBytes - pictureBytes);
    }
    const std::size_t used = static_cast<std::size_t>(height_) * rowBytes;
    std::memset(pixels_ + used, 0, BlockBytes(bufferWidth_, bufferHeight_, bytesPerPixel_) - used);
    return true;
}

bool CJpegTexture::SaveJpeg(const std::wstring& path, int quality) {
    if (!SwapRedBlue()) return false;
    const std::size_t rowBytes = BlockBytes(bufferWidth_, 1, bytesPerPixel_);
    bool saved = false;
    if (width_ >= 1 && height_ >= 1 && rowBytes <= std::numeric_limits<std::int32_t>::max()) {
        PixelBlock block;
        block.firstRow = pixels_ + static_cast<std::size_t>(height_ - 1) * rowBytes;
        block.width = width_;
        block.height = height_;
        block.stride = -static_cast<std::int32_t>(rowBytes);  // the bottom row is stored first
        block.bytesPerPixel = bytesPerPixel_;
        try {
            saved = EncodeJpeg(block, path, quality);
        } catch (...) {  // out of memory in the encoder
        }
    }
    SwapRedBlue();
    return saved;
}

int CGLTexture::Load(std::unique_ptr<Picture> picture, int maxWidth, int maxHeight) {
    Clear(true);
    const bool limited = maxWidth >= 1 && maxHeight >= 1;
    try {
        if (!MakeRgb(picture)) return kLoadFailed;
        if (limited && LoadShrunk(*picture, maxWidth, maxHeight)) return kLoadedShrunk;
    } catch (...) {  // out of memory during the conversion or the lock
        return kLoadFailed;
    }
    if (CJpegTexture::Load(std::move(picture), 0, 0) == kLoadFailed) return kLoadFailed;
    if (!limited) return kLoadedUnchanged;
    const std::int64_t targetWidth = FittedSide(width_, maxWidth);
    const std::int64_t targetHeight = FittedSide(height_, maxHeight);
    if (targetWidth == width_ && targetHeight == height_) return kLoadedUnchanged;
    // Deliberate: a picture with a side below 8 pixels counts as shrunk, although Rescale leaves
    // the picture unchanged.
    Rescale(static_cast<int>(targetWidth), static_cast<int>(targetHeight));
    return kLoadedShrunk;
}

bool CGLTexture::LoadShrunk(Picture& picture, int maxWidth, int maxHeight) {
    const std::int32_t width = picture.GetWidth();
    const std::int32_t height = picture.GetHeight();
    const std::int64_t targetWidth = FittedSide(width, maxWidth);
    const std::int64_t targetHeight = FittedSide(height, maxHeight);
    if (targetWidth > width || targetHeight > height) return false;
    if (targetWidth == width && targetHeight == height) return false;
    // The result must have the same bytes as Load followed by Rescale. Load pads the rows of a
    // picture whose width is not a multiple of 4, and Rescale filters the padding, too. So such a
    // picture must be loaded whole first.
    if (width % kRowMultiple != 0) return false;

    const LockedRows rows(picture);
    if (!rows.IsLocked()) return false;
    const auto newWidth = static_cast<std::int32_t>(targetWidth);
    const auto newHeight = static_cast<std::int32_t>(targetHeight);
    const BlockSize from{static_cast<std::size_t>(width), static_cast<std::size_t>(height)};
    const BlockSize to{static_cast<std::size_t>(newWidth), static_cast<std::size_t>(newHeight)};
    if (Allocate({newWidth, newHeight, newWidth, newHeight}, kRgbBytes) &&
        ShrinkExchangingRedBlue(rows.Row(height - 1), -rows.Stride(), from, to, pixels_)) {
        return true;
    }
    Clear(true);
    return false;
}
