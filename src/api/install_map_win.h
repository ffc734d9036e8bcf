#pragma once

#include <cstdint>

struct MapState;

/// Does the work of InstallMap: keeps a pristine copy of a newly installed map picture, checks the
/// header, and tries in a hidden window whether the picture can become textures on this machine.
/// Needs MapState because it uses HostData, CallResults, SharedPicture, InstallTest, LiveWindows
/// and MapLoader. Throws std::bad_alloc.
/// @return a result code of horivo_map.h
std::uint32_t RunInstallMap(MapState& map);
