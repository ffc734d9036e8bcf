#pragma once

#include <cstdint>
#include <string>

#include "window/map_settings.h"

/// Reads section "map" of `settingsFile` (ANSI, or UTF-16 with a byte-order mark, as the platform
/// reads profile files) after refreshing the administrative switches. An empty path: nothing at
/// all happens. @return the new detail factor in percent for ApplyPerfFactor, or `perfFactor`
/// when nothing was read
std::int32_t ReadMapSettings(const std::wstring& settingsFile, MapSettings& settings,
                             std::int32_t perfFactor);
