#pragma once

#include <cstdint>

#include "render/geo_point.h"
#include "render/gl_font.h"
#include "window/level_of_detail.h"

/// The values that the status lines at the lower left of the window show.
struct StatusLines {
    const CGeoPoint& geoPoint;
    const LevelOfDetail& detail;
    bool showInfo = false;
    bool showFps = false;
    bool textured = false;            ///< the planet has textures
    std::uint32_t tileWidth = 0;      ///< pixels
    std::uint32_t tileHeight = 0;     ///< pixels
    std::int32_t maxTextureSize = 0;  ///< pixels per side
    const char* renderer = "";
    const char* version = "";
    const char* vendor = "";
    bool loading = false;
    bool splitting = false;
};

/// Draws the lines upward from the lower left corner: place of the pointer, information, frame
/// rate, progress. The projection must map to window pixels, y upward. Leaves the modelview stack
/// at the same depth.
void DrawStatusLines(const StatusLines& lines, const CGLFont& font);
