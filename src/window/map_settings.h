#pragma once

#include <cstdint>
#include <string>

/// Three of the four settings in section "map" of "horivo.ini". The fourth setting, the detail
/// factor, is in LevelOfDetail.
struct MapSettings {
    /// The width limit of the map picture is multiplied by 2 to the power of this number, [-3, 2].
    std::int32_t texScalerX = 0;
    /// The same for the height limit, [-3, 1]. The default is -1, because the map is twice as wide
    /// as high.
    std::int32_t texScalerY = -1;
    std::int32_t texCompression = 0;  ///< 1: ask GL for compressed tiles
};

/// The four numbers in the form of the file, before they are clamped.
struct RawSettings {
    std::int32_t texScalerX = 0;
    std::int32_t texScalerY = 0;
    std::int32_t texCompression = 0;
    std::int32_t lagFactor = 0;  ///< detail factor in hundreds of percent
};

/// Converts the current settings to the form of the file. ReadMapSettings uses the result for keys
/// that the file does not contain.
RawSettings CurrentSettings(const MapSettings& settings, std::int32_t factor) noexcept;

/// Stores the numbers of a file, clamped to their ranges.
/// @return the detail factor, [0, 800] percent. LevelOfDetail::Apply clamps it to [50, 800]
std::int32_t StoreSettings(const RawSettings& raw, MapSettings& settings) noexcept;

/// Reads the switches in the registry again (ReadAdminFlags), then section "map" of `settingsFile`
/// (ANSI, or UTF-16 with a byte-order mark). Does nothing when the path is empty.
/// @param factor  the current detail factor, percent
/// @return the new detail factor in percent, for LevelOfDetail::Apply; `factor` itself when the
/// path is empty
std::int32_t ReadMapSettings(const std::wstring& settingsFile, MapSettings& settings,
                             std::int32_t factor);
