#pragma once
// What the map tells its host and asks of it. The host acts inside our messages: it may destroy the
// window, start a flight or hand over another table. After each of them nothing may be taken for
// granted that was looked up before.

#include "window/map_state_win.h"

/// Asks the host's hidden main window whether the photos may be shown; only 1 is consent.
/// @return the answer, also kept for the add-photo button
bool NotifyHost(MapState& map, HWND window, std::int32_t signedIndex);

enum class PhotosOf : bool { Country, City };

/// Asks the host, and on consent shows the photos of the record's country or of the city itself.
/// An index outside the table, or a window that is not live (any more): nothing.
void OfferPhotos(MapState& map, HWND window, std::int32_t signedIndex, PhotosOf whose);

/// Tells the parent that a city was clicked. `index` must be in the table.
void TellCityClicked(MapState& map, HWND window, std::int32_t index);
