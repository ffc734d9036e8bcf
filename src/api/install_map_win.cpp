#include <optional>
#include <string>

#include "api/install_map.h"
#include "image/jpeg_header.h"
#include "window/loader_win.h"
#include "window/map_state_win.h"
#include "window/window_class_win.h"

namespace {

constexpr wchar_t kPristineName[] = L"map0.jpg";
constexpr std::uint64_t kAssumedMemory = 0xC000000;  // bytes (192 MiB), where Windows does not tell
constexpr DWORD kTestStyle = WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_BORDER;
constexpr int kTestWidth = 320;   // pixels
constexpr int kTestHeight = 200;  // pixels

std::uint64_t TotalMemory() noexcept {
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof status;
    return GlobalMemoryStatusEx(&status) ? status.ullTotalPhys : kAssumedMemory;
}

std::uint32_t CheckFile(const std::wstring& path, std::uint64_t memory) {
    JpegSize size;
    const bool readable = ProbeJpeg(path, size.width, size.height, size.components);
    return CheckMapPicture(readable ? std::optional(size) : std::nullopt, memory);
}

std::uint32_t Copy(MapState& map, const std::wstring& from, const std::wstring& to) noexcept {
    if (CopyFileW(from.c_str(), to.c_str(), FALSE)) return HORIVO_OK;
    map.host.lastSysError = GetLastError();
    return HORIVO_COPY_FAILED;
}

/// Keeps a pristine copy, judges the picture and falls back to the copy when the picture is bad.
std::uint32_t CheckPictureFiles(MapState& map) {
    const std::wstring picture = MapPicture::PathIn(map.host.dataDirectory);
    const std::wstring pristine = map.host.dataDirectory + kPristineName;
    const bool backupMade = GetFileAttributesW(pristine.c_str()) == INVALID_FILE_ATTRIBUTES;
    if (backupMade) {
        const std::uint32_t copied = Copy(map, picture, pristine);
        if (copied != HORIVO_OK) return copied;
    }
    const std::uint64_t memory = TotalMemory();
    const std::uint32_t verdict = CheckFile(picture, memory);
    if (verdict == HORIVO_OK || backupMade) return verdict;  // the backup is the same bad file
    const std::uint32_t restored = Copy(map, pristine, picture);
    return restored == HORIVO_OK ? CheckFile(picture, memory) : restored;
}

void ClearTextures(MapState& map) noexcept {
    map.textures.picture.ClearMap();
    map.textures.picture.ClearTiles(false);
}

/// Creates the hidden window, whose creation runs the self-test of the picture.
std::uint32_t TryTestWindow(MapState& map) {
    const HWND window =
        MakeMapWindow(map.host, {0, 0, kTestWidth, kTestHeight, kTestStyle, nullptr});
    if (window != nullptr) {
        DestroyWindow(window);
        return HORIVO_OK;
    }
    if (map.host.createStatus != HORIVO_OK) return map.host.createStatus;
    return HORIVO_CLASS_FAILED;  // Windows itself refused: not a success
}

/// Sets `installTest` for a scope.
class InstallTestScope {
public:
    explicit InstallTestScope(MapState& map) noexcept : map_(map) { map.host.installTest = true; }
    InstallTestScope(const InstallTestScope&) = delete;
    InstallTestScope& operator=(const InstallTestScope&) = delete;
    ~InstallTestScope() { map_.host.installTest = false; }

private:
    MapState& map_;
};

}  // namespace

std::uint32_t RunInstallMap(MapState& map) {
    if (map.host.dataDirectory.empty()) {
        map.host.lastSysError = ERROR_PATH_NOT_FOUND;
        return HORIVO_COPY_FAILED;
    }
    const std::uint32_t verdict = CheckPictureFiles(map);
    if (verdict != HORIVO_OK) return verdict;
    std::uint32_t result = HORIVO_OK;
    {
        // Held over the whole test: a worker that still loads must not write the same textures.
        const HANDLE mutex = map.textures.sceneMutex.get();
        const MutexHold hold = AcquireMutex(mutex, kWorkerEndWaitMs);
        const bool mayLoad = hold || mutex == nullptr;
        const InstallTestScope test(map);
        // Tiles of an earlier picture would hide the new one from the test.
        if (mayLoad) ClearTextures(map);
        map.textures.testMayLoad = mayLoad;
        result = TryTestWindow(map);
        if (mayLoad) ClearTextures(map);
    }
    if (const MapWindow* live = map.windows.Current()) StartLoad(live->window);
    return result;
}
