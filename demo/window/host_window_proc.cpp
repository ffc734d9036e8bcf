// What a host window answers to its messages.

#include <algorithm>

#include "window/host_window.h"

namespace {

constexpr UINT kActivated = WM_APP;

}  // namespace

LRESULT CALLBACK HostWindow::Proc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<HostWindow*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->handle_ = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (self == nullptr) return DefWindowProcW(handle, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        self->program_.Forget(self);
        delete self;
        return DefWindowProcW(handle, message, wParam, lParam);
    }
    return self->Handle(message, wParam, lParam);
}

LRESULT HostWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Arrange();
            return 0;
        case WM_WINDOWPOSCHANGED:
            DefWindowProcW(handle_, message, wParam, lParam);
            map_.Follow();
            return 0;
        case WM_GETMINMAXINFO:
            LimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_DPICHANGED: {
            const RECT& place = *reinterpret_cast<const RECT*>(lParam);
            SetWindowPos(handle_, nullptr, place.left, place.top, place.right - place.left,
                         place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
            UseScaling(HIWORD(wParam));
            return 0;
        }
        case WM_ACTIVATE:
            // The child that has the focus gets it back with the window.
            if (LOWORD(wParam) == WA_INACTIVE) {
                focus_ = GetFocus();
                return 0;
            }
            // Afterwards: the window itself comes to the top only now.
            PostMessageW(handle_, kActivated, 0, 0);
            break;
        case kActivated:
            map_.ComeToTop();
            return 0;
        case WM_SETFOCUS:
            SetFocus(IsWindow(focus_) ? focus_ : map_.Window());
            return 0;
        case WM_MOUSEWHEEL:
            // A child that does not use the wheel hands it up; over the map it is the map's.
            if (HWND map = map_.Window(); map != nullptr && GetFocus() == handle_) {
                return SendMessageW(map, message, wParam, lParam);
            }
            return 0;
        case WM_TIMER:
            TickClock();
            return 0;
        case WM_NOTIFY:
            return HandleNotice(reinterpret_cast<NMHDR*>(lParam));
        case WM_COMMAND:
            HandleCommand(wParam, lParam);
            return 0;
        case HORIVO_MSG_CITY:
            CityClicked(static_cast<std::int32_t>(wParam));
            return 0;
        case WM_CLOSE:
            KeepPlace();
            DestroyWindow(handle_);
            return 0;
        case WM_DESTROY:
            KillTimer(handle_, kClockTimer);
            return 0;
        default:
            break;
    }
    return DefWindowProcW(handle_, message, wParam, lParam);
}

void HostWindow::LimitSize(MINMAXINFO& limits) const {
    if (look_ == nullptr) return;
    const LONG list = withList_ ? list_.Width() : 0;
    limits.ptMinTrackSize = {list + look_->Pixels(kMapAtLeast), look_->Pixels(kHeightAtLeast)};
}

/// The list shows minutes; the map does not follow the clock unless somebody asks for a frame.
void HostWindow::TickClock() {
    SYSTEMTIME now{};
    GetSystemTime(&now);
    if (now.wMinute == shownMinute_) return;
    ShowTimes();
    if (HWND map = map_.Window(); map != nullptr) InvalidateRect(map, nullptr, FALSE);
}

LRESULT HostWindow::HandleNotice(NMHDR* notice) {
    if (notice->hwndFrom != list_.List()) return 0;
    if (notice->code == LVN_ITEMACTIVATE) {
        FlyToSelected();
        return 0;
    }
    bool selectedNow = false;
    const LRESULT answer = list_.Notify(notice, selectedNow);
    if (selectedNow) ShowSelectedCity();
    return answer;
}

void HostWindow::HandleCommand(WPARAM wParam, LPARAM lParam) {
    HWND control = reinterpret_cast<HWND>(lParam);
    if (control == nullptr) {
        Do(LOWORD(wParam));
    } else if (control == list_.Field() && HIWORD(wParam) == EN_CHANGE) {
        list_.Narrow();
        ShowTimes();
    }
}
