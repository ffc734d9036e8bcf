#include "language.h"

#include <algorithm>

#include "horivo_host.h"
#include "resource_ids.h"
#include "windows_api.h"

namespace {

constexpr Language kLanguages[] = {
    {IDM_LANGUAGE_WINDOWS, L"", L""},       {IDM_LANGUAGE_ENGLISH, L"ENU", L"en"},
    {IDM_LANGUAGE_GERMAN, L"DEU", L"de"},   {IDM_LANGUAGE_SPANISH, L"ESN", L"es"},
    {IDM_LANGUAGE_FRENCH, L"FRA", L"fr"},   {IDM_LANGUAGE_RUSSIAN, L"RUS", L"ru"},
    {IDM_LANGUAGE_JAPANESE, L"JPN", L"ja"},
};
constexpr const Language& kAsWindows = kLanguages[0];
constexpr const Language& kEnglish = kLanguages[1];

/// The first language for which `holds` returns true; `otherwise` when there is none.
template <class Condition>
const Language& Find(Condition holds, const Language& otherwise) {
    const auto* const found = std::ranges::find_if(kLanguages, holds);
    return found != std::end(kLanguages) ? *found : otherwise;
}

/// The ISO 639 code of a locale's language.
std::wstring CodeOf(LCID locale) {
    wchar_t code[16] = {};
    GetLocaleInfoW(locale, LOCALE_SISO639LANGNAME, code, 16);
    return code;
}

}  // namespace

std::span<const Language> Languages() { return kLanguages; }

const Language& FindLanguage(const std::wstring& abbreviation) {
    return Find(
        [&](const Language& language) {
            return CompareStringOrdinal(language.abbreviation, -1, abbreviation.c_str(), -1,
                                        TRUE) == CSTR_EQUAL;
        },
        kAsWindows);
}

const Language& LanguageOfTexts(const Language& choice) {
    if (&choice != &kAsWindows) return choice;
    const std::wstring code = CodeOf(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT));
    return Find([&](const Language& language) { return code == language.code; }, kEnglish);
}

void SetTextLanguage(const Language& language) {
    // Passes null for the user's own language: SetLanguage then need not search through all
    // locales.
    SetLanguage(CodeOf(LOCALE_USER_DEFAULT) == language.code ? nullptr : language.abbreviation);
}
