#pragma once

#include <string>

/// A JPEG file that ends behind its frame header: all that a probe reads, nothing to decode.
inline std::string JpegHeaderBytes(unsigned width, unsigned height, unsigned components) {
    const auto word = [](unsigned value) {
        return std::string{static_cast<char>(value >> 8U), static_cast<char>(value)};
    };
    std::string bytes = "\xFF\xD8\xFF\xC0" + word(8 + 3 * components) + '\x08' + word(height) +
                        word(width) + static_cast<char>(components);
    // Each component with its number, not subsampled.
    for (unsigned id = 1; id <= components; ++id) bytes += {static_cast<char>(id), '\x11', '\0'};
    return bytes;
}
