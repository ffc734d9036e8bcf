#pragma once
// What lives in the one OpenGL context: made for a window, released before the context goes.

#include <cstdint>

#include "window/map_state_win.h"

/// Makes the context on the window's DC, the font lists and reads GL's texture limit.
/// @return HORIVO_OK or an OpenGL set-up code
std::uint32_t CreateContext(MapState& map, MapWindow& entry);

/// Puts lamp and planet into the scene. Throws std::bad_alloc.
void PopulateScene(MapState& map);

/// One-time GL set-up, after the scene is populated; makes the overlay and places the cities'
/// markers.
void InitScene(MapState& map);

/// Deletes lamp, planet, overlay, their textures and lists, and the font's lists. The context is
/// current (when it is not, GL names die with the context).
void ReleaseScene(MapState& map) noexcept;

/// Sets viewport and projection to a size, makes the display lists again and measures the globe.
void ResizeScene(MapState& map, std::int32_t width, std::int32_t height);

/// The part of it that needs no context: takes the size over and measures the globe.
void ResizeSceneWithoutContext(MapState& map, std::int32_t width, std::int32_t height) noexcept;

/// Makes the display lists again; this is what moves the day/night line.
void CompileScene(MapState& map);

/// Measures the globe's edge after a change of size or distance.
void MeasureScene(MapState& map) noexcept;
