// The six functions that a host calls. Nothing throws out of them.
#include <new>
#include <utility>

#include "api/command_line_folder.h"
#include "api/data_folder_win.h"
#include "api/install_map.h"
#include "cities/city_zone.h"
#include "horivo_map.h"
#include "window/hover_win.h"
#include "window/map_state_win.h"
#include "window/overlay_win.h"
#include "window/window_class_win.h"

namespace {

constexpr wchar_t kSettingsName[] = L"horivo.ini";
constexpr DWORD kMapWindowStyle =
    WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP;

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

std::uint32_t Initialise(MapState& map, CityRecord* cities, std::int32_t cityCount) {
    FindFolders(map.host);
    if (map.gdiplus == nullptr || !map.gdiplus->IsStarted())
        map.gdiplus = std::make_unique<GdiplusSession>();
    // Nothing below throws: a call without memory leaves the table of the call before in force.
    map.host.cities = {cities, cities != nullptr ? cityCount : 0};
    map.host.citiesInUse = true;
    QueryWindowsVersion();
    MakeSceneMutex(map.textures);
    CancelHover(map);  // its city is one of the old table
    TakeNewTable(map);
    return RegisterMapClass(map.host);
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
    const HWND window = MakeMapWindow(map.host, {x, y, width, height, kMapWindowStyle, parent});
    if (status != nullptr) *status = map.host.createStatus;
    return window;
} catch (...) {
    if (status != nullptr) *status = HORIVO_OK;
    return nullptr;
}

std::uint32_t InstallMap() try { return RunInstallMap(Map()); } catch (...) {
    return HORIVO_BAD_PICTURE;  // out of memory: too large for this machine
}

std::uint32_t FreeMap() try {
    MapState& map = Map();
    ReleasePicture(map.textures);
    bool done = UnregisterMapClass();
    if (map.textures.sceneMutex) done = CloseSceneMutex(map.textures);
    if (std::exchange(map.host.citiesInUse, false))
        RestoreTimeZones(map.host.cities, map.overlay.zones);
    map.gdiplus.reset();  // after the last picture of this thread is gone
    return done ? TRUE : FALSE;
} catch (...) {
    return FALSE;
}

std::uint32_t GetLastSysError() try { return Map().host.lastSysError; } catch (...) {
    return ERROR_NOT_ENOUGH_MEMORY;
}

}  // extern "C"
