// A window with a globe. Beside the program must be horivo_map.dll, map.jpg and buttons.png.
#include <windows.h>
#include <shlobj.h>
#include <filesystem>
#include "horivo_map.h"

static CityRecord cities[] = {
    {L"", L"", {}, 0, 0},  // the pointer resting on the first city of a table shows no photos
    {L"Paris", L"France", {}, 48.8667, 2.3333, 91},     // 91: "Romance Standard Time"
    {L"Tokyo", L"Japan", {}, 35.6544, 139.7447, 114}};  // 114: "Tokyo Standard Time"

static LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND map = GetWindow(window, GW_CHILD);
    if (message == WM_SIZE) MoveWindow(map, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
    if (message == WM_SETFOCUS) SetFocus(map);
    if (message == WM_TIMER) InvalidateRect(map, nullptr, FALSE);  // once a minute
    if (message == HORIVO_MSG_CITY) SetWindowTextW(window, cities[wParam].cityName);
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    if (InitMap(cities, 3) != HORIVO_OK) return 1;
    wchar_t program[MAX_PATH] = L"", data[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_CURRENT, data);
    const auto picture = std::filesystem::path(program).replace_filename("map.jpg");
    const auto folder = std::filesystem::path(data) / "Zelmo" / "Horivo";  // InitMap made it
    if (CopyFileW(picture.c_str(), (folder / "map.jpg").c_str(), TRUE) && InstallMap() != HORIVO_OK) {
        for (auto name : {"map.jpg", "map0.jpg"}) DeleteFileW((folder / name).c_str());
        return 2;  // without the refused picture and its copy the next start tries again
    }
    WNDCLASSW hostClass = {0, HostProc, 0, 0, instance, nullptr, nullptr, nullptr, nullptr, L"Host"};
    RegisterClassW(&hostClass);
    HWND host = CreateWindowW(L"Host", L"My globe", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 80, 80,
                              900, 700, nullptr, nullptr, instance, nullptr);
    uint32_t status = HORIVO_OK;
    if (!CreateMapWindow(host, 0, 0, 900, 700, &status)) return 3;
    SetTimer(host, 1, 60000, nullptr);  // ms
    ShowWindow(host, SW_SHOWNORMAL);
    for (MSG message; GetMessageW(&message, nullptr, 0, 0) > 0; DispatchMessageW(&message))
        TranslateMessage(&message);
    return FreeMap() ? 0 : 4;
}
