#include "window/map_pane.h"

#include "horivo_map.h"

namespace {

constexpr UINT kOrderOnly = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;

bool IsWine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

void MakePopup(HWND map) {
    ShowWindow(map, SW_HIDE);
    SetParent(map, nullptr);
    SetWindowLongPtrW(map, GWL_STYLE,
                      static_cast<LONG_PTR>(WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS));
}

}  // namespace

bool MapPane::Create(HWND host, const RECT& area, std::uint32_t& status) {
    host_ = host;
    area_ = area;
    map_ = CreateMapWindow(host, area.left, area.top, area.right - area.left,
                           area.bottom - area.top, &status);
    if (map_ == nullptr) return false;
    isPopup_ = IsWine();
    if (isPopup_) {
        MakePopup(map_);
        SetOwner(host);
    }
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
    const bool onTop = (GetWindowLongPtrW(host_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    // Wine assumes that a popup is above its owner already, so HWND_TOP does nothing. Wine changes
    // the order of the windows on the screen only when the topmost state of a window changes. So
    // the lines below change this state of the popup and change it back. They remove the owner of
    // the popup meanwhile, because Wine does not change the state of an owned popup back.
    SetOwner(nullptr);
    SetWindowPos(map_, onTop ? HWND_NOTOPMOST : HWND_TOPMOST, 0, 0, 0, 0, kOrderOnly);
    SetWindowPos(map_, onTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, kOrderOnly);
    SetOwner(host_);
}

void MapPane::SetHostOnTop(bool onTop) {
    // Under Wine, the owner of a popup cannot become topmost. So this function removes the owner of
    // the popup before it calls SetWindowPos, and sets the owner again after the call.
    if (isPopup_) SetOwner(nullptr);
    SetWindowPos(host_, onTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, kOrderOnly);
    if (isPopup_) SetOwner(host_);
    RaiseAboveHost();
}

void MapPane::SetOwner(HWND owner) {
    SetWindowLongPtrW(map_, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
}
