#pragma once

#include <cstdint>
#include <optional>

#include "image/jpeg_header.h"

/// Decides from the header of a map picture whether the picture can be used.
/// @param header  empty when the file is not a readable JPEG
/// @param memory  the machine's total physical memory, bytes
/// @return HORIVO_OK, HORIVO_BAD_PICTURE (unreadable, or larger than a third of the memory) or
///         HORIVO_UNFIT_PICTURE (a side below 16 pixels, or neither 3 nor 4 components)
std::uint32_t CheckMapPicture(const std::optional<JpegSize>& header, std::uint64_t memory) noexcept;
