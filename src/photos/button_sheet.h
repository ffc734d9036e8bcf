#pragma once
// Pixels of the button sheet, "buttons.png".

#include <cstddef>
#include <cstdint>

#include "image/picture.h"

inline constexpr std::int32_t kSheetWidth = 128;   ///< pixels
inline constexpr std::int32_t kSheetHeight = 256;  ///< pixels
inline constexpr std::int32_t kSheetBitsPerPixel = 32;
inline constexpr std::size_t kSheetBytes =
    std::size_t{kSheetWidth} * kSheetHeight * kSheetBitsPerPixel / 8;

/// Bits that a pixel takes in a GDI+ pixel format.
constexpr std::int32_t BitsPerPixel(std::int32_t pixelFormat) noexcept {
    return (pixelFormat >> 8) & 0xFF;
}

/// Copies the rows of a 32-bit picture of the sheet's size bottom-up: the top row becomes the last.
/// @param out  kSheetBytes bytes, no padding between rows
void CopySheetRows(const PixelRows& rows, std::uint8_t* out) noexcept;

/// Exchanges bytes 0 and 2 of each of the sheet's pixels: B, G, R, A becomes R, G, B, A.
void ExchangeRedAndBlue(std::uint8_t* pixels) noexcept;
