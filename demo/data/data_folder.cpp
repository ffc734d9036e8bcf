#include "data/data_folder.h"

#include "windows_api.h"

#include <shlobj.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

constexpr DWORD kPathSize = 1024;  // characters; GetModuleFileName truncates a longer path
constexpr wchar_t kByteOrderMark = L'\xFEFF';

/// "<common application data>\Zelmo\", which all users share.
std::wstring CommonFolder() {
    wchar_t common[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                     common);
    return std::wstring(common) + L"\\Zelmo\\";
}

}  // namespace

std::wstring ProgramFolder() {
    wchar_t path[kPathSize] = {};
    GetModuleFileNameW(nullptr, path, kPathSize);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\') + 1);
}

std::wstring MapFolder() { return CommonFolder() + L"Horivo\\"; }

std::wstring PhotoFolder() { return CommonFolder() + L"City Photos\\"; }

std::string ReadWholeFile(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::wstring ReadTextFile(const std::wstring& path) {
    const std::string bytes = ReadWholeFile(path);
    const int size = static_cast<int>(bytes.size());
    std::wstring text(bytes.size(), L'\0');  // UTF-16 never has more units than UTF-8 has bytes
    text.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, bytes.c_str(), size, text.data(), size)));
    return text.starts_with(kByteOrderMark) ? text.substr(1) : text;
}

void PreparePhotoFolder() {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path folder = PhotoFolder();
    if (fs::exists(folder, error)) return;
    // Copies to a folder of another name and renames it at the end. So an interrupted copy is
    // repeated at the next start.
    const fs::path part = CommonFolder() + L"City Photos.part";
    fs::copy(ProgramFolder() + L"City Photos", part,
             fs::copy_options::recursive | fs::copy_options::overwrite_existing, error);
    if (!error) fs::rename(part, folder, error);
    if (error) fs::create_directories(folder, error);
}
