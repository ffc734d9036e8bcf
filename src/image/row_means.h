#pragma once

#include <cstddef>
#include <cstdint>

/// Writes the mean of two rows: (a + b) / 2 of each byte, rounded down.
/// @param target  may be `first` or lie before it
void MeanOfRows(const std::uint8_t* first, const std::uint8_t* second, std::size_t bytes,
                std::uint8_t* target) noexcept;

/// Shrinks two rows of 3-byte pixels to one row of half the width: each box of 2 x 2 pixels becomes
/// one pixel. Computes the means along the rows first, then the means of the two rows; truncates to
/// whole bytes after each step. The first pixel of each row counts twice.
/// @param size    pixels in the new row, at least 1; the old rows have twice as many
/// @param target  must not overlap the two rows
void HalveRows(const std::uint8_t* first, const std::uint8_t* second, std::size_t size,
               std::uint8_t* target) noexcept;
