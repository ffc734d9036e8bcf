#pragma once

#include <cstdint>

#include "base/windows_types.h"

/// Puts a detail factor (percent) in force: meshes are made again, and the picture is loaded anew.
void SetPerfFactor(HWND window, std::int32_t factor);

/// One level coarser or finer; nothing happens at the ends.
void StepPerfFactor(HWND window, bool coarser);
