#include "language.h"

#include "resource_ids.h"
#include "windows_api.h"

namespace {

constexpr Language kLanguages[] = {
    {IDM_LANGUAGE_ENGLISH, L"ENU"}, {IDM_LANGUAGE_GERMAN, L"DEU"},  {IDM_LANGUAGE_SPANISH, L"ESN"},
    {IDM_LANGUAGE_FRENCH, L"FRA"},  {IDM_LANGUAGE_RUSSIAN, L"RUS"}, {IDM_LANGUAGE_JAPANESE, L"JPN"},
};
constexpr int kAbbreviationSize = 16;  // characters; Windows uses 3 or 4 and a terminator
constexpr int kLanguageChars = 2;      // of an abbreviation; its last letter stands for the country

/// Compares the first `count` characters (-1: all) without regard to case.
bool Same(const wchar_t* a, const wchar_t* b, int count) {
    return CompareStringOrdinal(a, count, b, count, TRUE) == CSTR_EQUAL;
}

}  // namespace

std::span<const Language> Languages() { return kLanguages; }

const Language& FindLanguage(const std::wstring& abbreviation) {
    for (const Language& language : kLanguages) {
        if (Same(language.abbreviation, abbreviation.c_str(), -1)) return language;
    }
    wchar_t users[kAbbreviationSize] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, users, kAbbreviationSize);
    for (const Language& language : kLanguages) {
        if (users[0] != L'\0' && Same(language.abbreviation, users, kLanguageChars))
            return language;
    }
    return kLanguages[0];
}
