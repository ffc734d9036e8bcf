// Finds the language files.

#include <cstdio>

#include "base/windows_types.h"
#include "host/lang_record_win.h"
#include "host/language_code.h"

namespace {

constexpr wchar_t kFallbackLanguage[] = L"en";

bool IsFile(const wchar_t* path) noexcept {
    const DWORD attributes = GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// Writes the path of a language's file into `field`, or an empty text when there is no such file.
/// @return whether the file exists
bool Refresh(HorivoWideChar* field, const wchar_t* abbrev) noexcept {
    const bool found = FindLanguageFile(abbrev, field);
    if (!found) field[0] = L'\0';
    return found;
}

bool RefreshBoth() noexcept {
    CLangFile& file = MutableLangFile();
    Refresh(file.langFilePath, file.langAbbrev);
    return Refresh(file.fallbackFilePath, kFallbackLanguage);
}

/// The code of a language in file names; an empty abbreviation means the current locale.
LanguageCode CodeOf(const wchar_t* abbrev) noexcept {
    if (*abbrev != L'\0') return LanguageFileCode(abbrev);
    wchar_t isoName[kLangAbbrevChars + 1] = {};
    GetLocaleInfoW(LangFile().langId, LOCALE_SISO639LANGNAME, isoName, kLangAbbrevChars + 1);
    return LanguageFileCode(isoName);
}

}  // namespace

bool FindLanguageFile(const HorivoWideChar* abbrev, HorivoWideChar* outPath) noexcept {
    if (outPath == nullptr) return false;
    outPath[0] = L'\0';
    const CLangFile& file = LangFile();
    if (file.baseName[0] == L'\0') return false;
    const LanguageCode code = CodeOf(abbrev != nullptr ? abbrev : file.langAbbrev);
    const wchar_t* separator = ViewOf(file.directory).ends_with(L'\\') ? L"" : L"\\";
    const int length =
        std::swprintf(outPath, kLangPathChars + 1, L"%ls%ls%ls_%ls%ls", file.directory, separator,
                      file.baseName, code.data(), file.extension);
    // When the path is longer than kLangPathChars, swprintf returns a negative number in some C
    // libraries, and the length of the whole path in others.
    if (length < 0 || length > kLangPathChars) {
        outPath[0] = L'\0';
        return false;
    }
    return IsFile(outPath);
}

bool SetDirectory(const HorivoWideChar* path) noexcept {
    StoreText(MutableLangFile().directory, ViewOf(path), kLangPathChars);
    return RefreshBoth();
}

bool SetBaseName(const HorivoWideChar* name) noexcept {
    StoreText(MutableLangFile().baseName, ViewOf(name), kLangBaseNameChars);
    return RefreshBoth();
}

bool SetExtension(const HorivoWideChar* extension) noexcept {
    StoreText(MutableLangFile().extension, ViewOf(extension), kLangExtensionChars);
    return RefreshBoth();
}
