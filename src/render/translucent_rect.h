#pragma once

#include <cstdint>

/// Fills a rectangle with the current colour, blended by its alpha: the background of labels and of
/// the photo panel.
/// @param x, y           lower-left corner, window pixels, y upward
/// @param width, height  pixels
/// Leaves blending and alpha test off. Window thread; the context must be current with a projection
/// to window pixels.
void DrawTranslucentRect(float x, float y, std::int32_t width, std::int32_t height) noexcept;
