#include "base/common_app_data_win.h"
#include "base/handles_win.h"
#include "image/jpeg_header.h"
#include "photos/photo_files.h"

WideString PhotoRoot() {
    const std::wstring common = CommonAppDataFolder();
    return common.empty() ? WideString() : common + L"\\Zelmo\\City Photos\\";
}

bool PhotoFileExists(const WideString& path) noexcept {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool ReadPhotoIndex(const WideString& path, std::string& bytes) {
    // Share everything: other software may be writing or replacing the index at this moment.
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size = {};
    if (!file.IsOpen() || !GetFileSizeEx(file.Get(), &size)) return false;
    constexpr auto kLimit = static_cast<LONGLONG>(kIndexByteLimit);
    const auto wanted = static_cast<DWORD>(size.QuadPart < kLimit ? size.QuadPart : kLimit);
    bytes.resize(wanted);
    DWORD read = 0;
    const bool done = ReadFile(file.Get(), bytes.data(), wanted, &read, nullptr) != FALSE;
    bytes.resize(done ? read : 0);
    return done;
}

bool ReadPhotoSize(const WideString& path, std::int32_t& width, std::int32_t& height) noexcept {
    std::int32_t components = 0;
    return ProbeJpeg(path, width, height, components);
}
