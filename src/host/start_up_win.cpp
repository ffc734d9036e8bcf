// StartHostServices, which a host of the map calls when it starts.

#include <string_view>

#include "base/windows_types.h"
#include "host/lang_record_win.h"
#include "host/program_path_win.h"

namespace {

constexpr std::wstring_view kModuleName = L"res_en.dll";
// Identifiers of the strings in the module that have the words for seconds, minutes, hours, days
// and weeks.
constexpr std::uint32_t kUnitIds[kUnitTables] = {257, 258, 259, 260, 261};

/// Loads the resource module as data, because the module has no code. The module stays loaded until
/// the process ends.
HMODULE LoadResources() noexcept {
    const std::wstring_view folder = FindProgramPath().folder;
    wchar_t path[kLangPathChars + 1];
    if (folder.empty() || folder.size() + kModuleName.size() > kLangPathChars) return nullptr;
    StoreText(path, folder, kLangPathChars);
    StoreText(path + folder.size(), kModuleName, kModuleName.size());
    return LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
}

bool StartOnce() noexcept {
    SetResources(LoadResources(), kUnitIds);
    SetLanguage(L"en");
    return LangFile().resourceModule != nullptr;
}

}  // namespace

bool StartHostServices() noexcept {
    static const bool hasResources = StartOnce();
    return hasResources;
}
