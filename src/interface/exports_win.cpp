// The six functions that a host calls. Nothing throws out of them.
#include <new>
#include <utility>

#include "horivo_map.h"
#include "interface/command_line_folder.h"
#include "interface/create_window_win.h"
#include "interface/data_folder_win.h"
#include "interface/install_map_win.h"
#include "window/hover_win.h"
#include "window/map_state_win.h"
#include "window/overlay_win.h"
#include "window/window_proc_win.h"

namespace {

constexpr wchar_t kSettingsName[] = L"horivo.ini";
constexpr DWORD kReleaseWaitMs = 300000;  // a load under way may take minutes
constexpr DWORD kMapWindowStyle =
    WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP;
constexpr int kWindowExtraBytes = 8;

void FindFolders(HostData& host) {
    host.hostDirectory = FolderOfCommandLine(GetCommandLineW());
    host.dataDirectory = MapDataDirectory();
    host.settingsFile =
        host.dataDirectory.empty() ? std::wstring() : host.dataDirectory + kSettingsName;
}

/// Asks for the version of Windows.
/// Deliberate: the answer is not used.
void QueryWindowsVersion() noexcept {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExW(&version);
}

std::uint32_t RegisterMapClass(HostData& host) noexcept {
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_VREDRAW | CS_HREDRAW | CS_OWNDC;
    windowClass.lpfnWndProc = MapWindowProc;
    windowClass.cbWndExtra = kWindowExtraBytes;
    windowClass.hInstance = LibraryModule();
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = kMapWindowClass;
    if (RegisterClassExW(&windowClass) != 0) return HORIVO_OK;
    host.lastSysError = GetLastError();
    return HORIVO_CLASS_FAILED;
}

std::uint32_t Initialise(MapState& map, CityRecord* cities, std::int32_t cityCount) {
    FindFolders(map.host);
    if (map.gdiplus == nullptr || !map.gdiplus->IsStarted())
        map.gdiplus = std::make_unique<GdiplusUse>();
    // Nothing below throws: a call without memory leaves the table of the call before in force.
    map.host.cities = {cities, cities != nullptr ? cityCount : 0};
    map.host.citiesInUse = true;
    QueryWindowsVersion();
    if (!map.textures.sceneMutex) map.textures.sceneMutex = std::move(map.textures.lockOfOldWorker);
    if (!map.textures.sceneMutex)
        map.textures.sceneMutex.reset(CreateMutexW(nullptr, FALSE, nullptr));
    CancelHover(map);  // its city is one of the old table
    TakeNewTable(map);
    return RegisterMapClass(map.host);
}

void ReleaseTextures(MapState& map) noexcept {
    UniqueHandle& oldLock = map.textures.lockOfOldWorker;
    // A host that frees twice: the worker of the first time may still be at it.
    const HANDLE mutex = map.textures.sceneMutex ? map.textures.sceneMutex.get() : oldLock.get();
    const MutexHold hold = AcquireMutex(mutex, kReleaseWaitMs);
    // From here on a worker that was started before leaves the textures alone.
    ++map.textures.freed;
    // Without a lock no worker can have run; on a time-out one still does and nothing is released.
    if (!hold && mutex != nullptr) {
        if (map.textures.sceneMutex) oldLock = DuplicateOf(mutex);
        return;
    }
    map.textures.store.ClearMap();
    map.textures.store.ClearTiles(false);
}

}  // namespace

extern "C" {

std::uint32_t InitMap(CityRecord* cities, std::int32_t cityCount) try {
    MapState& map = Map();
    try {
        return Initialise(map, cities, cityCount);
    } catch (...) {
        map.host.lastSysError = ERROR_NOT_ENOUGH_MEMORY;
        return HORIVO_CLASS_FAILED;
    }
} catch (...) {
    return HORIVO_CLASS_FAILED;
}

void SetLocalString(std::int32_t id, const HorivoWideChar* text) try {
    Map().host.localStrings.Set(id, text);
} catch (...) {
    // Out of memory: the earlier text stays.
    return;
}

HWND CreateMapWindow(HWND parent, std::int32_t x, std::int32_t y, std::int32_t width,
                     std::int32_t height, std::uint32_t* status) try {
    MapState& map = Map();
    const HWND window = MakeMapWindow(map, {x, y, width, height, kMapWindowStyle, parent});
    if (status != nullptr) *status = map.host.createStatus;
    return window;
} catch (...) {
    if (status != nullptr) *status = HORIVO_OK;
    return nullptr;
}

std::uint32_t InstallMap() try { return RunInstallTest(Map()); } catch (...) {
    return HORIVO_BAD_PICTURE;  // out of memory: too large for this machine
}

std::uint32_t FreeMap() try {
    MapState& map = Map();
    ReleaseTextures(map);
    std::uint32_t result =
        UnregisterClassW(kMapWindowClass, LibraryModule()) != FALSE ? TRUE : FALSE;
    if (map.textures.sceneMutex)
        result = CloseHandle(map.textures.sceneMutex.release()) != FALSE ? TRUE : FALSE;
    if (std::exchange(map.host.citiesInUse, false))
        RestoreTimeZones(map.host.cities, map.overlay.zones);
    map.gdiplus.reset();  // after the last picture of this thread is gone
    return result;
} catch (...) {
    return FALSE;
}

std::uint32_t GetLastSysError() try { return Map().host.lastSysError; } catch (...) {
    return ERROR_NOT_ENOUGH_MEMORY;
}

}  // extern "C"
