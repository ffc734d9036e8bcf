#pragma once

#include <cstddef>
#include <cstdint>

/// Sides of a block of pixels.
struct BlockSize {
    std::size_t width = 0;   ///< pixels in a row
    std::size_t height = 0;  ///< rows
};

/// Shrinks a tightly packed block of 3-byte pixels in place with a box filter: along the rows, then
/// along the columns, truncating to whole bytes after each. The result lies packed at the front.
///
/// Deliberate: the first pixel of each line counts twice in the first pixel that it goes into.
/// @param from  present sides
/// @param to    new sides: 1 up to the present ones
/// @return false and no change without memory for the sums (16 bytes a new column), or when a new
/// pixel would gather more than 2^24 others
bool ShrinkPixels(std::uint8_t* pixels, BlockSize from, BlockSize to) noexcept;

/// The same from rows that lie elsewhere into a block of `to`, with bytes 0 and 2 of each pixel
/// exchanged on the way.
/// @param firstRow  `from` rows of packed pixels, each `stride` bytes behind the one before; the
///                  stride may be negative
/// @param target    must not overlap the rows
/// @return false, and the target is not written, without memory for the sums (22 bytes a new
/// column), or when a new pixel would gather more than 2^24 others
bool ShrinkExchangingRedBlue(const std::uint8_t* firstRow, std::ptrdiff_t stride, BlockSize from,
                             BlockSize to, std::uint8_t* target) noexcept;
