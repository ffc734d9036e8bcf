#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

class Picture;

/// Results of `Load`.
inline constexpr int kLoadFailed = 0;
inline constexpr int kLoadedUnchanged = 1;
inline constexpr int kLoadedShrunk = 3;  ///< contains kLoadShrunkBit
inline constexpr int kLoadShrunkBit =
    2;  ///< the picture counts as scaled down; InstallMap saves it

/// Sides of a picture and of the buffer that contains it, pixels.
struct TextureSizes {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bufferWidth = 0;
    std::int32_t bufferHeight = 0;
};

/// A picture in memory, ready for OpenGL.
///
/// `pixels`: bufferHeight rows of bufferWidth x bytesPerPixel bytes, tightly packed, bottom row
/// first, bytes R, G, B[, A]. The picture is the first `width` pixels of rows 0 to height - 1; all
/// bytes outside the picture are 0 after a load. A packed pixel is a number with byte 0 of the
/// pixel in bits 0 to 7, byte 1 in bits 8 to 15 and so on.
/// The class has no lock. No function throws.
class CJpegTexture {
public:
    CJpegTexture() noexcept = default;
    CJpegTexture(const CJpegTexture& other) noexcept;
    CJpegTexture& operator=(const CJpegTexture& other) noexcept;
    ~CJpegTexture();

    /// Copies a picture into the texture and destroys the picture. When both limits are at least 1,
    /// the sides of the buffer become powers of two of at least 16, and a picture that does not fit
    /// into the limits, rounded up to such powers, is refused. Otherwise only the rows are padded
    /// to a multiple of 4 pixels.
    /// @param maxWidth, maxHeight  limits, pixels
    /// @return kLoadedUnchanged, or kLoadFailed with all sizes 0
    virtual int Load(std::unique_ptr<Picture> picture, int maxWidth, int maxHeight);
    /// Writes the picture as a JPEG file. @param quality  1..100; below 1 means 75
    /// Deliberate: in a 4-byte picture, red and blue of the last quarter of each row are saved
    /// exchanged (see SwapRedBlue).
    virtual bool SaveJpeg(const std::wstring& path, int quality);

    /// Clears the texture, opens the file and calls Load; the result is that of Load.
    int LoadFromFile(const std::wstring& path, int maxWidth, int maxHeight);

    /// Frees the pixels. @param resetSize  also sets all sizes to 0
    void Clear(bool resetSize) noexcept;

    std::int32_t GetWidth() const noexcept { return width_; }
    std::int32_t GetHeight() const noexcept { return height_; }
    std::int32_t GetBufferWidth() const noexcept { return bufferWidth_; }
    std::int32_t GetBufferHeight() const noexcept { return bufferHeight_; }
    std::int32_t GetBytesPerPixel() const noexcept { return bytesPerPixel_; }
    const std::uint8_t* GetPixels() const noexcept { return pixels_; }
    std::uint8_t* GetPixels() noexcept { return pixels_; }

    /// Whether the texture is uploaded with a border of 1 pixel: width at least 3, width mod 4 = 2.
    bool HasBorder() const noexcept;
    /// Deliberate: should tell whether both sides are powers of two, but tests the height against 0
    /// and is therefore false for every picture. So FitToLimits calls MakePowerOfTwo also for a
    /// picture whose sides are powers of two.
    bool IsPowerOfTwoSize() const noexcept;
    /// Shrinks each side to the largest power of two not above it. @return false when there are no
    /// pixels or Rescale fails
    bool MakePowerOfTwo() noexcept;
    /// Shrinks a 3-byte picture in place with a box filter. @return false, without a change, when
    /// there is no such picture, when a new side is below 1 or above the present one, or when
    /// ShrinkPixels fails
    bool Rescale(int newWidth, int newHeight) noexcept;
    /// Enlarges the buffer without scaling the picture. The picture moves to the left end of the
    /// top rows of the buffer; the bytes outside the picture are then undefined.
    /// @return false, without a change, when there are no pixels or a side would become smaller;
    /// false, with all sizes 0, when memory runs out
    bool PadBuffer(int newBufferWidth, int newBufferHeight) noexcept;
    /// Moves the right half (`byColumns`) or the top half into `other`, which is cleared first.
    /// @return false without pixels, for an empty half, when `other` is this texture, or when
    /// memory runs out
    bool Split(CJpegTexture& other, bool byColumns) noexcept;
    /// Allocates uninitialised pixels, which the caller then writes. @return false when memory runs
    /// out or the buffer would be empty; the sizes are 0 then
    bool Allocate(const TextureSizes& sizes, std::int32_t bytesPerPixel) noexcept;
    /// Sets smaller sizes. The first bytes of the block stay unchanged; the other bytes are freed.
    /// @return false when memory runs out; the sizes are 0 and the pixels are freed then
    bool KeepFront(const TextureSizes& sizes) noexcept;

    /// Converts a 3-byte picture to 4 bytes a pixel with a constant alpha. @return false, without a
    /// change, when there are no pixels, when the picture has 4 bytes a pixel already, or when
    /// memory runs out
    bool ConvertToRgba(std::uint8_t alpha) noexcept;
    /// Returns the packed RGBA pixel for a packed pixel of `bytesPerPixel` bytes; must not throw.
    using PixelFunction = std::uint32_t (*)(std::uint32_t packed, std::int32_t bytesPerPixel);
    /// Converts the picture to 4 bytes a pixel: each new pixel is the result of `function`. @return
    /// false, without a change, when `function` is null, and where ConvertToRgba returns false
    bool ConvertToRgbaWith(PixelFunction function) noexcept;
    /// Replaces every pixel of the buffer that is equal to `from` by `to` (packed values).
    void ReplaceColor(std::uint32_t from, std::uint32_t to) noexcept;
    /// Replaces every pixel whose brightness (mean of its colour bytes) is in [low, high] by
    /// `value` (packed).
    void ReplaceByBrightness(std::uint32_t low, std::uint32_t high, std::uint32_t value) noexcept;
    /// Exchanges bytes 0 and 2 of the pixels; false without pixels.
    /// Deliberate: the function stops at byte width x 3 of each row also for 4-byte pixels, so that
    /// the last quarter of each row stays unchanged.
    bool SwapRedBlue() noexcept;

protected:
    void SetSizes(const TextureSizes& sizes) noexcept;
    /// Sets the four sizes to 0; the number of bytes per pixel stays unchanged.
    void ResetSizes() noexcept;

    std::uint8_t* pixels_ = nullptr;  ///< from malloc, because realloc can shrink a block in place
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    std::int32_t bufferWidth_ = 0;
    std::int32_t bufferHeight_ = 0;
    std::int32_t bytesPerPixel_ = 0;

private:
    /// Sets the sizes for a picture of 3 bytes a pixel; false when the picture is above the limits.
    bool ChooseBuffer(std::int32_t width, std::int32_t height, int maxWidth,
                      int maxHeight) noexcept;
    /// Allocates the buffer that ChooseBuffer has set and copies the picture into it.
    bool CopyRows(Picture& picture);
    std::size_t BufferPixels() const noexcept;
    /// Replaces the pixels by a block of 4-byte pixels; false when `block` is null.
    bool TakeWidened(std::uint8_t* block) noexcept;
};

/// A texture whose Load shrinks a picture, instead of refusing it. When both limits are at least 1,
/// each side becomes a power of two: the largest that is neither above the side of the picture nor
/// above the limit, rounded up to a power of two of at least 16. A picture with a side below 8
/// pixels keeps its size.
class CGLTexture : public CJpegTexture {
public:
    /// @return kLoadFailed, kLoadedUnchanged or kLoadedShrunk
    int Load(std::unique_ptr<Picture> picture, int maxWidth, int maxHeight) override;

private:
    /// Shrinks the rows of a picture directly into the texture, without a copy of the whole
    /// picture. The resulting bytes are the same as those of CJpegTexture::Load and Rescale.
    /// @return false, with an empty texture, when there is nothing to shrink, when the picture must
    /// be loaded whole first, or when locking the picture or the memory for the result fails
    bool LoadShrunk(Picture& picture, int maxWidth, int maxHeight);
};
