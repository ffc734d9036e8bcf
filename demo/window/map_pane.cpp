#include "window/map_pane.h"

#include "horivo_map.h"

namespace {

bool IsWine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

void MakeOwnedPopup(HWND map, HWND owner) {
    ShowWindow(map, SW_HIDE);
    SetParent(map, nullptr);
    SetWindowLongPtrW(map, GWL_STYLE,
                      static_cast<LONG_PTR>(WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS));
    SetWindowLongPtrW(map, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
}

}  // namespace

bool MapPane::Create(HWND host, const RECT& area, std::uint32_t& status) {
    host_ = host;
    area_ = area;
    map_ = CreateMapWindow(host, area.left, area.top, area.right - area.left,
                           area.bottom - area.top, &status);
    if (map_ == nullptr) return false;
    isPopup_ = IsWine();
    if (isPopup_) MakeOwnedPopup(map_, host);
    return true;
}

void MapPane::Place(const RECT& area) {
    area_ = area;
    if (Window() == nullptr) return;
    if (isPopup_) {
        FollowHost();
    } else {
        MoveWindow(map_, area.left, area.top, area.right - area.left, area.bottom - area.top, TRUE);
    }
}

void MapPane::FollowHost() {
    if (!isPopup_ || Window() == nullptr) return;
    RECT place = area_;
    MapWindowPoints(host_, nullptr, reinterpret_cast<POINT*>(&place), 2);
    const bool shown = IsWindowVisible(host_) && !IsIconic(host_);
    SetWindowPos(map_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | (shown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

void MapPane::RaiseAboveHost() {
    if (!isPopup_ || Window() == nullptr) return;
    constexpr UINT kOrderOnly = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
    // Wine: the popup counts as being above its owner already, so that HWND_TOP does nothing. Only
    // a change of the topmost state makes Wine restack the windows on the screen.
    SetWindowPos(map_, HWND_TOPMOST, 0, 0, 0, 0, kOrderOnly);
    SetWindowPos(map_, HWND_NOTOPMOST, 0, 0, 0, 0, kOrderOnly);
}
