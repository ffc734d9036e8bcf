#pragma once

#include <array>

#include "horivo_map.h"

/// A language's code in file names, terminated.
using LanguageCode = std::array<HorivoWideChar, 3>;

/// The code for a Windows language abbreviation: its first two letters in lower case, or the
/// international code where that is another one ("JPN" gives "ja"). Empty when the abbreviation has
/// fewer than two characters.
LanguageCode LanguageFileCode(const HorivoWideChar* abbrev) noexcept;

/// ASCII letters in lower case.
HorivoWideChar LowerAscii(HorivoWideChar c) noexcept;
