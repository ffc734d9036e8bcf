#pragma once
// Pictures for tests, made and read with GDI+ itself.

#include <filesystem>
#include <vector>

#include "image/gdiplus_win.h"

/// A decoded picture: rows from the top, bytes R, G, B, no padding.
struct RgbPicture {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> pixels;
};

/// Writes a pattern whose red grows from 0 to 255 downward and its green to the right, as a PNG or
/// a JPEG file by the name. @param format  of GDI+
void SavePattern(const std::filesystem::path& path, int width, int height, int format,
                 ULONG quality = 100);
inline void SavePatternJpeg(const std::filesystem::path& path, int width, int height, int quality) {
    SavePattern(path, width, height, PixelFormat24bppRGB, static_cast<ULONG>(quality));
}

/// Decodes a file; empty when it cannot be read.
RgbPicture DecodePicture(const std::filesystem::path& path);
