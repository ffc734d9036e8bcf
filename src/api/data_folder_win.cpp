#include "api/data_folder_win.h"

#include "base/common_folder_win.h"
#include "base/windows_types.h"

namespace {

constexpr const wchar_t* kLevels[] = {L"\\Zelmo", L"\\Horivo"};

/// Whether `path` is a folder, or became one now.
bool MakeFolder(const std::wstring& path) noexcept {
    if (CreateDirectoryW(path.c_str(), nullptr)) return true;
    // The call's own answer for "it exists" is no proof: a drive's root says "access denied", and
    // a file of that name says "exists".
    const DWORD error = GetLastError();
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return true;
    }
    SetLastError(error);
    return false;
}

}  // namespace

std::wstring DataDirectoryBelow(const std::wstring& commonFolder) {
    if (commonFolder.empty()) return {};
    std::wstring path = commonFolder;
    for (const wchar_t* level : kLevels) {
        path += level;
        if (path.size() + 1 >= MAX_PATH || !MakeFolder(path)) return {};
    }
    return path + L'\\';
}

std::wstring MapDataDirectory() { return DataDirectoryBelow(CommonAppDataFolder()); }
