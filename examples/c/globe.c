/* A window with a globe. Beside the program must be horivo_map.dll, map.jpg and buttons.png. */
#include <windows.h>
#include <shlobj.h>
#include "horivo_map.h"

static CityRecord cities[] = {
    {.latitude = 0}, /* the pointer resting on the first city of a table shows no photos */
    {L"Paris", L"France", .latitude = 48.8667, .longitude = 2.3333, .timeZoneId = 91},
    {L"Tokyo", L"Japan", .latitude = 35.6544, .longitude = 139.7447, .timeZoneId = 114}};

static LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND map = GetWindow(window, GW_CHILD);
    if (message == WM_SIZE) MoveWindow(map, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
    if (message == WM_SETFOCUS) SetFocus(map);
    if (message == WM_TIMER) InvalidateRect(map, NULL, FALSE); /* once a minute */
    if (message == HORIVO_MSG_CITY) SetWindowTextW(window, cities[wParam].cityName);
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE before, LPSTR line, int show) {
    (void)before, (void)line, (void)show;
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    if (InitMap(cities, 3) != HORIVO_OK) return 1;
    wchar_t picture[MAX_PATH + 8] = L"", map[MAX_PATH + 32] = L"", copy[MAX_PATH + 32] = L"";
    GetModuleFileNameW(NULL, picture, MAX_PATH);
    lstrcpyW(wcsrchr(picture, L'\\'), L"\\map.jpg");
    SHGetFolderPathW(NULL, CSIDL_COMMON_APPDATA, NULL, SHGFP_TYPE_CURRENT, map);
    lstrcatW(lstrcatW(copy, map), L"\\Zelmo\\Horivo\\map0.jpg"); /* the library makes this one */
    lstrcatW(map, L"\\Zelmo\\Horivo\\map.jpg"); /* InitMap has made this folder */
    if (CopyFileW(picture, map, TRUE) && InstallMap() != HORIVO_OK)
        return DeleteFileW(map), DeleteFileW(copy), 2; /* so the next start tries again */

    WNDCLASSW hostClass = {.lpfnWndProc = HostProc, .hInstance = instance, .lpszClassName = L"Host"};
    RegisterClassW(&hostClass);
    HWND host = CreateWindowW(L"Host", L"My globe", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 80, 80,
                              900, 700, NULL, NULL, instance, NULL);
    uint32_t status = HORIVO_OK;
    if (!CreateMapWindow(host, 0, 0, 900, 700, &status)) return 3;
    SetTimer(host, 1, 60000, NULL); /* ms */
    ShowWindow(host, SW_SHOWNORMAL);
    for (MSG message; GetMessageW(&message, NULL, 0, 0) > 0; DispatchMessageW(&message))
        TranslateMessage(&message);
    return FreeMap() ? 0 : 4;
}
