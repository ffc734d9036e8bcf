#pragma once
// The languages that the program has texts for.

#include <cstdint>
#include <span>
#include <string>

struct Language {
    std::uint32_t command;        ///< of its menu item
    const wchar_t* abbreviation;  ///< of Windows ("DEU"), as SetLanguage takes it
    const wchar_t* code;          ///< of ISO 639 ("de")
};

/// What the user can choose. The first one stands for the language of Windows; its abbreviation and
/// its code are empty.
std::span<const Language> Languages();

/// The choice with this abbreviation, in any case; the first one when there is none.
const Language& FindLanguage(const std::wstring& abbreviation);

/// The language of the texts after this choice: never the first one, but English when the program
/// has no texts in the language of Windows.
const Language& LanguageOfTexts(const Language& choice);

/// Makes a language that has an abbreviation the one of the services.
void SetTextLanguage(const Language& language);
