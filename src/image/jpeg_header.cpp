#include "image/jpeg_header.h"

namespace {

constexpr std::uint8_t kMarkerPrefix = 0xFF;
constexpr std::uint8_t kStartOfImage = 0xD8;
constexpr std::uint8_t kBaselineFrame = 0xC0;
constexpr std::uint8_t kProgressiveFrame = 0xC2;
// Bytes of the length field of a segment. The length in this field includes these bytes.
constexpr std::int32_t kLengthBytes = 2;

bool ReadByte(ByteSource& source, std::int32_t& value) noexcept {
    std::uint8_t byte = 0;
    if (!source.Read(&byte, sizeof byte)) return false;
    value = byte;
    return true;
}

bool ReadBigEndian(ByteSource& source, std::int32_t& value) noexcept {
    std::uint8_t bytes[2] = {};
    if (!source.Read(bytes, sizeof bytes)) return false;
    value = bytes[0] * 256 + bytes[1];
    return true;
}

bool ReadFrameHeader(ByteSource& source, JpegSize& size) noexcept {
    JpegSize found;
    std::int32_t samplePrecision = 0;
    if (!ReadByte(source, samplePrecision)) return false;
    if (!ReadBigEndian(source, found.height)) return false;
    if (!ReadBigEndian(source, found.width)) return false;
    if (!ReadByte(source, found.components)) return false;
    size = found;
    return true;
}

}  // namespace

bool ReadJpegHeader(ByteSource& source, JpegSize& size) noexcept {
    std::uint8_t start[2] = {};
    if (!source.Read(start, sizeof start)) return false;
    if (start[0] != kMarkerPrefix || start[1] != kStartOfImage) return false;

    // The loop ends for every file. Only a length of 0 or 1 moves the position backwards, to one of
    // the two bytes of that length; neither is a marker prefix, so the next round returns false.
    for (;;) {
        std::int32_t prefix = 0;
        std::int32_t marker = 0;
        std::int32_t length = 0;
        // Deliberate: the loop does not skip fill bytes before a marker, and does not recognise
        // markers without a length. A file that has such bytes or such a marker before its frame
        // header counts as no JPEG.
        if (!ReadByte(source, prefix) || prefix != kMarkerPrefix) return false;
        if (!ReadByte(source, marker) || !ReadBigEndian(source, length)) return false;
        if (marker == kBaselineFrame || marker == kProgressiveFrame) {
            return ReadFrameHeader(source, size);
        }
        if (!source.Skip(length - kLengthBytes)) return false;
    }
}
