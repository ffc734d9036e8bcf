#pragma once

#include "window/map_state_win.h"

inline constexpr UINT_PTR kFlightTimer = 2;

/// Flies from the present view to `to`; replaces a flight under way.
void StartFlight(MapState& map, HWND window, const ViewAngles& to) noexcept;
/// The view that centres a place, degrees.
ViewAngles ViewOfPlace(double latitudeDeg, double longitudeDeg) noexcept;
void StopFlight(MapState& map) noexcept;
inline bool IsFlying(const MapState& map) noexcept { return map.flight.timer.Runs(); }
/// One step of the flight (its timer ticked).
void OnFlightTimer(MapState& map, HWND window);
