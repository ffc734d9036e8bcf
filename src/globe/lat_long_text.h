#pragma once

#include <cstddef>

/// Bytes that a readout needs at most, terminator included.
inline constexpr std::size_t kLatLongTextSize = 64;

/// Writes the readout of a point, such as "Lat 33°54'S  Long  18°24'E", in whole minutes of arc cut
/// towards zero. The degree sign is the byte 0xB0 that the overlay font draws.
/// A latitude beyond a pole folds back and turns the longitude by 180 degrees. A value that is not
/// finite counts as 0. @param latitudeDeg, longitudeDeg  degrees, any multiple of turns
void FormatLatLong(char (&buffer)[kLatLongTextSize], double latitudeDeg,
                   double longitudeDeg) noexcept;
