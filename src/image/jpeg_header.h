#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// Size and number of components, from the header of a JPEG file.
struct JpegSize {
    std::int32_t width = 0;       ///< pixels
    std::int32_t height = 0;      ///< pixels
    std::int32_t components = 0;  ///< 1 grey, 3 colour, 4 CMYK
};

/// A source of bytes, such as a file, that is read forward.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Reads exactly `size` bytes; false when fewer bytes are left.
    virtual bool Read(void* out, std::size_t size) noexcept = 0;
    /// Moves the position by `offset` bytes, -2 to 65533: the length field of a segment minus the
    /// 2 bytes of this field, so a wrong length gives a negative offset. As in files, the new
    /// position may be past the end. @return false when the position cannot be moved
    virtual bool Skip(std::int32_t offset) noexcept = 0;
};

/// Reads the segments of a JPEG up to its baseline (0xC0) or progressive (0xC2) frame header;
/// decodes no pixels. @return false, with `size` unchanged, when there is no such header
bool ReadJpegHeader(ByteSource& source, JpegSize& size) noexcept;

/// Reads size and component count from the header of a JPEG file, without decoding it.
/// @param width, height  out: pixels; unchanged on failure, like `components`
/// @return false when the file cannot be read or is neither a baseline nor a progressive JPEG
bool ProbeJpeg(const std::wstring& path, std::int32_t& width, std::int32_t& height,
               std::int32_t& components) noexcept;
