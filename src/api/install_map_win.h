#pragma once

#include <cstdint>

struct MapState;

/// Checks a newly installed map picture: keeps a pristine copy, checks the header, and tries in a
/// hidden window whether the picture can become textures on this machine. Needs MapState because it
/// uses the folders, the results, the picture, the windows and the loader. @return a result code
std::uint32_t RunInstallMap(MapState& map);
