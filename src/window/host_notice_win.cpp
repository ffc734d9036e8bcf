#include "window/host_notice_win.h"

namespace {

constexpr LRESULT kConsent = 1;

}  // namespace

bool AskHostForPhotos(HWND window, std::int32_t signedIndex) {
    const HWND hidden = FindWindowW(HORIVO_HOST_WINDOW_CLASS, nullptr);
    return hidden != nullptr &&
           SendMessageW(hidden, HORIVO_MSG_MAY_SHOW_PHOTOS, static_cast<WPARAM>(signedIndex),
                        reinterpret_cast<LPARAM>(window)) == kConsent;
}

void NotifyCityClicked(const CityTable& cities, HWND window, std::int32_t index) {
    CityRecord* record = cities.records + index;
    SendMessageW(GetParent(window), HORIVO_MSG_CITY, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(record));
}
