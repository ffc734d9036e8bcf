#include "window/overlay_win.h"

#include <utility>

#include "photos/button_sheet_win.h"
#include "photos/photo_page_win.h"
#include "render/current_context_win.h"

namespace {

PanelArea AreaOf(const MapState& map, std::int32_t width, std::int32_t height) noexcept {
    return {width, height, map.drawing.font.GetHeight()};
}

ButtonLayout ButtonLayoutOf(const MapState& map, std::int32_t width, std::int32_t height) noexcept {
    const PhotoPanel& panel = map.overlay.panel;
    return {
        .windowWidth = width,
        .windowHeight = height,
        .page = PageOf(panel),
        .offerPhotos = map.overlay.hostAccepted,
    };
}

/// Where the context cannot be made current, the next frame that has it uploads the photos.
void UploadNowOrLater(MapState& map, const MapWindow& entry) {
    const CurrentContextScope current(map.drawing.context, entry.dc.Get());
    if (current.IsCurrent()) UploadPhotos(map.overlay.panel);
}

}  // namespace

void FitOverlayTo(MapState& map, HWND window) noexcept {
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (!ClientSize(window, width, height)) return;
    ResizePhotoPanel(map.overlay.panel, AreaOf(map, width, height));
    map.overlay.buttons.PlacePhotoButtons(ButtonLayoutOf(map, width, height),
                                          map.drawing.font.GetHeight());
}

void CreateOverlay(MapState& map) {
    ButtonSheet sheet;
    map.overlay.buttons.CreateButtons(sheet.LoadFor(map.host.hostDirectory) ? sheet.GetPixels()
                                                                            : nullptr);
    PhotoPanel& panel = map.overlay.panel;
    // A window made anew shows the place that the last one showed.
    BuildPhotoPanel(panel, map.host.cities, WideString(panel.placeName), WideString(panel.heading),
                    false);
    UploadPhotos(panel);
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
    map.overlay.buttons.LayoutButtons(ButtonLayoutOf(map, width, height), map.drawing.font,
                                      map.host.localStrings.Get(HORIVO_TEXT_ADD_PHOTO, nullptr));
}

void ShowPhotos(MapState& map, HWND window, WideString country, WideString city) {
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    FitOverlayTo(map, window);
    ShowPhotoPanel(map.overlay.panel, map.host.cities, std::move(country), std::move(city));
    UploadNowOrLater(map, *entry);
}

void ReloadPhotos(MapState& map, HWND window) {
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    FitOverlayTo(map, window);
    PhotoPanel& panel = map.overlay.panel;
    BuildPhotoPanel(panel, map.host.cities, WideString(panel.placeName), WideString(panel.heading),
                    true);
    UploadNowOrLater(map, *entry);
}

void TakeNewPhotos(MapState& map, HWND window) {
    map.overlay.panel.photoSet.brokenFrom = kNoneBroken;
    ReloadPhotos(map, window);
}

void TakeNewTable(MapState& map) noexcept {
    PhotoPanel& panel = map.overlay.panel;
    panel.photoSet.ranks.clear();
    try {
        if (const MapWindow* live = map.windows.Current()) {
            ReloadPhotos(map, live->window);
        } else if (!panel.placeName.empty()) {
            LoadPhotoSet(panel.photoSet, map.host.cities, panel.placeName, panel.heading);
        }
    } catch (...) {  // out of memory
        DeletePanelImages(panel);
        DeletePhotos(panel.photoSet);
    }
}

void ShowNextPhotos(MapState& map, HWND window) {
    PhotoSet& set = map.overlay.panel.photoSet;
    if (set.photos.empty()) return;
    FitOverlayTo(map, window);
    const std::int32_t before = set.firstShown;
    if (!PageForward(map.overlay.panel)) return;
    ReloadPhotos(map, window);
    if (!set.loaded.empty()) return;
    // None of the photos that remain can be loaded: neither a page of nothing helps nor a button
    // that leads there.
    set.brokenFrom = set.firstShown;
    set.firstShown = before;
    ReloadPhotos(map, window);
}

void ShowPreviousPhotos(MapState& map, HWND window) {
    if (map.overlay.panel.photoSet.photos.empty()) return;
    FitOverlayTo(map, window);
    if (PageBack(map.overlay.panel, map.host.cities)) ReloadPhotos(map, window);
}

void AddPhoto(MapState&, HWND) { OpenAddPhotoPage(); }

std::int32_t HitTestButtons(MapState& map, HWND window, std::int32_t x, std::int32_t y,
                            bool clearOnly) noexcept {
    RECT client = {};
    GetClientRect(window, &client);
    return map.overlay.buttons.HitTestButtons(x, y, clearOnly, client.right);
}
