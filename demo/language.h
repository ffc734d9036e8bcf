#pragma once
// The languages that the program has texts for.

#include <cstdint>
#include <span>
#include <string>

struct Language {
    std::uint32_t command;        ///< of its menu item
    const wchar_t* abbreviation;  ///< of Windows ("DEU"), as SetLanguage takes it
};

std::span<const Language> Languages();

/// The language with this abbreviation, in any case; when there is none, the language of the
/// user's Windows; when the program has no texts for that, English.
const Language& FindLanguage(const std::wstring& abbreviation);
