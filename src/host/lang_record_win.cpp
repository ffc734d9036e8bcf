#include "host/lang_record_win.h"

#include <algorithm>

#include "base/wide_text.h"
#include "base/windows_types.h"
#include "host/language_code.h"
#include "host/program_path_win.h"

namespace {

// The initial base name is the program's name, truncated to this number of characters. SetBaseName
// accepts 64 characters.
constexpr std::size_t kInitialBaseNameChars = 63;

void Clear(CLangFile& file) noexcept {
    file.langFilePath[0] = L'\0';
    file.fallbackFilePath[0] = L'\0';
    file.resourceModule = nullptr;
    std::ranges::fill(file.unitStringIds, 0U);
    std::ranges::fill(file.unitCount, std::uint16_t{0});
    for (auto& buffer : file.unitBuffer) buffer[0] = L'\0';
}

void StoreUserAbbrev(CLangFile& file) noexcept {
    if (GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, file.langAbbrev,
                       kLangAbbrevChars + 1) == 0) {
        file.langAbbrev[0] = L'\0';
    }
    std::ranges::transform(file.langAbbrev, file.langAbbrev, LowerAscii);
}

void StoreProgram(CLangFile& file) noexcept {
    const auto [folder, fileName] = FindProgramPath();
    StoreText(file.directory, folder, kLangPathChars);
    StoreText(file.baseName, fileName.substr(0, fileName.find_last_of(L'.')),
              kInitialBaseNameChars);
}

void Initialise(CLangFile& file) noexcept {
    Clear(file);
    file.langId = LOCALE_USER_DEFAULT;
    StoreText(file.extension, L".ini", kLangExtensionChars);
    StoreUserAbbrev(file);
    StoreProgram(file);
}

}  // namespace

CLangFile& MutableLangFile() noexcept {
    struct InitialFile : CLangFile {
        InitialFile() noexcept : CLangFile() { Initialise(*this); }
    };
    static InitialFile file;
    return file;
}

void StoreText(HorivoWideChar* field, std::wstring_view text, std::size_t maxChars) noexcept {
    const WideView cut = Truncate(text, maxChars);
    std::wmemmove(field, cut.data(), cut.size());
    field[cut.size()] = L'\0';
}

const CLangFile& LangFile() noexcept { return MutableLangFile(); }

void InitLangFile() noexcept { Initialise(MutableLangFile()); }

std::uint32_t GetLanguageId() noexcept { return LangFile().langId; }
