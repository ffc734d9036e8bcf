#pragma once
// The languages that the program speaks.

#include <cstdint>
#include <span>
#include <string>

struct Language {
    std::uint32_t command;        ///< in the menu
    const wchar_t* abbreviation;  ///< Windows' own, as SetLanguage takes it
};

std::span<const Language> Languages();

/// What `abbreviation` stands for, else the user's own language when it is among them, else
/// English.
const Language& FindLanguage(const std::wstring& abbreviation);
