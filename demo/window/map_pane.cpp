#include "window/map_pane.h"

#include "horivo_map.h"

namespace {

bool MustFloat() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

void MakeFloat(HWND map, HWND owner) {
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
    floats_ = MustFloat();
    if (floats_) MakeFloat(map_, host);
    return true;
}

void MapPane::Place(const RECT& area) {
    area_ = area;
    if (Window() == nullptr) return;
    if (floats_) {
        Follow();
    } else {
        MoveWindow(map_, area.left, area.top, area.right - area.left, area.bottom - area.top, TRUE);
    }
}

void MapPane::Follow() {
    if (!floats_ || Window() == nullptr) return;
    RECT place = area_;
    MapWindowPoints(host_, nullptr, reinterpret_cast<POINT*>(&place), 2);
    const bool shown = IsWindowVisible(host_) && !IsIconic(host_);
    SetWindowPos(map_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | (shown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

void MapPane::ComeToTop() {
    if (!floats_ || Window() == nullptr) return;
    constexpr UINT kOrderOnly = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
    // Wine believes that it is there already; only a change makes it tell the screen.
    SetWindowPos(map_, HWND_TOPMOST, 0, 0, 0, 0, kOrderOnly);
    SetWindowPos(map_, HWND_NOTOPMOST, 0, 0, 0, 0, kOrderOnly);
}
