#include "window/overlay_win.h"

#include <utility>

#include "photos/button_sheet_win.h"
#include "photos/photo_links_win.h"
#include "render/current_context_win.h"
#include "window/scene_life_win.h"

namespace {

constexpr wchar_t kSheetName[] = L"buttons.png";
constexpr DWORD kLongestPath = 32768;  // characters, terminator included

/// Folder of the host's executable with a trailing backslash; empty when Windows does not tell.
std::wstring ExecutableFolder() {
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestPath));
    return path.substr(0, path.rfind(L'\\') + 1);
}

bool LoadSheet(const HostData& host, ButtonSheet& sheet) {
    const std::wstring path = host.hostDirectory + kSheetName;
    const bool isThere =
        !host.hostDirectory.empty() && GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    // A command line without quotes may have given another folder.
    return sheet.Load(isThere ? path : ExecutableFolder() + kSheetName);
}

PanelArea AreaOf(const MapState& map, std::int32_t width, std::int32_t height) noexcept {
    return {width, height, map.drawing.font.GetHeight()};
}

/// Lets the panel's arithmetic use the size of `window`.
void FitPanelTo(MapState& map, HWND window) noexcept {
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (ClientSize(window, width, height))
        ResizePhotoPanel(map.overlay.panel, AreaOf(map, width, height));
}

}  // namespace

void CreateOverlay(MapState& map) {
    ButtonSheet sheet;
    map.overlay.buttons.CreateButtons(LoadSheet(map.host, sheet) ? sheet.GetPixels() : nullptr);
    PhotoPanel& panel = map.overlay.panel;
    // A window made anew shows the place that the last one showed.
    BuildPhotoPanel(panel, map.host.cities, WideString(panel.placeName), WideString(panel.heading),
                    false);
}

void ReleaseOverlay(MapState& map) noexcept {
    DeletePhotoTextures(map.overlay.panel);
    DeletePanelImages(map.overlay.panel);
    map.overlay.buttons.DestroyButtons();
}

void DrawOverlay(MapState& map, std::int32_t width, std::int32_t height) {
    PhotoPanel& panel = map.overlay.panel;
    DrawPhotoPanel(panel, AreaOf(map, width, height), map.host.cities, map.drawing.font,
                   map.pointer.geoPoint);
    const ButtonLayout layout{
        .windowWidth = width,
        .windowHeight = height,
        .firstShown = panel.photoSet.firstShown,
        .shownCount = panel.shownCount,
        .photoCount = static_cast<std::int32_t>(panel.photoSet.photos.size()),
        .offerPhotos = map.overlay.hostAccepted,
    };
    map.overlay.buttons.LayoutButtons(layout, map.drawing.font,
                                      map.host.localStrings.Get(HORIVO_TEXT_ADD_PHOTO, nullptr));
}

void ShowPhotos(MapState& map, HWND window, WideString country, WideString city) {
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    const CurrentContextScope current(map.drawing.context, entry->dc.Get());
    if (!current.IsCurrent()) return;
    FitPanelTo(map, window);
    ShowPhotoPanel(map.overlay.panel, map.host.cities, std::move(country), std::move(city));
}

void ReloadPhotos(MapState& map, HWND window) {
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    const CurrentContextScope current(map.drawing.context, entry->dc.Get());
    if (!current.IsCurrent()) return;
    FitPanelTo(map, window);
    PhotoPanel& panel = map.overlay.panel;
    BuildPhotoPanel(panel, map.host.cities, WideString(panel.placeName), WideString(panel.heading),
                    true);
}

void ShowNextPhotos(MapState& map, HWND window) {
    if (map.overlay.panel.photoSet.photos.empty()) return;
    if (PageForward(map.overlay.panel)) ReloadPhotos(map, window);
}

void ShowPreviousPhotos(MapState& map, HWND window) {
    if (map.overlay.panel.photoSet.photos.empty()) return;
    FitPanelTo(map, window);
    if (PageBack(map.overlay.panel, map.host.cities)) ReloadPhotos(map, window);
}

void AddPhoto(MapState&, HWND) { OpenAddPhotoPage(); }

std::int32_t HitTestButtons(MapState& map, HWND window, std::int32_t x, std::int32_t y,
                            bool clearOnly) noexcept {
    RECT client = {};
    GetClientRect(window, &client);
    return map.overlay.buttons.HitTestButtons(x, y, clearOnly, client.right);
}
