#include "api/install_map_win.h"

#include <optional>
#include <string>

#include "api/map_picture_check.h"
#include "image/jpeg_header.h"
#include "window/map_state_win.h"
#include "window/window_class_win.h"

namespace {

constexpr wchar_t kPristineName[] = L"map0.jpg";
// bytes (192 MiB); physical memory that is assumed when Windows does not report its size
constexpr std::uint64_t kAssumedMemory = 0xC000000;
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

std::uint32_t Copy(CallResults& results, const std::wstring& from,
                   const std::wstring& to) noexcept {
    if (CopyFileW(from.c_str(), to.c_str(), FALSE)) return HORIVO_OK;
    results.KeepSysError(GetLastError());
    return HORIVO_COPY_FAILED;
}

/// Makes a pristine copy of the picture, unless there is one, and checks the picture. If the
/// picture is bad and there was a pristine copy before, replaces the picture by the copy and checks
/// the copy. @return the result code of the last check or of a failed copy
std::uint32_t CheckPictureFiles(const std::wstring& dataDirectory, CallResults& results) {
    const std::wstring picture = MapPicture::PathIn(dataDirectory);
    const std::wstring pristine = dataDirectory + kPristineName;
    const bool backupMade = GetFileAttributesW(pristine.c_str()) == INVALID_FILE_ATTRIBUTES;
    if (backupMade) {
        const std::uint32_t copied = Copy(results, picture, pristine);
        if (copied != HORIVO_OK) return copied;
    }
    const std::uint64_t memory = TotalMemory();
    const std::uint32_t verdict = CheckFile(picture, memory);
    // A pristine copy that was made just now is a copy of the bad picture: restoring it is useless.
    if (verdict == HORIVO_OK || backupMade) return verdict;
    const std::uint32_t restored = Copy(results, pristine, picture);
    return restored == HORIVO_OK ? CheckFile(picture, memory) : restored;
}

/// Creates a hidden map window and destroys it. The self-test of the picture runs while the window
/// is created. @return HORIVO_OK or the result code of the failure
std::uint32_t TryTestWindow(CallResults& results) {
    const HWND window =
        MakeMapWindow(results, {0, 0, kTestWidth, kTestHeight, kTestStyle, nullptr});
    if (window != nullptr) {
        DestroyWindow(window);
        return HORIVO_OK;
    }
    // When Windows itself refuses the window, CreateStatus is HORIVO_OK. This must not be the
    // result.
    return results.CreateStatus() != HORIVO_OK ? results.CreateStatus() : HORIVO_CLASS_FAILED;
}

/// While an object of this class exists, the creation of a map window runs the self-test of the
/// picture, if `mayLoad` is true.
class InstallTestScope {
public:
    InstallTestScope(InstallTest& test, bool mayLoad) noexcept : test_(test) {
        test_.Begin(mayLoad);
    }
    InstallTestScope(const InstallTestScope&) = delete;
    InstallTestScope& operator=(const InstallTestScope&) = delete;
    ~InstallTestScope() { test_.End(); }

private:
    InstallTest& test_;
};

}  // namespace

std::uint32_t RunInstallMap(MapState& map) {
    const std::wstring& dataDirectory = map.host.Folders().data;
    if (dataDirectory.empty()) {
        map.results.KeepSysError(ERROR_PATH_NOT_FOUND);
        return HORIVO_COPY_FAILED;
    }
    const std::uint32_t verdict = CheckPictureFiles(dataDirectory, map.results);
    if (verdict != HORIVO_OK) return verdict;
    std::uint32_t result = HORIVO_OK;
    {
        // Hold the mutex during the whole test: a worker that is still loading must not write to
        // the same picture.
        const MutexHold hold = map.textures.Lock(kWorkerEndWaitMs);
        const bool mayLoad = map.textures.MayUse(hold);
        const InstallTestScope test(map.installTest, mayLoad);
        // Free the tiles of an earlier picture: otherwise the test would use these tiles and not
        // the new picture.
        if (mayLoad) map.textures.Clear();
        result = TryTestWindow(map.results);
        if (mayLoad) map.textures.Clear();
    }
    if (const MapWindow* live = map.windows.Current()) map.loader.StartLoad(live->window);
    return result;
}
