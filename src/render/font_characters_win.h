#pragma once

#include "base/windows_types.h"

/// Number of display lists that carry a glyph: codes 0 to 254.
/// Deliberate: 255 gets none, though 256 names are kept and 256 codes are measured.
inline constexpr unsigned kGlyphCount = 255;

/// The character that the list of `code` shows, so that a text in `codePage` reads right. It is
/// the Unicode character of the same number, except for the codes 128 to 254 of a single-byte code
/// page that mean another character there. 0xB0 stays the degree sign in every language, because
/// the coordinate readout writes it so. For a code page with characters of several bytes nothing is
/// changed: one list a byte cannot show them.
wchar_t CharacterOfCode(UINT codePage, unsigned code) noexcept;
