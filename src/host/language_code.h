#pragma once

#include "base/wide_text.h"

/// The code that language files of a Windows language abbreviation carry in their names: its first
/// two letters in lower case, where they are another code than the international one the latter
/// ("JPN" gives "ja"). Empty when the abbreviation has fewer than two. Throws std::bad_alloc.
WideString LanguageFileCode(WideView abbrev);

/// ASCII letters in lower case.
HorivoWideChar LowerAscii(HorivoWideChar c) noexcept;
