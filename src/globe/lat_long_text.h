#pragma once

#include <cstddef>

/// Size of the buffer for the text of a point, bytes, including the terminator.
inline constexpr std::size_t kLatLongTextSize = 64;

/// Writes the coordinates of a point, such as "Lat 33°54'S  Long  18°24'E", in whole minutes of
/// arc, truncated towards zero. The degree sign is the byte 0xB0, because CGLFont draws this byte
/// as the degree sign. A latitude beyond a pole is counted back from the pole, on the opposite
/// meridian; an angle that is infinite or NaN counts as 0.
/// @param latitudeDeg, longitudeDeg  degrees; may be outside one turn
void FormatLatLong(char (&buffer)[kLatLongTextSize], double latitudeDeg,
                   double longitudeDeg) noexcept;
