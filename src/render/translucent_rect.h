#pragma once

#include <cstdint>

/// Fills a rectangle with the current colour and its alpha, blended over what is there; the
/// background of labels and of the photo panel.
/// @param x, y           lower-left corner, window pixels, y upward
/// @param width, height  pixels
/// Blending and alpha test are off afterwards. Window thread, flat projection, context current.
void DrawTranslucentRect(float x, float y, std::int32_t width, std::int32_t height) noexcept;
