#include "data/data_folder.h"

#include "windows_api.h"

#include <shlobj.h>

namespace {

constexpr DWORD kPathSize = 1024;  // characters; GetModuleFileName cuts a longer path

/// "<common application data>\Zelmo", which all users share; empty when Windows knows no such
/// folder.
std::wstring CommonFolder() {
    wchar_t common[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr,
                                SHGFP_TYPE_CURRENT, common))) {
        return {};
    }
    return std::wstring(common) + L"\\Zelmo";
}

/// The library's data folder, created when it is missing; empty when that fails.
std::wstring DataFolder() {
    const std::wstring common = CommonFolder();
    if (common.empty()) return {};
    const std::wstring folder = common + L"\\Horivo";
    const int made = SHCreateDirectoryExW(nullptr, folder.c_str(), nullptr);
    if (made != ERROR_SUCCESS && made != ERROR_ALREADY_EXISTS && made != ERROR_FILE_EXISTS) {
        return {};
    }
    return folder + L'\\';
}

}  // namespace

std::wstring ProgramFolder() {
    wchar_t path[kPathSize] = {};
    GetModuleFileNameW(nullptr, path, kPathSize);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\') + 1);
}

std::string ReadWholeFile(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::string bytes;
    char block[4096];
    DWORD count = 0;
    while (ReadFile(file, block, sizeof block, &count, nullptr) && count > 0) {
        bytes.append(block, count);
    }
    CloseHandle(file);
    return bytes;
}

MapPicture PrepareMapPicture(const std::wstring& source) {
    const std::wstring folder = DataFolder();
    if (folder.empty()) return MapPicture::Failed;
    const std::wstring picture = folder + L"map.jpg";
    if (GetFileAttributesW(picture.c_str()) != INVALID_FILE_ATTRIBUTES) return MapPicture::Present;
    // TRUE: fails when the picture exists, because another process may have copied it meanwhile.
    if (CopyFileW(source.c_str(), picture.c_str(), TRUE)) return MapPicture::Copied;
    return GetLastError() == ERROR_FILE_EXISTS ? MapPicture::Present : MapPicture::Failed;
}

std::wstring PhotoFolder() { return CommonFolder() + L"\\City Photos\\"; }
