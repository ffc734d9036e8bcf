#pragma once

#include <cstdint>

#include "window/map_state_win.h"

/// The self-test of a newly installed map picture. @return a result code
std::uint32_t RunInstallTest(MapState& map);
