#pragma once

#include <cstddef>
#include <cstdint>

/// Makes one row of two by (a + b) / 2, rounded down, byte by byte.
/// @param target  may be `first` or lie before it
void MeanOfRows(const std::uint8_t* first, const std::uint8_t* second, std::size_t bytes,
                std::uint8_t* target) noexcept;

/// Makes one row of two, each box of 2 x 2 pixels of 3 bytes one pixel: along the rows first, then
/// across, truncating to whole bytes after each. The first pixel of each row counts twice.
/// @param size    pixels in the new row, at least 1; the old ones have twice as many
/// @param target  must not overlap the two rows
void HalveRows(const std::uint8_t* first, const std::uint8_t* second, std::size_t size,
               std::uint8_t* target) noexcept;
