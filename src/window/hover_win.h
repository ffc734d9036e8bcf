#pragma once
// The pointer resting on a city: after half a second its photos are offered.

#include "window/map_state_win.h"

inline constexpr UINT_PTR kHoverTimer = 3;

/// Begins to wait; an index outside the table cancels instead.
/// @param x, y  window pixels, y from the bottom
void StartHover(MapState& map, HWND window, std::int32_t signedIndex, std::int32_t x,
                std::int32_t y) noexcept;
void CancelHover(MapState& map) noexcept;
/// The pointer has rested (the timer ticked).
void OnHoverTimer(MapState& map, HWND window);
