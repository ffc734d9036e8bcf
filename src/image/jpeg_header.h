#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// What the header of a JPEG file says.
struct JpegSize {
    std::int32_t width = 0;       ///< pixels
    std::int32_t height = 0;      ///< pixels
    std::int32_t components = 0;  ///< 1 grey, 3 colour, 4 CMYK
};

/// Bytes of a file, read forward.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Reads exactly `size` bytes; false when fewer are left.
    virtual bool Read(void* out, std::size_t size) noexcept = 0;
    /// Moves the position by `offset` (-2 to 65533) from where it is. Past the end is allowed, as
    /// for files; false when it cannot.
    virtual bool Skip(std::int32_t offset) noexcept = 0;
};

/// Walks the segments of a JPEG to its baseline (0xC0) or progressive (0xC2) frame header without
/// decoding. @return false when there is none; `size` is untouched then
bool ReadJpegHeader(ByteSource& source, JpegSize& size) noexcept;

/// Reads size and component count from the header of a JPEG file, without decoding it.
/// @param width, height  out: pixels; untouched on failure, like `components`
/// @return false when the file cannot be read or is no baseline or progressive JPEG
bool ProbeJpeg(const std::wstring& path, std::int32_t& width, std::int32_t& height,
               std::int32_t& components) noexcept;
