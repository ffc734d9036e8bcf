/* A window with a globe in it, in C. Link horivo_map; put horivo_map.dll, map.jpg and, for the
 * buttons over the map, buttons.png beside the program. */
#include <windows.h>
#include <shlobj.h>
#include <wchar.h>
#include "horivo_map.h"

static CityRecord cities[] = {
    {.latitude = 0}, /* the pointer resting on the first city of a table shows nothing */
    {L"Paris", L"France", .latitude = 48.8667, .longitude = 2.3333, .timeZoneId = 91},
    {L"Tokyo", L"Japan", .latitude = 35.6544, .longitude = 139.7447, .timeZoneId = 114}};

static LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND map = GetWindow(window, GW_CHILD);
    if (message == WM_SIZE) MoveWindow(map, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
    if (message == WM_SETFOCUS) SetFocus(map);
    if (message == HORIVO_MSG_CITY) SetWindowTextW(window, cities[wParam].cityName);
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE before, LPSTR line, int show) {
    (void)before, (void)line, (void)show;
    if (InitMap(cities, 3) != HORIVO_OK) return 1;
    wchar_t picture[MAX_PATH + 32] = L""; /* InitMap has created the folder */
    SHGetFolderPathW(NULL, CSIDL_COMMON_APPDATA, NULL, SHGFP_TYPE_CURRENT, picture);
    wcscat(picture, L"\\Zelmo\\Horivo\\map.jpg");
    if (CopyFileW(L"map.jpg", picture, TRUE) && InstallMap() != HORIVO_OK) return 2;

    WNDCLASSW hostClass = {.lpfnWndProc = HostProc, .hInstance = instance, .lpszClassName = L"Host"};
    RegisterClassW(&hostClass);
    HWND host = CreateWindowW(L"Host", L"My globe", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 80, 80,
                              900, 700, NULL, NULL, instance, NULL);
    uint32_t status = HORIVO_OK;
    if (!CreateMapWindow(host, 0, 0, 900, 700, &status)) return 3;
    ShowWindow(host, SW_SHOWNORMAL);
    for (MSG message; GetMessageW(&message, NULL, 0, 0) > 0; DispatchMessageW(&message))
        TranslateMessage(&message);
    FreeMap();
    return 0;
}
