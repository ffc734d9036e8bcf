#pragma once
// The flat controls over the globe: buttons and photo panel of the map windows.

#include "window/map_state_win.h"

/// Makes the buttons from "buttons.png" and puts the panel's photos back. The context is current.
void CreateOverlay(MapState& map);
/// Deletes what of it lives in the context.
void ReleaseOverlay(MapState& map) noexcept;

/// Places panel and photo buttons as in `window`; whatever is picked there must be where it shows
/// it, though another window may have been painted since.
void FitOverlayTo(MapState& map, HWND window) noexcept;

/// Draws panel and buttons, in the flat pass.
void DrawOverlay(MapState& map, std::int32_t width, std::int32_t height);

/// Shows the photos of a country, or of one of its cities (`city` not empty).
void ShowPhotos(MapState& map, HWND window, WideString country, WideString city);
/// Reads the panel's photos again, after a change on disk or to another page.
void ReloadPhotos(MapState& map, HWND window);
/// Reads the panel's photos again after the host has reported new ones, and offers all its pages.
void TakeNewPhotos(MapState& map, HWND window);

/// The photos know their cities by their places in the host's table: puts those of a new one in.
void TakeNewTable(MapState& map) noexcept;

/// VK_NEXT, VK_PRIOR and VK_INSERT.
void ShowNextPhotos(MapState& map, HWND window);
void ShowPreviousPhotos(MapState& map, HWND window);
void AddPhoto(MapState& map, HWND window);

/// Lights the overlay button at a window point (none with `clearOnly`).
/// @return its virtual-key code, 0 for none
std::int32_t HitTestButtons(MapState& map, HWND window, std::int32_t x, std::int32_t y,
                            bool clearOnly) noexcept;
