#pragma once

#include <cstdint>
#include <string>

/// The four settings of section "map" as they are kept.
struct MapSettings {
    std::int32_t texScalerX = 0;      ///< base-2 exponent on the texture width limit, [-3, 2]
    std::int32_t texScalerY = -1;     ///< the same for the height, [-3, 1]; -1 suits the 2:1 map
    std::int32_t texCompression = 0;  ///< 1: ask GL for compressed tiles
};

/// The four numbers as they stand in the file.
struct RawSettings {
    std::int32_t texScalerX = 0;
    std::int32_t texScalerY = 0;
    std::int32_t texCompression = 0;
    std::int32_t lagFactor = 0;  ///< detail factor in hundreds of percent
};

/// What a missing key stands for: the value held.
RawSettings CurrentSettings(const MapSettings& settings, std::int32_t perfFactor) noexcept;

/// Takes the numbers of a file, clamped to their ranges.
/// @return the detail factor in percent, [0, 800], for ApplyPerfFactor (which clamps to [50, 800])
std::int32_t TakeSettings(const RawSettings& raw, MapSettings& settings) noexcept;

/// Reads section "map" of `settingsFile` (ANSI, or UTF-16 with a byte-order mark, as the platform
/// reads profile files) after refreshing the administrative switches. An empty path: nothing at
/// all happens. @return the new detail factor in percent for ApplyPerfFactor, or `perfFactor`
/// when nothing was read
std::int32_t ReadMapSettings(const std::wstring& settingsFile, MapSettings& settings,
                             std::int32_t perfFactor);
