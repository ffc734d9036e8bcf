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
        .page = panel.GetPage(),
        .offerPhotos = map.overlay.hostAccepted,
    };
}

/// Where the context cannot be made current, the next frame that has it uploads the photos.
void UploadNowOrLater(MapState& map, const MapWindow& entry) {
    const CurrentContextScope current(map.drawing.context, entry.dc.Get());
    if (current.IsCurrent()) map.overlay.panel.UploadPhotos();
}

}  // namespace

void FitOverlayTo(MapState& map, HWND window) noexcept {
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (!ClientSize(window, width, height)) return;
    map.overlay.panel.Resize(AreaOf(map, width, height));
    map.overlay.buttons.PlacePhotoButtons(ButtonLayoutOf(map, width, height),
                                          map.drawing.font.GetHeight());
}

void CreateOverlay(MapState& map) {
    ButtonSheet sheet;
    map.overlay.buttons.CreateButtons(sheet.LoadFor(map.host.hostDirectory) ? sheet.GetPixels()
                                                                            : nullptr);
    // A new window shows the place that the last window showed.
    map.overlay.panel.BuildPhotoPanel(map.host.cities, PhotoSource::Memory);
    map.overlay.panel.UploadPhotos();
}

void ReleaseOverlay(MapState& map) noexcept {
    map.overlay.panel.DeleteTextures();
    map.overlay.panel.DeleteImages();
    map.overlay.buttons.DestroyButtons();
}

void DrawOverlay(MapState& map, std::int32_t width, std::int32_t height) {
    map.overlay.panel.DrawPhotoPanel(AreaOf(map, width, height), map.host.cities, map.drawing.font,
                                     map.pointer.geoPoint);
    map.overlay.buttons.LayoutButtons(ButtonLayoutOf(map, width, height), map.drawing.font,
                                      map.host.localStrings.Get(HORIVO_TEXT_ADD_PHOTO, nullptr));
}

void ShowPhotos(MapState& map, HWND window, WideString country, WideString city) {
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    FitOverlayTo(map, window);
    map.overlay.panel.ShowPlace(map.host.cities, std::move(country), std::move(city));
    UploadNowOrLater(map, *entry);
}

void ReloadPhotos(MapState& map, HWND window) {
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    FitOverlayTo(map, window);
    map.overlay.panel.BuildPhotoPanel(map.host.cities, PhotoSource::Disk);
    UploadNowOrLater(map, *entry);
}

void TakeNewPhotos(MapState& map, HWND window) {
    map.overlay.panel.OfferAllPages();
    ReloadPhotos(map, window);
}

void TakeNewTable(MapState& map) noexcept {
    PhotoPanel& panel = map.overlay.panel;
    panel.ForgetCityOrder();
    try {
        if (const MapWindow* live = map.windows.Current()) {
            ReloadPhotos(map, live->window);
        } else if (!panel.GetPlaceName().empty()) {
            panel.ReloadPhotoSet(map.host.cities);
        }
    } catch (...) {  // out of memory
        panel.DeleteImagesAndPhotos();
    }
}

void ShowNextPhotos(MapState& map, HWND window) {
    PhotoPanel& panel = map.overlay.panel;
    if (panel.GetPage().count == 0) return;
    FitOverlayTo(map, window);
    const std::int32_t before = panel.GetPage().firstShown;
    if (!panel.PageForward()) return;
    ReloadPhotos(map, window);
    if (panel.HasThumbnails()) return;
    // None of the remaining photos can be loaded. An empty page would help nobody, nor would a
    // button that leads to it.
    panel.RejectPage(before);
    ReloadPhotos(map, window);
}

void ShowPreviousPhotos(MapState& map, HWND window) {
    if (map.overlay.panel.GetPage().count == 0) return;
    FitOverlayTo(map, window);
    if (map.overlay.panel.PageBack(map.host.cities)) ReloadPhotos(map, window);
}

void AddPhoto(MapState&, HWND) { OpenAddPhotoPage(); }

std::int32_t HitTestButtons(MapState& map, HWND window, std::int32_t x, std::int32_t y,
                            bool clearOnly) noexcept {
    RECT client = {};
    GetClientRect(window, &client);
    return map.overlay.buttons.HitTestButtons(x, y, clearOnly, client.right);
}
