// Choosing the language: locale, names of days and months, language file, unit words.

#include <algorithm>

#include "base/windows_types.h"
#include "host/lang_record_win.h"
#include "host/language_code.h"
#include "host/unit_words.h"

HorivoWideChar dayNames[7][24] = {};
HorivoWideChar monthNames[12][24] = {};

namespace {

// Sizes of texts in characters. The capacities include the terminator.
constexpr std::size_t kNameChars = 16;             // longer names of days and months are truncated
constexpr int kLocaleNameCapacity = 80 + 1;        // Windows has no longer name of a day or month
constexpr int kAbbrevCapacity = 6 + 1;             // a locale with a longer abbreviation is skipped
constexpr std::int32_t kUnitTableCapacity = 3072;  // the text from which a unit table is read

void StoreName(HorivoWideChar* field, LCID locale, LCTYPE which) noexcept {
    wchar_t name[kLocaleNameCapacity] = {};
    GetLocaleInfoW(locale, which, name, kLocaleNameCapacity);
    StoreText(field, name, kNameChars);
}

void StoreDayAndMonthNames(LCID locale) noexcept {
    // The first day of Windows is Monday; the first day of dayNames is Sunday.
    for (LCTYPE i = 0; i < 6; ++i) StoreName(dayNames[i + 1], locale, LOCALE_SDAYNAME1 + i);
    StoreName(dayNames[0], locale, LOCALE_SDAYNAME7);
    for (LCTYPE i = 0; i < 12; ++i) StoreName(monthNames[i], locale, LOCALE_SMONTHNAME1 + i);
}

void LoadUnitTables() noexcept {
    CLangFile& file = MutableLangFile();
    for (std::uint32_t table = 0; table < kUnitTables; ++table) {
        if (file.unitStringIds[table] == 0) continue;
        wchar_t text[kUnitTableCapacity];
        LoadLocalString(file.resourceModule, file.unitStringIds[table], text, kUnitTableCapacity);
        ParseUnitTable(file, table, text);
    }
}

/// The abbreviation that the callbacks below search for, the locale that they have found, and
/// whether any installed locale has the abbreviation.
struct LocaleSearch {
    const wchar_t* abbrev;
    LCID found = LOCALE_USER_DEFAULT;
    bool exists = false;
};

LocaleSearch& SearchOf(LPARAM parameter) noexcept {
    return *reinterpret_cast<LocaleSearch*>(parameter);
}

BOOL CALLBACK CompareLocale(LGRPID, LCID locale, wchar_t*, LONG_PTR parameter) noexcept {
    LocaleSearch& search = SearchOf(parameter);
    wchar_t abbrev[kAbbrevCapacity];
    if (GetLocaleInfoW(locale, LOCALE_SABBREVLANGNAME, abbrev, kAbbrevCapacity) == 0) return TRUE;
    if (lstrcmpiW(abbrev, search.abbrev) != 0) return TRUE;
    search.found = locale;
    return FALSE;  // ends the enumeration of the locales in this language group
}

BOOL CALLBACK SearchGroup(LGRPID group, wchar_t*, wchar_t*, DWORD, LONG_PTR parameter) noexcept {
    EnumLanguageGroupLocalesW(CompareLocale, group, 0, parameter);
    // Deliberate: the search goes on after a match. When several language groups have a locale with
    // the abbreviation, the locale of the last group is found.
    return TRUE;
}

BOOL CALLBACK CompareLocaleName(wchar_t* name, DWORD, LPARAM parameter) noexcept {
    LocaleSearch& search = SearchOf(parameter);
    wchar_t abbrev[kAbbrevCapacity];
    search.exists = GetLocaleInfoEx(name, LOCALE_SABBREVLANGNAME, abbrev, kAbbrevCapacity) != 0 &&
                    lstrcmpiW(abbrev, search.abbrev) == 0;
    return search.exists ? FALSE : TRUE;
}

}  // namespace

std::uint32_t FindLocaleForAbbrev(const HorivoWideChar* abbrev) noexcept {
    LocaleSearch search = {abbrev};
    if (abbrev == nullptr) return search.found;
    const auto parameter = reinterpret_cast<LPARAM>(&search);
    // Under Wine, the enumeration of the language groups lasts a quarter of a second, so the code
    // enumerates the groups only when a locale with this abbreviation exists. The enumeration of
    // the locales, which is fast, checks this first. Every host starts with "en", which no locale
    // has as its abbreviation, so no start waits for the groups.
    EnumSystemLocalesEx(CompareLocaleName, LOCALE_ALL, parameter, nullptr);
    if (search.exists) EnumSystemLanguageGroupsW(SearchGroup, LGRPID_INSTALLED, parameter);
    return search.found;
}

void SetLanguage(const HorivoWideChar* abbrev) noexcept {
    CLangFile& file = MutableLangFile();
    StoreText(file.langAbbrev, ViewOf(abbrev), kLangAbbrevChars);
    std::ranges::transform(file.langAbbrev, file.langAbbrev, LowerAscii);
    file.langId =
        file.langAbbrev[0] != L'\0' ? FindLocaleForAbbrev(file.langAbbrev) : LOCALE_USER_DEFAULT;
    SetThreadLocale(file.langId);
    StoreDayAndMonthNames(file.langId);
    if (!FindLanguageFile(file.langAbbrev, file.langFilePath)) file.langFilePath[0] = L'\0';
    if (file.resourceModule != nullptr) LoadUnitTables();
}

void SetResources(HINSTANCE__* module, const std::uint32_t* ids) noexcept {
    CLangFile& file = MutableLangFile();
    file.resourceModule = module;
    for (std::uint32_t i = 0; i < kUnitTables; ++i) {
        file.unitStringIds[i] = ids != nullptr ? ids[i] : 0;
    }
}

const HorivoWideChar* GetUnitWord(std::uint32_t table, std::uint32_t number) noexcept {
    return UnitWord(LangFile(), table, number);
}
