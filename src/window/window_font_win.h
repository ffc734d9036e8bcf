#pragma once

#include "base/handles_win.h"

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
