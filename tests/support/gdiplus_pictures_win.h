#pragma once
// Pictures for tests, made and read with GDI+ itself.

#include <cstdint>
#include <filesystem>
#include <vector>

/// A decoded picture: rows from the top, bytes R, G, B, no padding.
struct RgbPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

/// Writes a colourful pattern that is different everywhere as a JPEG file.
void SavePatternJpeg(const std::filesystem::path& path, int width, int height, int quality);

/// Decodes a file; empty when it cannot be read.
RgbPicture DecodePicture(const std::filesystem::path& path);
