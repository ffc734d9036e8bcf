#pragma once
// The font of the texts over the globe, in the character set of the user's language.

#include <cstdint>

#ifdef _WIN32
#include "base/handles_win.h"
#endif

/// GDI's number of the character set for an ANSI code page; 0 for 1252 (western) and for an unknown
/// code page.
std::uint8_t CharsetOfCodePage(std::uint32_t codePage) noexcept;

/// Reads a code page from the text of a locale, such as "1251": the number at the start of the
/// text. 0 when there are no digits or when the number is above 65535, the largest code page.
std::uint32_t ParseCodePage(const wchar_t* text) noexcept;

#ifdef _WIN32
// Bits of the parameter `styleFlags` below.
inline constexpr unsigned kFontItalic = 1;
inline constexpr unsigned kFontUnderline = 2;
inline constexpr unsigned kFontStrikeOut = 4;
inline constexpr unsigned kFontBold = 8;

/// Describes a font in the character set of the user's language.
/// @param width, height  above 0: points; otherwise logical units, which are stored unchanged
/// @param weight         0 to 1000; 0: `styleFlags` decide whether the font is bold
/// @return false when there is no screen DC
bool MakeLogFont(const wchar_t* faceName, int width, int height, int weight, unsigned styleFlags,
                 LOGFONTW& out) noexcept;

/// Creates the font that MakeLogFont describes; null on failure.
UniqueFont CreateMapFont(const wchar_t* faceName, int width, int height, int weight,
                         unsigned styleFlags) noexcept;
#endif
