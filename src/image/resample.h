#pragma once

#include <cstddef>
#include <cstdint>

/// Sides of a block of pixels.
struct BlockSize {
    std::size_t width = 0;   ///< pixels in a row
    std::size_t height = 0;  ///< rows
};

/// Shrinks a tightly packed block of 3-byte pixels in place with a box filter: along the rows, then
/// along the columns, truncating to whole bytes after each pass. The result is packed at the start
/// of the block.
///
/// Deliberate: the first pixel of each row and column that becomes shorter counts twice in its new
/// pixel.
/// @param from  present sides
/// @param to    new sides, each from 1 to the present side
/// @return false, without a change, when memory for the sums runs out (16 bytes for each new
/// column) or when a new pixel would be the mean of more than 2^24 old pixels of a row or column
bool ShrinkPixels(std::uint8_t* pixels, BlockSize from, BlockSize to) noexcept;

/// Shrinks rows as ShrinkPixels does, but into another block, and exchanges bytes 0 and 2 of each
/// pixel.
/// @param firstRow  first of from.height rows of packed pixels
/// @param stride    bytes from a row to the next one; may be negative
/// @param target    block of `to` pixels; must not overlap the rows
/// @return false, without writing, when memory for the sums runs out (22 bytes for each new column)
/// or when a new pixel would be the mean of more than 2^24 old pixels of a row or column
bool ShrinkExchangingRedBlue(const std::uint8_t* firstRow, std::ptrdiff_t stride, BlockSize from,
                             BlockSize to, std::uint8_t* target) noexcept;
