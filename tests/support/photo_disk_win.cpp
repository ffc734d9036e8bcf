#include "support/photo_disk_win.h"

#include "base/windows_types.h"
// shlobj.h needs windows.h before it.
#include <shlobj.h>

#include <fstream>

#include "support/gdiplus_pictures_win.h"

namespace fs = std::filesystem;

fs::path PhotoDisk::Root() {
    wchar_t folder[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, 0, folder);
    return fs::path(folder) / L"Zelmo" / L"City Photos";
}

void PhotoDisk::Empty() {
    std::error_code ignored;
    fs::remove_all(Root(), ignored);
}

void PhotoDisk::PutPhoto(const std::wstring& place, int number, int width, int height) {
    constexpr int kQuality = 80;
    fs::create_directories(Root() / place);
    SavePatternJpeg(Root() / place / (std::to_wstring(number) + L".jpg"), width, height, kQuality);
}

void PhotoDisk::PutIndex(const std::wstring& place, std::string_view bytes) {
    fs::create_directories(Root() / place);
    std::ofstream(Root() / place / L"index.tsv", std::ios::binary) << bytes;
}

void PhotoDisk::PutCity(const std::wstring& place, int count, int width, int height) {
    std::string lines;
    for (int i = 1; i <= count; ++i) {
        PutPhoto(place, i, width, height);
        const std::string number = std::to_string(i);
        lines += number + "\tx\ty\tphoto " + number + "\t/" + number + ".htm\r\n";
    }
    PutIndex(place, lines);
}
