#pragma once

#include <cstdint>
#include <optional>

#include "image/jpeg_header.h"

/// Decides from the header of a map picture whether the picture can be used.
/// @param header  empty when the file is not a readable JPEG
/// @param memory  the machine's total physical memory, bytes
/// @return HORIVO_OK; HORIVO_BAD_PICTURE when `header` is empty or the decoded picture needs more
///         than a third of `memory`; HORIVO_UNFIT_PICTURE when a side is below 16 pixels or there
///         are neither 3 nor 4 components
std::uint32_t CheckMapPicture(const std::optional<JpegSize>& header, std::uint64_t memory) noexcept;
