#include "window/host_notice_win.h"

#include <cstddef>

#include "cities/city_lookup.h"
#include "cities/city_pick.h"
#include "window/overlay_win.h"

namespace {

constexpr LRESULT kConsent = 1;

}  // namespace

bool NotifyHost(MapState& map, HWND window, std::int32_t signedIndex) {
    const HWND hidden = FindWindowW(HORIVO_HOST_WINDOW_CLASS, nullptr);
    map.overlay.hostAccepted =
        hidden != nullptr &&
        SendMessageW(hidden, HORIVO_MSG_MAY_SHOW_PHOTOS, static_cast<WPARAM>(signedIndex),
                     reinterpret_cast<LPARAM>(window)) == kConsent;
    return map.overlay.hostAccepted;
}

void OfferPhotos(MapState& map, HWND window, std::int32_t signedIndex, PhotosOf whose) {
    if (!map.windows.IsLive(window)) return;
    if (!IsSignedIndexIn(signedIndex, map.host.cities.count)) return;
    if (!NotifyHost(map, window, signedIndex) || !map.windows.IsLive(window)) return;
    // The host may have handed over another table while it was asked.
    if (!IsSignedIndexIn(signedIndex, map.host.cities.count)) return;
    const CityRecord& city =
        map.host.cities.Records()[static_cast<std::size_t>(IndexOfSigned(signedIndex))];
    ShowPhotos(map, window, WideString(CountryNameOf(city)),
               whose == PhotosOf::City ? WideString(CityNameOf(city)) : WideString());
}

void TellCityClicked(MapState& map, HWND window, std::int32_t index) {
    CityRecord* record = map.host.cities.records + index;
    SendMessageW(GetParent(window), HORIVO_MSG_CITY, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(record));
}
