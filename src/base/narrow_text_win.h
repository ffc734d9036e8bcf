#pragma once

#include "base/narrow_text.h"
#include "base/windows_types.h"

/// NarrowText for any code page, so that cutting can be seen where the system's own page has one
/// byte a character.
std::int32_t NarrowTextIn(UINT codePage, const wchar_t* text, std::int32_t length, char* buffer,
                          std::int32_t capacity) noexcept;
