#pragma once

#include <cstdint>

/// The administrative switches: REG_DWORD values under HKEY_LOCAL_MACHINE "Software\Zelmo\Horivo"
/// (64-bit view). A value that exists, is 4 bytes long and non-zero sets its bit.
inline constexpr std::uint32_t kNoUpdates = 0x01;
inline constexpr std::uint32_t kNoNews = 0x02;
inline constexpr std::uint32_t kNoPhotos = 0x04;
inline constexpr std::uint32_t kNoPreferences = 0x08;
inline constexpr std::uint32_t kNoTimeTable = 0x10;
inline constexpr std::uint32_t kLogging = 0x20;

/// Reads the switches from the registry; 0 when the key cannot be opened.
void ReadAdminFlags() noexcept;

/// The mask as last read, 0 before. Written by the thread that reads the settings.
std::uint32_t AdminFlags() noexcept;

/// Whether none of `bits` is set.
bool IsFeatureEnabled(std::uint32_t bits) noexcept;
