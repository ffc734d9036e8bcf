#include "map_picture.h"

#include <filesystem>
#include <fstream>

#include "data/data_folder.h"
#include "horivo_map.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

constexpr wchar_t kName[] = L"map.jpg";
constexpr unsigned char kJpegMark[] = {0xFF, 0xD8};  // the first bytes of every JPEG file

bool IsJpeg(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return file.get() == kJpegMark[0] && file.get() == kJpegMark[1];
}

/// Lets the library check the picture in the data folder, and shows a failure.
void Check(HWND owner) {
    if (const std::uint32_t code = InstallMap(); code != HORIVO_OK) TellResult(owner, code);
}

}  // namespace

void InstallMapPicture() {
    const std::wstring picture = MapFolder() + kName;
    // TRUE: an existing picture is not replaced.
    const bool copied =
        CopyFileW((ProgramFolder() + kName).c_str(), picture.c_str(), TRUE) != FALSE;
    if (GetFileAttributesW(picture.c_str()) == INVALID_FILE_ATTRIBUTES) {
        TellUser(nullptr, IDS_NO_PICTURE);
    } else if (copied || !IsJpeg(picture)) {
        Check(nullptr);
    }
}

void RepairMapPicture(HWND owner) {
    // InstallMap copies the new picture only when there is no pristine copy, so the old pristine
    // copy must go. The first repair renames it, because it may be the user's own picture. A later
    // repair finds that name taken and deletes the copy.
    const std::wstring pristine = MapFolder() + L"map0.jpg";
    if (!MoveFileW(pristine.c_str(), (MapFolder() + L"map0 before repair.jpg").c_str())) {
        DeleteFileW(pristine.c_str());
    }
    if (CopyFileW((ProgramFolder() + kName).c_str(), (MapFolder() + kName).c_str(), FALSE)) {
        Check(owner);
    } else {
        TellUser(owner, IDS_NO_PICTURE);
    }
}
