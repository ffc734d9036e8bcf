#pragma once
// The languages that the program has texts for.

#include <cstdint>
#include <span>
#include <string>

struct Language {
    std::uint32_t command;        ///< command of its menu item
    const wchar_t* abbreviation;  ///< Windows abbreviation ("DEU") for SetLanguage
    const wchar_t* code;          ///< ISO 639 code ("de")
};

/// The languages that the user can choose. The first choice means the language of Windows; its
/// abbreviation and its code are empty.
std::span<const Language> Languages();

/// The choice with this abbreviation, in upper or lower case; the first choice when there is none.
const Language& FindLanguage(const std::wstring& abbreviation);

/// The language in which the texts are shown when the user has chosen `choice`. For the first
/// choice this is the language of Windows, or English when the program has no texts in that
/// language.
const Language& LanguageOfTexts(const Language& choice);

/// Passes the language to SetLanguage. It must have an abbreviation, so it cannot be the first
/// choice.
void SetTextLanguage(const Language& language);
