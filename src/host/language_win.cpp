// Choosing the language: locale, names of days and months, language file, unit words.

#include <algorithm>

#include "base/windows_types.h"
#include "host/lang_record_win.h"
#include "host/language_code.h"
#include "host/unit_words.h"

HorivoWideChar dayNames[7][24] = {};
HorivoWideChar monthNames[12][24] = {};

namespace {

constexpr std::size_t kNameChars = 16;         // of a day or month
constexpr int kLocaleNameRoom = 80 + 1;        // characters; no locale has longer names
constexpr int kAbbrevRoom = 6 + 1;             // characters of an abbreviation that is compared
constexpr std::int32_t kUnitTableRoom = 3072;  // characters of a unit table's text

void StoreName(HorivoWideChar* field, LCID locale, LCTYPE which) noexcept {
    wchar_t name[kLocaleNameRoom] = {};
    GetLocaleInfoW(locale, which, name, kLocaleNameRoom);
    StoreText(field, name, kNameChars);
}

void StoreDayAndMonthNames(LCID locale) noexcept {
    // Windows begins its week on Monday.
    for (LCTYPE i = 0; i < 6; ++i) StoreName(dayNames[i + 1], locale, LOCALE_SDAYNAME1 + i);
    StoreName(dayNames[0], locale, LOCALE_SDAYNAME7);
    for (LCTYPE i = 0; i < 12; ++i) StoreName(monthNames[i], locale, LOCALE_SMONTHNAME1 + i);
}

void LoadUnitTables() noexcept {
    CLangFile& file = MutableLangFile();
    for (std::uint32_t table = 0; table < kUnitTables; ++table) {
        if (file.unitStringIds[table] == 0) continue;
        wchar_t text[kUnitTableRoom];
        LoadLocalString(file.resourceModule, file.unitStringIds[table], text, kUnitTableRoom);
        ParseUnitTable(file, table, text);
    }
}

/// What the enumerations of locales look for and find.
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
    wchar_t abbrev[kAbbrevRoom];
    if (GetLocaleInfoW(locale, LOCALE_SABBREVLANGNAME, abbrev, kAbbrevRoom) == 0) return TRUE;
    if (lstrcmpiW(abbrev, search.abbrev) != 0) return TRUE;
    search.found = locale;
    return FALSE;  // the rest of this group does not matter
}

BOOL CALLBACK SearchGroup(LGRPID group, wchar_t*, wchar_t*, DWORD, LONG_PTR parameter) noexcept {
    EnumLanguageGroupLocalesW(CompareLocale, group, 0, parameter);
    return TRUE;  // Deliberate: a match in a later group replaces this one's.
}

BOOL CALLBACK CompareLocaleName(wchar_t* name, DWORD, LPARAM parameter) noexcept {
    LocaleSearch& search = SearchOf(parameter);
    wchar_t abbrev[kAbbrevRoom];
    search.exists = GetLocaleInfoEx(name, LOCALE_SABBREVLANGNAME, abbrev, kAbbrevRoom) != 0 &&
                    lstrcmpiW(abbrev, search.abbrev) == 0;
    return search.exists ? FALSE : TRUE;
}

}  // namespace

std::uint32_t FindLocaleForAbbrev(const HorivoWideChar* abbrev) noexcept {
    LocaleSearch search = {abbrev};
    if (abbrev == nullptr) return search.found;
    const auto parameter = reinterpret_cast<LPARAM>(&search);
    // Wine: a walk through the groups takes a quarter of a second. An abbreviation that no locale
    // has, as the "en" that every host starts with, need not wait for it.
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
