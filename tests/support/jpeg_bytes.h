#pragma once

#include <string>

/// A JPEG file that ends behind its frame header: all that a probe reads, nothing to decode.
inline std::string JpegHeaderBytes(unsigned width, unsigned height, unsigned components) {
    std::string bytes = "\xFF\xD8\xFF\xC0";
    const auto put16 = [&bytes](unsigned value) {
        bytes += static_cast<char>(value >> 8U);
        bytes += static_cast<char>(value & 0xFFU);
    };
    put16(8 + 3 * components);
    bytes += '\x08';  // bits a sample
    put16(height);
    put16(width);
    bytes += static_cast<char>(components);
    for (unsigned id = 1; id <= components; ++id) {
        bytes += static_cast<char>(id);
        bytes += '\x11';  // not subsampled
        bytes += '\x00';
    }
    return bytes;
}
