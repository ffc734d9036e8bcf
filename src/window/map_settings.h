#pragma once

#include <cstdint>
#include <string>

/// Settings of section "map" of "horivo.ini". The fourth, the detail factor, is in LevelOfDetail.
struct MapSettings {
    std::int32_t texScalerX = 0;      ///< base-2 exponent on the texture width limit, [-3, 2]
    std::int32_t texScalerY = -1;     ///< the same for the height, [-3, 1]; -1 suits the 2:1 map
    std::int32_t texCompression = 0;  ///< 1: ask GL for compressed tiles
};

/// The four numbers as the file has them.
struct RawSettings {
    std::int32_t texScalerX = 0;
    std::int32_t texScalerY = 0;
    std::int32_t texCompression = 0;
    std::int32_t lagFactor = 0;  ///< detail factor in hundreds of percent
};

/// The present settings in the form of the file: a key that is missing keeps its present value.
RawSettings CurrentSettings(const MapSettings& settings, std::int32_t factor) noexcept;

/// Stores the numbers of a file, clamped to their ranges.
/// @return the detail factor in percent, [0, 800], for LevelOfDetail::Apply, which clamps to [50,
/// 800]
std::int32_t TakeSettings(const RawSettings& raw, MapSettings& settings) noexcept;

/// Reads the administrative switches again, then section "map" of `settingsFile` (ANSI, or UTF-16
/// with a byte-order mark). Does nothing when the path is empty.
/// @param factor  the present detail factor, percent
/// @return the new detail factor in percent, for LevelOfDetail::Apply; `factor` when nothing was
/// read
std::int32_t ReadMapSettings(const std::wstring& settingsFile, MapSettings& settings,
                             std::int32_t factor);
