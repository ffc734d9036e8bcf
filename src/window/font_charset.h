#pragma once

#include <cstdint>

/// GDI's number of the character set that belongs to an ANSI code page; 0 for a code page that is
/// unknown and for 1252, the western one.
std::uint8_t CharsetOfCodePage(std::uint32_t codePage) noexcept;

/// The number that a text begins with, as locales spell a code page ("1251"); 0 for a text without
/// leading digits or with a number above 65535, where no code page lies.
std::uint32_t ParseCodePage(const wchar_t* text) noexcept;
