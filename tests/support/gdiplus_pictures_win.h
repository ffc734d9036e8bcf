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

/// Writes a pattern whose red grows from 0 to 255 downward and its green to the right.
void SavePatternJpeg(const std::filesystem::path& path, int width, int height, int quality);

/// The same in a GDI+ pixel format, opaque.
void SavePatternPng(const std::filesystem::path& path, int width, int height, int format);

/// Decodes a file; empty when it cannot be read.
RgbPicture DecodePicture(const std::filesystem::path& path);
