// The window procedure of a host window: messages, notifications and commands.

#include <algorithm>

#include "resource_ids.h"
#include "window/host_window.h"

namespace {

constexpr UINT kRaiseMap =
    WM_APP;  // a window posts this to itself when it may cover its map (Wine)

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
        self->handle_ = nullptr;
        self->program_.Forget(self);
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
            map_.FollowHost();
            return 0;
        case WM_GETMINMAXINFO:
            LimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_DPICHANGED: {
            const RECT& place = *reinterpret_cast<const RECT*>(lParam);
            SetWindowPos(handle_, nullptr, place.left, place.top, place.right - place.left,
                         place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
            ApplyScaling(HIWORD(wParam));
            return 0;
        }
        case WM_ACTIVATE:
            // Stores the child with the focus; WM_SETFOCUS gives the focus back to that child.
            if (LOWORD(wParam) == WA_INACTIVE) {
                focus_ = GetFocus();
                return 0;
            }
            // Posts a message to raise the map, because Windows raises this window only after
            // WM_ACTIVATE.
            PostMessageW(handle_, kRaiseMap, 0, 0);
            break;
        case kRaiseMap:
            map_.RaiseAboveHost();
            return 0;
        case WM_SETFOCUS:
            SetFocus(IsWindow(focus_) ? focus_ : map_.Window());
            return 0;
        case WM_MOUSEWHEEL:
            // Passes the wheel to the map only when no child has the focus. Otherwise the message
            // comes from a child that does not use the wheel.
            if (HWND map = map_.Window(); map != nullptr && GetFocus() == handle_) {
                return SendMessageW(map, message, wParam, lParam);
            }
            return 0;
        case WM_TIMER:
            OnClockTimer();
            return 0;
        case WM_TIMECHANGE:
            OnClockSet();
            return 0;
        case WM_POWERBROADCAST:
            if (wParam == PBT_APMRESUMEAUTOMATIC) OnClockSet();
            return TRUE;
        case WM_NOTIFY:
            return OnNotify(reinterpret_cast<NMHDR*>(lParam));
        case WM_COMMAND:
            OnCommand(wParam, lParam);
            return 0;
        case HORIVO_MSG_CITY:
            Choose(static_cast<std::int32_t>(wParam));
            return 0;
        case WM_INITMENU:
            CheckMenuItem(reinterpret_cast<HMENU>(wParam), IDM_ALWAYS_ON_TOP,
                          IsOnTop() ? MF_CHECKED : MF_UNCHECKED);
            return 0;
        case WM_CLOSE:
            StorePlace();
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
    if (scale_ == nullptr) return;
    const LONG list = withList_ ? list_.Width() : 0;
    limits.ptMinTrackSize = {list + scale_->Pixels(kMinMapWidth), scale_->Pixels(kMinHeight)};
}

LRESULT HostWindow::OnNotify(NMHDR* notice) {
    if (notice->hwndFrom != list_.List()) return 0;
    if (notice->code == LVN_ITEMACTIVATE) {
        FlyToSelected();
        return 0;
    }
    if (notice->code == NM_SETFOCUS) PostMessageW(handle_, kRaiseMap, 0, 0);
    bool isNewSelection = false;
    const LRESULT answer = list_.OnNotify(notice, isNewSelection);
    if (isNewSelection) {
        Choose(list_.Selected());
        FlyToSelected();
    }
    return answer;
}

void HostWindow::OnCommand(WPARAM wParam, LPARAM lParam) {
    HWND control = reinterpret_cast<HWND>(lParam);
    if (control == nullptr) {
        OnMenuCommand(LOWORD(wParam));
    } else if (HIWORD(wParam) == EN_CHANGE) {
        ShowTimes();
        list_.Scroll();
    } else if (HIWORD(wParam) == EN_SETFOCUS) {
        PostMessageW(handle_, kRaiseMap, 0, 0);
    }
}
