#pragma once
// The font of the texts over the globe, in the character set of the user's language.

#include <cstdint>

#ifdef _WIN32
#include "base/handles_win.h"
#endif

/// GDI's number of the character set that belongs to an ANSI code page; 0 for a code page that is
/// unknown and for 1252, the western one.
std::uint8_t CharsetOfCodePage(std::uint32_t codePage) noexcept;

/// The number that a text begins with, as locales spell a code page ("1251"); 0 for a text without
/// leading digits or with a number above 65535, where no code page lies.
std::uint32_t ParseCodePage(const wchar_t* text) noexcept;

#ifdef _WIN32
/// Bits of `styleFlags`.
inline constexpr unsigned kFontItalic = 1;
inline constexpr unsigned kFontUnderline = 2;
inline constexpr unsigned kFontStrikeOut = 4;
inline constexpr unsigned kFontBold = 8;

/// Fills a logical font whose character set follows the user's language.
/// @param width, height  above 0: points; else logical units stored as given
/// @param weight         0..1000; 0 takes bold from `styleFlags`
/// @return false when there is no screen DC
bool MakeLogFont(const wchar_t* faceName, int width, int height, int weight, unsigned styleFlags,
                 LOGFONTW& out) noexcept;

/// The same as a font; null when it cannot be made.
UniqueFont CreateMapFont(const wchar_t* faceName, int width, int height, int weight,
                         unsigned styleFlags) noexcept;
#endif
