#include "host_window.h"

#include <string>

#include "own_frame.h"
#include "photo_tree.h"

namespace {

constexpr wchar_t kHostClass[] = L"Horivo sample host";
constexpr wchar_t kTitle[] = L"Horivo Map";
constexpr DWORD kHostStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

/// The map's handle lies in the host window's user data.
void KeepMap(HWND host, HWND map) {
    SetWindowLongPtrW(host, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(map));
}

void FillWithMap(HWND host) {
    RECT area{};
    GetClientRect(host, &area);
    if (HWND map = MapOf(host); map != nullptr && GetAncestor(map, GA_PARENT) == host) {
        MoveWindow(map, 0, 0, area.right, area.bottom, TRUE);
    }
}

/// A click on a city puts its name into the title.
void ShowCityInTitle(HWND host, const CityRecord* city) {
    if (city == nullptr) return;
    std::wstring title = std::wstring(kTitle) + L" - " + city->cityName;
    if (city->countryName[0] != L'\0') title += std::wstring(L", ") + city->countryName;
    SetWindowTextW(host, title.c_str());
    if (HWND map = MapOf(host); map != nullptr) SetWindowTextW(map, title.c_str());
}

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            FillWithMap(window);
            return 0;
        case WM_SETFOCUS:
            if (HWND map = MapOf(window); map != nullptr) SetFocus(map);
            return 0;
        case WM_MOUSEWHEEL:
            if (HWND map = MapOf(window); map != nullptr) {
                return SendMessageW(map, message, wParam, lParam);
            }
            break;
        case HORIVO_MSG_CITY:
            ShowCityInTitle(window, reinterpret_cast<const CityRecord*>(lParam));
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK HiddenProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == HORIVO_MSG_MAY_SHOW_PHOTOS) {
        const auto* cities = reinterpret_cast<const std::vector<CityRecord>*>(
            GetWindowLongPtrW(window, GWLP_USERDATA));
        return cities != nullptr && MayShowPhotos(*cities, static_cast<std::int32_t>(wParam)) ? 1
                                                                                              : 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    windowClass.lpszClassName = name;
    RegisterClassExW(&windowClass);
}

}  // namespace

HWND MakeHiddenWindow(const std::vector<CityRecord>& cities) {
    RegisterWindowClass(HORIVO_HOST_WINDOW_CLASS, HiddenProc);
    HWND hidden = CreateWindowExW(0, HORIVO_HOST_WINDOW_CLASS, kTitle, WS_POPUP, 0, 0, 0, 0,
                                  nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (hidden != nullptr) {
        SetWindowLongPtrW(hidden, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&cities));
    }
    return hidden;
}

HWND MakeHostWindow(int width, int height, std::uint32_t& status) {
    status = HORIVO_OK;
    RegisterWindowClass(kHostClass, HostProc);
    RECT frame{0, 0, width, height};
    AdjustWindowRectEx(&frame, kHostStyle, FALSE, 0);
    HWND host = CreateWindowExW(0, kHostClass, kTitle, kHostStyle, CW_USEDEFAULT, CW_USEDEFAULT,
                                frame.right - frame.left, frame.bottom - frame.top, nullptr,
                                nullptr, GetModuleHandleW(nullptr), nullptr);
    if (host == nullptr) return nullptr;
    HWND map = CreateMapWindow(host, 0, 0, width, height, &status);
    if (map == nullptr) {
        DestroyWindow(host);
        // That was no wish of the user to end the program: take the quit message back.
        MSG quit;
        PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        return nullptr;
    }
    KeepMap(host, map);
    if (NeedsOwnFrame()) {
        GiveOwnFrame(map, host, width, height);
    } else {
        ShowWindow(host, SW_SHOW);
    }
    return host;
}

HWND MapOf(HWND host) {
    HWND map = reinterpret_cast<HWND>(GetWindowLongPtrW(host, GWLP_USERDATA));
    return IsWindow(map) ? map : nullptr;
}
