#include "window/overlay_win.h"

#include <cstddef>
#include <utility>

#include "cities/city_lookup.h"
#include "cities/city_pick.h"
#include "photos/button_file_win.h"
#include "render/current_context_win.h"
#include "window/host_notice_win.h"

PanelArea Overlay::AreaOf(std::int32_t width, std::int32_t height) const noexcept {
    return {width, height, gl_.Font().GetHeight()};
}

ButtonLayout Overlay::ButtonLayoutOf(std::int32_t width, std::int32_t height) const noexcept {
    return {
        .windowWidth = width,
        .windowHeight = height,
        .page = panel_.GetPage(),
        .offerPhotos = hostAccepted_,
    };
}

/// Uploads the photos now, if the context can be made current. Otherwise a later frame uploads the
/// photos.
void Overlay::UploadNowOrLater(const MapWindow& entry) {
    const CurrentContextScope current(gl_.Context(), entry.dc.Get());
    if (current.IsCurrent()) panel_.UploadPhotos();
}

void Overlay::FitTo(HWND window) noexcept {
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (!ClientSize(window, width, height)) return;
    panel_.Resize(AreaOf(width, height));
    buttons_.PlacePhotoButtons(ButtonLayoutOf(width, height), gl_.Font().GetHeight());
}

void Overlay::Create() {
    ButtonSheet sheet;
    buttons_.CreateButtons(sheet.LoadFor(host_.Folders().host) ? sheet.GetPixels() : nullptr);
    // A new window shows the place that the last window showed.
    panel_.BuildPhotoPanel(host_.Cities(), PhotoSource::Memory);
    panel_.UploadPhotos();
}

void Overlay::Release() noexcept {
    panel_.DeleteTextures();
    panel_.DeleteImages();
    buttons_.DestroyButtons();
}

void Overlay::Draw(const CGeoPoint& pointed, std::int32_t width, std::int32_t height) {
    panel_.DrawPhotoPanel(AreaOf(width, height), host_.Cities(), gl_.Font(), pointed);
    buttons_.LayoutButtons(ButtonLayoutOf(width, height), gl_.Font(),
                           host_.localStrings.Get(HORIVO_TEXT_ADD_PHOTO, nullptr));
}

bool Overlay::AskHost(HWND window, std::int32_t signedIndex) {
    hostAccepted_ = AskHostForPhotos(window, signedIndex);
    return hostAccepted_;
}

void Overlay::OfferPhotos(HWND window, std::int32_t signedIndex, PhotosOf whose) {
    if (!windows_.IsLive(window)) return;
    if (!IsSignedIndexIn(signedIndex, host_.Cities().count)) return;
    if (!AskHost(window, signedIndex) || !windows_.IsLive(window)) return;
    // Check the index again: the host may have handed over another city table in the meantime.
    if (!IsSignedIndexIn(signedIndex, host_.Cities().count)) return;
    const CityRecord& city =
        host_.Cities().Records()[static_cast<std::size_t>(IndexOfSigned(signedIndex))];
    ShowPhotos(window, WideString(CountryNameOf(city)),
               whose == PhotosOf::City ? WideString(CityNameOf(city)) : WideString());
}

void Overlay::ShowPhotos(HWND window, WideString country, WideString city) {
    const MapWindow* entry = windows_.Find(window);
    if (entry == nullptr) return;
    FitTo(window);
    panel_.ShowPlace(host_.Cities(), std::move(country), std::move(city));
    UploadNowOrLater(*entry);
}

void Overlay::ReloadPhotos(HWND window) {
    const MapWindow* entry = windows_.Find(window);
    if (entry == nullptr) return;
    FitTo(window);
    panel_.BuildPhotoPanel(host_.Cities(), PhotoSource::Disk);
    UploadNowOrLater(*entry);
}

void Overlay::OnNewPhotos(HWND window) {
    panel_.OfferAllPages();
    ReloadPhotos(window);
}

void Overlay::OnNewTable() noexcept {
    panel_.ForgetCityOrder();
    try {
        if (const MapWindow* live = windows_.Current()) {
            ReloadPhotos(live->window);
        } else if (!panel_.GetPlaceName().empty()) {
            panel_.ReloadPhotoSet(host_.Cities());
        }
    } catch (...) {  // out of memory
        panel_.DeleteImagesAndPhotos();
    }
}

void Overlay::ShowNextPage(HWND window) {
    if (panel_.GetPage().count == 0) return;
    FitTo(window);
    const std::int32_t before = panel_.GetPage().firstShown;
    if (!panel_.PageForward()) return;
    ReloadPhotos(window);
    if (panel_.HasThumbnails()) return;
    // No photo of the next page could be loaded: show the page from before again and offer no next
    // page.
    panel_.RejectPage(before);
    ReloadPhotos(window);
}

void Overlay::ShowPreviousPage(HWND window) {
    if (panel_.GetPage().count == 0) return;
    FitTo(window);
    if (panel_.PageBack(host_.Cities())) ReloadPhotos(window);
}

std::int32_t Overlay::HighlightButtonAt(HWND window, const WindowPoint& point) noexcept {
    RECT client = {};
    GetClientRect(window, &client);
    return buttons_.HitTestButtons(point.x, point.y, false, client.right);
}

void Overlay::ClearHighlights() noexcept { buttons_.HitTestButtons(0, 0, true, 0); }
