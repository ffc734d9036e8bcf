#pragma once

#include <cstdint>

struct MapState;

/// Checks a newly installed map picture: keeps a pristine copy, checks the header, and tries in a
/// hidden window whether the picture can become textures on this machine. Takes the whole state:
/// folders, results, picture, windows and loader. @return a result code
std::uint32_t RunInstallMap(MapState& map);
