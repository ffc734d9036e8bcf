#pragma once

#include <cstdint>

#include "horivo_map.h"

/// Converts UTF-16 text to the system's ANSI code page.
/// @param text      may be null
/// @param length    characters to convert; below 0: all up to the terminator
/// @param buffer    gets the bytes and always a terminator
/// @param capacity  bytes in `buffer`, at least 1; text that does not fit is truncated after a
///          whole character
/// @return bytes written without the terminator; 0 for null, empty or unconvertible text
std::int32_t NarrowText(const HorivoWideChar* text, std::int32_t length, char* buffer,
                        std::int32_t capacity) noexcept;

/// Does the same as NarrowText for the code page with this Windows number.
std::int32_t NarrowTextIn(std::uint32_t codePage, const HorivoWideChar* text, std::int32_t length,
                          char* buffer, std::int32_t capacity) noexcept;
