#include "window/window_class_win.h"

#include "window/library_module_win.h"
#include "window/window_proc_win.h"

namespace {

constexpr wchar_t kClassName[] = L"Zelmo 3D map window - OpenGL version";
constexpr wchar_t kTitle[] = L"GL Map";
constexpr int kWindowExtraBytes = 8;  // extra bytes of each window, for use by a host

}  // namespace

std::uint32_t RegisterMapClass(CallResults& results) noexcept {
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_VREDRAW | CS_HREDRAW | CS_OWNDC;
    windowClass.lpfnWndProc = MapWindowProc;
    windowClass.cbWndExtra = kWindowExtraBytes;
    windowClass.hInstance = LibraryModule();
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = kClassName;
    if (RegisterClassExW(&windowClass) != 0) return HORIVO_OK;
    results.KeepSysError(GetLastError());
    return HORIVO_CLASS_FAILED;
}

bool UnregisterMapClass() noexcept {
    return UnregisterClassW(kClassName, LibraryModule()) != FALSE;
}

HWND MakeMapWindow(CallResults& results, const WindowRequest& request) noexcept {
    // Reset the results here, although the handler of WM_CREATE also resets the status: Windows may
    // refuse the window before WM_CREATE.
    results.BeginCreation();
    const HWND window =
        CreateWindowExW(0, kClassName, kTitle, request.style, request.x, request.y, request.width,
                        request.height, request.parent, nullptr, LibraryModule(), nullptr);
    if (window == nullptr && results.CreateStatus() == HORIVO_OK) {
        const std::uint32_t refusal = results.CreateError();
        results.KeepSysError(refusal != ERROR_SUCCESS ? refusal : GetLastError());
    }
    return window;
}
