#pragma once
// The messages that the map sends to its host. While the host handles one it may destroy the
// window, start a flight or hand over another table: after each of these calls, look everything up
// again.

#include <cstdint>

#include "base/windows_types.h"
#include "cities/city_table.h"

/// Asks the hidden main window of the host whether the photos may be shown.
/// @return whether the host answered 1; any other answer, and no host, is a refusal
bool AskHostForPhotos(HWND window, std::int32_t signedIndex);

/// Tells the parent of `window` that a city was clicked. @param index  must be in the table
void TellCityClicked(const CityTable& cities, HWND window, std::int32_t index);
