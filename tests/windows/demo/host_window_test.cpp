// What the sample host remembers, in real profile files, and a window of it with the map.
#include <gmock/gmock.h>

#include <algorithm>

#include "data/data_folder.h"
#include "horivo_host.h"
#include "host_app.h"
#include "resource_ids.h"

namespace {

TEST(Settings, WhatIsWrittenIsReadAgain) {
    const HostSettings before = ReadSettings();
    for (const std::uint32_t flags : {kNoPreferences, 0U}) {
        adminFlags = flags;
        HostSettings settings;
        settings.language = flags == 0 ? L"JPN" : L"RUS";
        settings.place = {-1200, 30, -200, 730};  // a monitor left of the first
        settings.maximized = flags == 0;
        settings.sortDescending = flags != 0;
        settings.sortColumn = 99;
        settings.city = L"St. John's";
        settings.country = L"Antigua and Barbuda";
        WriteSettings(settings);
        const HostSettings read = ReadSettings();
        EXPECT_EQ(read.language, settings.language);
        EXPECT_TRUE(EqualRect(&read.place, &settings.place));
        EXPECT_EQ(read.maximized, flags == 0);
        EXPECT_EQ(read.sortDescending, flags != 0);
        EXPECT_EQ(read.sortColumn, 4) << "the last that there is";
        EXPECT_EQ(read.city + read.country, settings.city + settings.country);
        EXPECT_EQ(DeleteFileW((ProgramFolder() + L"default.ini").c_str()), flags != 0);
    }
    WriteSettings(before);
}

TEST(Settings, AWindowOpensWhereItCanBeReached) {
    const LONG width = GetSystemMetrics(SM_CXSCREEN);
    RECT place{width + 5000, -9000, width + 5800, -8400};
    ASSERT_TRUE(FitToScreen(place));
    const RECT corner{width - 800, 0, width, 600};
    EXPECT_TRUE(EqualRect(&place, &corner));
    RECT huge{0, 0, 30000, 30000};
    EXPECT_TRUE(FitToScreen(huge) && huge.right == width);
    for (RECT bad : {RECT{}, RECT{10, 10, 20, 900}, RECT{500, 500, 100, 100}})
        EXPECT_FALSE(FitToScreen(bad));
}

/// The map's own procedure, and the keys that came to the map.
WNDPROC mapProc = nullptr;
std::vector<WPARAM> pressed;

LRESULT CALLBACK NoteKeys(HWND map, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN) pressed.push_back(wParam);
    return CallWindowProcW(mapProc, map, message, wParam, lParam);
}

TEST(HostWindow, PressesTheMapsKeysFollowsTheScalingAndKeepsItsPlace) {
    const HostServices services;
    adminFlags = kNoPreferences;  // the settings are beside this program
    RECT place{240, 150, 1840, 1250};
    {
        HostApp app;
        app.data.cities = ReadCities(L"Lima\tPeru\t-12\t-77\n");
        app.data.names = ReadCityNames(L"", app.data.cities, L"en");
        std::uint32_t status = InitMap(app.data.cities.data(), 1);
        ASSERT_EQ(status, HORIVO_OK);
        ASSERT_TRUE(app.OpenWindow(status)) << status;
        const HWND window = app.windows[0]->Handle();
        mapProc = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
            app.windows[0]->Map(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&NoteKeys)));
        for (WPARAM command = IDM_HOME_VIEW; command <= IDM_INFORMATION; ++command)
            SendMessageW(window, WM_COMMAND, command, 0);
        pressed.erase(std::unique(pressed.begin(), pressed.end()), pressed.end());
        EXPECT_THAT(pressed,
                    testing::ElementsAre(VK_HOME, VK_ADD, VK_SUBTRACT, 'H', 'L', 'F', 'I'));
        const auto fontHeight = [window] {
            HWND field = FindWindowExW(window, nullptr, L"Edit", nullptr);
            LOGFONTW font{};
            GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(field, WM_GETFONT, 0, 0)),
                       sizeof font, &font);
            return font.lfHeight;
        };
        const LONG before = fontHeight();
        SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&place));
        EXPECT_EQ(fontHeight(), 2 * before);
        SendMessageW(window, WM_COMMAND, IDM_ALWAYS_ON_TOP, 0);
        SendMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(app.windows.empty());
        FreeMap();
    }
    const HostSettings kept = ReadSettings();
    EXPECT_TRUE(EqualRect(&kept.place, &place));
    EXPECT_TRUE(kept.alwaysOnTop && !kept.maximized);
    DeleteFileW((ProgramFolder() + L"default.ini").c_str());
}

}  // namespace
