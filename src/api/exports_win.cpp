// The six functions that a host calls. None of them throws.
#include <memory>
#include <string>

#include "api/command_line_folder.h"
#include "api/install_map_win.h"
#include "api/map_data_folder_win.h"
#include "cities/city_zone.h"
#include "horivo_map.h"
#include "window/map_state_win.h"
#include "window/window_class_win.h"

namespace {

constexpr wchar_t kSettingsName[] = L"horivo.ini";
constexpr DWORD kMapWindowStyle =
    WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP;

MapFolders FindFolders() {
    const std::wstring data = MapDataDirectory();
    return {.host = FolderOfCommandLine(GetCommandLineW()),
            .data = data,
            .settingsFile = data.empty() ? std::wstring() : data + kSettingsName};
}

/// Asks for the version of Windows.
/// Deliberate: the answer is not used, so this function has no effect.
void QueryWindowsVersion() noexcept {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExW(&version);
}

/// Does the work of InitMap. Throws std::bad_alloc. Needs MapState because it uses HostData,
/// GdiplusSession, SharedPicture, Hover, Overlay and CallResults.
std::uint32_t Initialise(MapState& map, const CityTable& cities) {
    map.host.SetFolders(FindFolders());
    if (map.gdiplus == nullptr || !map.gdiplus->IsStarted())
        map.gdiplus = std::make_unique<GdiplusSession>();
    // Nothing below this line throws. When the lines above run out of memory, the city table of
    // the previous call stays in use.
    map.host.SetCities(cities);
    QueryWindowsVersion();
    map.textures.MakeMutex();
    map.hover.Cancel();  // a Hover that waits stores the index of a city in the old table
    map.overlay.OnNewTable();
    return RegisterMapClass(map.results);
}

}  // namespace

extern "C" {

std::uint32_t InitMap(CityRecord* cities, std::int32_t cityCount) try {
    MapState& map = Map();
    try {
        return Initialise(map, {cities, cities != nullptr ? cityCount : 0});
    } catch (...) {
        map.results.KeepSysError(ERROR_NOT_ENOUGH_MEMORY);
        return HORIVO_CLASS_FAILED;
    }
} catch (...) {
    return HORIVO_CLASS_FAILED;
}

void SetLocalString(std::int32_t id, const HorivoWideChar* text) try {
    Map().host.localStrings.Set(id, text);
} catch (...) {
    // No memory is left for the new text: the earlier text of `id` stays.
    return;
}

HWND CreateMapWindow(HWND parent, std::int32_t x, std::int32_t y, std::int32_t width,
                     std::int32_t height, std::uint32_t* status) try {
    MapState& map = Map();
    const HWND window = MakeMapWindow(map.results, {x, y, width, height, kMapWindowStyle, parent});
    if (status != nullptr) *status = map.results.CreateStatus();
    return window;
} catch (...) {
    if (status != nullptr) *status = HORIVO_OK;
    return nullptr;
}

std::uint32_t InstallMap() try { return RunInstallMap(Map()); } catch (...) {
    return HORIVO_BAD_PICTURE;  // out of memory: the picture is too large
}

std::uint32_t FreeMap() try {
    MapState& map = Map();
    map.textures.Release();
    bool done = UnregisterMapClass();
    if (map.textures.HasMutex()) done = map.textures.CloseMutex();
    if (map.host.StopUsingCities()) RestoreTimeZones(map.host.Cities(), map.zones);
    map.gdiplus.reset();  // comes last: GDI+ may end here, and no GDI+ object may exist then
    return done ? TRUE : FALSE;
} catch (...) {
    return FALSE;
}

std::uint32_t GetLastSysError() try { return Map().results.LastSysError(); } catch (...) {
    return ERROR_NOT_ENOUGH_MEMORY;
}

}  // extern "C"
