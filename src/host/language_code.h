#pragma once

#include <array>

#include "horivo_map.h"

/// The two letters that identify a language in file names, with a terminator.
using LanguageCode = std::array<HorivoWideChar, 3>;

/// The code for a Windows language abbreviation: its first two letters in lower case, except for
/// the eleven languages in kCodePairs, which have another code ("JPN" gives "ja"). Empty when the
/// abbreviation has fewer than two characters.
LanguageCode LanguageFileCode(const HorivoWideChar* abbrev) noexcept;

/// Returns `c` in lower case when it is an ASCII letter, otherwise unchanged.
HorivoWideChar LowerAscii(HorivoWideChar c) noexcept;
