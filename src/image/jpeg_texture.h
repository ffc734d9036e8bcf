#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

class Picture;

/// Values of `Load`.
inline constexpr int kLoadFailed = 0;
inline constexpr int kLoadedUnchanged = 1;
inline constexpr int kLoadedShrunk = 3;   ///< contains kLoadShrunkBit
inline constexpr int kLoadShrunkBit = 2;  ///< the picture was scaled down and is worth saving back

/// Sides of a picture and of the buffer that it lies in, pixels.
struct TextureSizes {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bufferWidth = 0;
    std::int32_t bufferHeight = 0;
};

/// A picture in memory, ready for OpenGL.
///
/// `pixels`: bufferHeight rows of bufferWidth x bytesPerPixel bytes, tightly packed, bottom row
/// first, bytes R, G, B[, A]. The picture is the first `width` pixels of rows 0 to height - 1;
/// what lies outside is zero after a load. A packed pixel has byte 0 in bits 0 to 7.
/// No lock of its own. No operation throws.
class CJpegTexture {
public:
    CJpegTexture() noexcept = default;
    CJpegTexture(const CJpegTexture& other) noexcept;
    CJpegTexture& operator=(const CJpegTexture& other) noexcept;
    ~CJpegTexture();

    /// Takes a picture and fills the texture. With both limits at least 1 the buffer is padded to
    /// powers of two from 16 and a picture above the limits is refused; without, rows are padded to
    /// a multiple of 4 pixels. @return kLoadedUnchanged or kLoadFailed (all sizes 0 then)
    virtual int Load(std::unique_ptr<Picture> picture, int maxWidth, int maxHeight);
    /// Writes the picture as a JPEG file. @param quality  1..100; below 1 stands for 75
    /// Deliberate: a 4-byte picture is saved with the last quarter of each row's red and blue
    /// exchanged (see SwapRedBlue).
    virtual bool SaveJpeg(const std::wstring& path, int quality);

    /// Clears, opens the file and loads it.
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

    /// Whether GL gets a border of 1: width at least 3 and width mod 4 = 2.
    bool HasBorder() const noexcept;
    /// Deliberate: the height may have no bit set at all, so every picture goes on to
    /// MakePowerOfTwo.
    bool IsPowerOfTwoSize() const noexcept;
    /// Shrinks to the largest powers of two not above the size. @return false without pixels or
    /// when the picture cannot be rescaled
    bool MakePowerOfTwo() noexcept;
    /// Shrinks a 3-byte picture in place with a box filter. @return false and no change for a size
    /// that is below 1 or above the present one
    bool Rescale(int newWidth, int newHeight) noexcept;
    /// Enlarges the buffer without scaling; the picture ends up in its top rows.
    bool PadBuffer(int newBufferWidth, int newBufferHeight) noexcept;
    /// Moves the right half (`byColumns`) or the top half into `other`, which is cleared first.
    bool Split(CJpegTexture& other, bool byColumns) noexcept;
    /// Takes a block for pixels that the caller is going to write. @return false without memory or
    /// for an empty buffer: the sizes are 0 then
    bool Allocate(const TextureSizes& sizes, std::int32_t bytesPerPixel) noexcept;
    /// Takes smaller sizes; the bytes at the front of the block stay as they are, the rest is given
    /// back. @return false without memory: the sizes are 0 and the pixels are gone then
    bool KeepFront(const TextureSizes& sizes) noexcept;

    /// Widens a 3-byte picture to 4 bytes with a constant alpha.
    bool ConvertToRgba(std::uint8_t alpha) noexcept;
    /// Gives the RGBA value for a packed pixel of `bytesPerPixel` bytes; must not throw.
    using PixelFunction = std::uint32_t (*)(std::uint32_t packed, std::int32_t bytesPerPixel);
    /// Widens to 4 bytes through `function`; false when it is null.
    bool ConvertToRgbaWith(PixelFunction function) noexcept;
    /// Every pixel of the buffer equal to `from` gets the bytes of `to` (packed values).
    void ReplaceColor(std::uint32_t from, std::uint32_t to) noexcept;
    /// Every pixel whose brightness (mean of its colour bytes) lies in [low, high] gets `value`.
    void ReplaceByBrightness(std::uint32_t low, std::uint32_t high, std::uint32_t value) noexcept;
    /// Exchanges bytes 0 and 2 of the pixels.
    /// Deliberate: the walk ends at byte width x 3 of a row also for 4-byte pixels, whose last
    /// quarter keeps its order.
    bool SwapRedBlue() noexcept;

protected:
    void SetSizes(const TextureSizes& sizes) noexcept;
    /// Sets the four sizes to 0; the bytes per pixel stay.
    void ResetSizes() noexcept;

    std::uint8_t* pixels_ = nullptr;  ///< malloc'd: blocks shrink in place with realloc
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    std::int32_t bufferWidth_ = 0;
    std::int32_t bufferHeight_ = 0;
    std::int32_t bytesPerPixel_ = 0;

private:
    /// Sets the sizes for a picture of 3 bytes a pixel; false when the limits refuse it.
    bool ChooseBuffer(std::int32_t width, std::int32_t height, int maxWidth,
                      int maxHeight) noexcept;
    /// Allocates the chosen buffer and fills it from the picture.
    bool CopyRows(Picture& picture);
    std::size_t BufferPixels() const noexcept;
    /// Puts a block of 4-byte pixels in place of the present one; false when it is null.
    bool TakeWidened(std::uint8_t* block) noexcept;
};

/// The texture that is fitted to the limits of OpenGL by shrinking instead of being refused.
class CGLTexture : public CJpegTexture {
public:
    /// @return kLoadFailed, kLoadedUnchanged or kLoadedShrunk
    int Load(std::unique_ptr<Picture> picture, int maxWidth, int maxHeight) override;

private:
    /// Filters the rows of a picture above the limits straight into the shrunk texture, without the
    /// whole one between; the bytes are those of Load and Rescale. @return false, and the texture
    /// is empty, when there is nothing to shrink or it takes the detour over the whole one
    bool LoadShrunk(Picture& picture, int maxWidth, int maxHeight);
};
