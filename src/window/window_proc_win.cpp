#include "window/window_proc_win.h"

#include "horivo_map.h"
#include "window/frame_win.h"
#include "window/host_messages_win.h"
#include "window/keys_win.h"
#include "window/load_results_win.h"
#include "window/pointer_win.h"
#include "window/timers_win.h"
#include "window/window_lifecycle_win.h"

namespace {

/// Erases nothing, because each frame covers every pixel and erasing would only cause flicker.
LRESULT OnEraseBackground(HWND, WPARAM, LPARAM) { return 1; }

struct MessageRoute {
    UINT message;
    LRESULT (*handle)(HWND window, WPARAM wParam, LPARAM lParam);
};
constexpr MessageRoute kRoutes[] = {
    {WM_CREATE, OnCreate},
    {WM_DESTROY, OnDestroy},
    {WM_SIZE, OnSize},
    {WM_PAINT, OnPaint},
    {WM_ERASEBKGND, OnEraseBackground},
    {WM_KEYDOWN, OnKeyDown},
    {WM_TIMER, OnTimer},
    {WM_MOUSEMOVE, OnMouseMove},
    {WM_LBUTTONDOWN, OnButtonDown},
    {WM_LBUTTONUP, OnButtonUp},
    {WM_MOUSEWHEEL, OnMouseWheel},
    {WM_MOUSELEAVE, OnMouseLeave},
    {HORIVO_MSG_CITY, OnShowCity},
    {HORIVO_MSG_PHOTOS_CHANGED, OnPhotosChanged},
    {kStageDoneMessage, OnStageDone},
};

}  // namespace

LRESULT CALLBACK MapWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        for (const MessageRoute& route : kRoutes) {
            if (route.message == message) return route.handle(window, wParam, lParam);
        }
    } catch (...) {
        // Only an allocation can throw here, and the host must go on: a window being created is
        // refused, any other message is dropped.
        return message == WM_CREATE ? kRefuseCreation : 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}
