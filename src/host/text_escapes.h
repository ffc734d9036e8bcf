#pragma once

#include <cstdint>

#include "horivo_map.h"

/// Resolves the escapes of a text of a language file in place: "\\" a backslash, "\n" a line feed,
/// "\r" a carriage return; the two oddities stand in the source.
/// @param length  characters to read at most; below 0: to the terminator
/// @return the new length, never above the old one. The result is terminated wherever it is shorter
///         than what was read.
std::int32_t Unescape(HorivoWideChar* text, std::int32_t length) noexcept;
