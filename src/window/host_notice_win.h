#pragma once
// The messages that the map sends to its host. While the host handles such a message, it may
// destroy the window, start a flight or hand over another city table. After each of these calls, a
// caller must therefore check the window, the flight and the city table again.

#include <cstdint>

#include "base/windows_types.h"
#include "cities/city_table.h"

/// Asks the hidden main window of the host whether the photos may be shown.
/// @param signedIndex  index of the city, or the negated index of the nearest city when the pointer
///                     is on no city
/// @return true when the host answers 1; false after any other answer and when there is no host
bool AskHostForPhotos(HWND window, std::int32_t signedIndex);

/// Reports to the parent of `window` that a city was clicked. @param index  must be in the table
void NotifyCityClicked(const CityTable& cities, HWND window, std::int32_t index);
