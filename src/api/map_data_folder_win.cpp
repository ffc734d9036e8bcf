#include "api/map_data_folder_win.h"

#include "base/common_app_data_win.h"
#include "base/windows_types.h"

namespace {

constexpr const wchar_t* kFolderLevels[] = {L"\\Zelmo", L"\\Horivo"};

/// Makes the folder `path`, unless there is one. @return whether the folder exists now
bool MakeFolder(const std::wstring& path) noexcept {
    if (CreateDirectoryW(path.c_str(), nullptr)) return true;
    // The error code does not show whether the folder exists: for the root of a drive the code is
    // "access denied", and for a file of this name the code is "already exists".
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
    for (const wchar_t* level : kFolderLevels) {
        path += level;
        if (path.size() + 1 >= MAX_PATH || !MakeFolder(path)) return {};
    }
    return path + L'\\';
}

std::wstring MapDataDirectory() { return DataDirectoryBelow(CommonAppDataFolder()); }
