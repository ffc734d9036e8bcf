#include "window/overlay_win.h"

#include <cstddef>
#include <utility>

#include "cities/city_lookup.h"
#include "cities/city_pick.h"
#include "photos/button_sheet_win.h"
#include "render/current_context_win.h"
#include "window/host_notice_win.h"

PanelArea Overlay::AreaOf(std::int32_t width, std::int32_t height) const noexcept {
    return {width, height, gl_.Font().GetHeight()};
}

ButtonLayout Overlay::ButtonLayoutOf(std::int32_t width, std::int32_t height) const noexcept {
    return {
        .windowWidth = width,
        .windowHeight = height,
        .page = PageOf(panel_),
        .offerPhotos = hostAccepted_,
    };
}

/// Uploads the photos; where the context cannot be made current, the next frame that has it does.
void Overlay::UploadNowOrLater(const MapWindow& entry) {
    const CurrentContextScope current(gl_.Context(), entry.dc.Get());
    if (current.IsCurrent()) UploadPhotos(panel_);
}

void Overlay::FitTo(HWND window) noexcept {
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (!ClientSize(window, width, height)) return;
    ResizePhotoPanel(panel_, AreaOf(width, height));
    buttons_.PlacePhotoButtons(ButtonLayoutOf(width, height), gl_.Font().GetHeight());
}

void Overlay::Create() {
    ButtonSheet sheet;
    buttons_.CreateButtons(sheet.LoadFor(host_.Folders().host) ? sheet.GetPixels() : nullptr);
    BuildPhotoPanel(panel_, host_.Cities(), WideString(panel_.placeName),
                    WideString(panel_.heading), false);
    UploadPhotos(panel_);
}

void Overlay::Release() noexcept {
    DeletePhotoTextures(panel_);
    DeletePanelImages(panel_);
    buttons_.DestroyButtons();
}

void Overlay::Draw(const CGeoPoint& pointed, std::int32_t width, std::int32_t height) {
    DrawPhotoPanel(panel_, AreaOf(width, height), host_.Cities(), gl_.Font(), pointed);
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
    // The host may have handed over another table while it was asked.
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
    ShowPhotoPanel(panel_, host_.Cities(), std::move(country), std::move(city));
    UploadNowOrLater(*entry);
}

void Overlay::ReloadPhotos(HWND window) {
    const MapWindow* entry = windows_.Find(window);
    if (entry == nullptr) return;
    FitTo(window);
    BuildPhotoPanel(panel_, host_.Cities(), WideString(panel_.placeName),
                    WideString(panel_.heading), true);
    UploadNowOrLater(*entry);
}

void Overlay::TakeNewPhotos(HWND window) {
    panel_.photoSet.brokenFrom = kNoneBroken;
    ReloadPhotos(window);
}

void Overlay::TakeNewTable() noexcept {
    panel_.photoSet.ranks.clear();
    try {
        if (const MapWindow* live = windows_.Current()) {
            ReloadPhotos(live->window);
        } else if (!panel_.placeName.empty()) {
            LoadPhotoSet(panel_.photoSet, host_.Cities(), panel_.placeName, panel_.heading);
        }
    } catch (...) {  // out of memory
        DeletePanelImages(panel_);
        DeletePhotos(panel_.photoSet);
    }
}

void Overlay::ShowNextPage(HWND window) {
    PhotoSet& set = panel_.photoSet;
    if (set.photos.empty()) return;
    FitTo(window);
    const std::int32_t before = set.firstShown;
    if (!PageForward(panel_)) return;
    ReloadPhotos(window);
    if (!set.loaded.empty()) return;
    // None of the remaining photos can be loaded: go back to the page before, and offer no page
    // behind it from now on.
    set.brokenFrom = set.firstShown;
    set.firstShown = before;
    ReloadPhotos(window);
}

void Overlay::ShowPreviousPage(HWND window) {
    if (panel_.photoSet.photos.empty()) return;
    FitTo(window);
    if (PageBack(panel_, host_.Cities())) ReloadPhotos(window);
}

std::int32_t Overlay::LightButtonAt(HWND window, const WindowPoint& point) noexcept {
    RECT client = {};
    GetClientRect(window, &client);
    return buttons_.HitTestButtons(point.x, point.y, false, client.right);
}

void Overlay::PutOutButtons() noexcept { buttons_.HitTestButtons(0, 0, true, 0); }
