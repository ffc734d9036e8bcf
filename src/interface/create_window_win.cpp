#include "interface/create_window_win.h"

#include "window/window_proc_win.h"

HWND MakeMapWindow(MapState& map, const WindowRequest& request) noexcept {
    HostData& host = map.host;
    // Windows may refuse the window before it is asked itself.
    host.createStatus = HORIVO_OK;
    host.createError = ERROR_SUCCESS;
    const HWND window = CreateWindowExW(0, kMapWindowClass, kMapWindowTitle, request.style,
                                        request.x, request.y, request.width, request.height,
                                        request.parent, nullptr, LibraryModule(), nullptr);
    if (window == nullptr && host.createStatus == HORIVO_OK)
        host.lastSysError = host.createError != ERROR_SUCCESS ? host.createError : GetLastError();
    return window;
}
