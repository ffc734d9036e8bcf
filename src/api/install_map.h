#pragma once

#include <cstdint>
#include <optional>

#include "image/jpeg_header.h"

struct MapState;

/// Judges a map picture by its header.
/// @param header  empty when the file is not a readable JPEG
/// @param memory  the machine's total physical memory, bytes
/// @return HORIVO_OK, HORIVO_BAD_PICTURE (unreadable, or above a third of the memory) or
///         HORIVO_UNFIT_PICTURE (a side below 16 pixels, or neither 3 nor 4 components)
std::uint32_t CheckMapPicture(const std::optional<JpegSize>& header, std::uint64_t memory) noexcept;

/// Checks a newly installed map picture: its header, a pristine copy, and with a hidden window
/// whether it becomes textures on this machine. @return a result code
std::uint32_t RunInstallMap(MapState& map);
