#include "data/settings.h"

#include <shlobj.h>

#include <algorithm>

#include "clock/city_order.h"
#include "data/data_folder.h"
#include "horivo_host.h"

namespace {

constexpr wchar_t kSection[] = L"window";
constexpr wchar_t kLanguage[] = L"language";
constexpr const wchar_t* kEdges[] = {L"left", L"top", L"right", L"bottom"};
constexpr wchar_t kMaximized[] = L"maximized";
constexpr wchar_t kSortColumn[] = L"sort_column";
constexpr wchar_t kSortDescending[] = L"sort_descending";
constexpr wchar_t kAlwaysOnTop[] = L"always_on_top";
constexpr wchar_t kCity[] = L"city";
constexpr wchar_t kCountry[] = L"country";
constexpr int kTextSize = 64;   // characters; names of cities are the longest texts
constexpr LONG kMinSide = 120;  // pixels of a window's side; a smaller window is hard to grab

/// Path of the settings file; empty when Windows reports no folder for it.
/// @param forWriting  creates the folder when it is missing
std::wstring SettingsFile(bool forWriting) {
    if (!IsFeatureEnabled(kNoPreferences)) return ProgramFolder() + L"default.ini";
    wchar_t folder[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder))) {
        return {};
    }
    const std::wstring own = std::wstring(folder) + L"\\Zelmo\\Horivo";
    if (forWriting) SHCreateDirectoryExW(nullptr, own.c_str(), nullptr);
    return own + L"\\horivo_demo.ini";
}

/// The number, possibly negative, of `key`; `missing` when the file has no such key.
int ReadNumber(const std::wstring& file, const wchar_t* key, int missing) {
    return static_cast<int>(GetPrivateProfileIntW(kSection, key, missing, file.c_str()));
}

std::wstring ReadText(const std::wstring& file, const wchar_t* key) {
    wchar_t text[kTextSize] = {};
    GetPrivateProfileStringW(kSection, key, L"", text, kTextSize, file.c_str());
    return text;
}

void WriteText(const std::wstring& file, const wchar_t* key, const std::wstring& text) {
    WritePrivateProfileStringW(kSection, key, text.c_str(), file.c_str());
}

void WriteNumber(const std::wstring& file, const wchar_t* key, int number) {
    WriteText(file, key, std::to_wstring(number));
}

}  // namespace

HostSettings ReadSettings() {
    HostSettings settings;
    const std::wstring file = SettingsFile(false);
    if (file.empty()) return settings;
    settings.language = ReadText(file, kLanguage);
    settings.city = ReadText(file, kCity);
    settings.country = ReadText(file, kCountry);
    LONG* const edges[] = {&settings.place.left, &settings.place.top, &settings.place.right,
                           &settings.place.bottom};
    for (int i = 0; i < 4; ++i) *edges[i] = ReadNumber(file, kEdges[i], 0);
    settings.maximized = ReadNumber(file, kMaximized, 0) != 0;
    settings.sortColumn = std::clamp(ReadNumber(file, kSortColumn, 0), 0, kCityColumns - 1);
    settings.sortDescending = ReadNumber(file, kSortDescending, 0) != 0;
    settings.alwaysOnTop = ReadNumber(file, kAlwaysOnTop, 0) != 0;
    return settings;
}

void WriteSettings(const HostSettings& settings) {
    const std::wstring file = SettingsFile(true);
    if (file.empty()) return;
    WriteText(file, kLanguage, settings.language);
    WriteText(file, kCity, settings.city);
    WriteText(file, kCountry, settings.country);
    const LONG edges[] = {settings.place.left, settings.place.top, settings.place.right,
                          settings.place.bottom};
    for (int i = 0; i < 4; ++i) WriteNumber(file, kEdges[i], static_cast<int>(edges[i]));
    WriteNumber(file, kMaximized, settings.maximized ? 1 : 0);
    WriteNumber(file, kSortColumn, settings.sortColumn);
    WriteNumber(file, kSortDescending, settings.sortDescending ? 1 : 0);
    WriteNumber(file, kAlwaysOnTop, settings.alwaysOnTop ? 1 : 0);
}

bool FitToScreen(RECT& place) {
    const LONG width = place.right - place.left;
    const LONG height = place.bottom - place.top;
    if (width < kMinSide || height < kMinSide) return false;
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor)) return false;
    const RECT& work = monitor.rcWork;
    const LONG newWidth = std::min(width, work.right - work.left);
    const LONG newHeight = std::min(height, work.bottom - work.top);
    place.left = std::clamp(place.left, work.left, work.right - newWidth);
    place.top = std::clamp(place.top, work.top, work.bottom - newHeight);
    place.right = place.left + newWidth;
    place.bottom = place.top + newHeight;
    return true;
}
