// The sample host: its cities, the watch over its photos, what it remembers, a window with the map.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

#include "clock/start_city.h"
#include "clock/time_texts.h"
#include "data/data_folder.h"
#include "data/photo_tree.h"
#include "horivo_host.h"
#include "host_app.h"
#include "resource_ids.h"
#include "support/faked_import_win.h"
#include "support/temporary_folder_win.h"

namespace {

using std::string_literals::operator""s;
using Sending = FakedImport<"SendMessageW", decltype(SendMessageW)>;

TEST(Cities, SearchFindsFirstWhatPeopleMeanInTheirLanguageAndInEnglish) {
    const std::filesystem::path assets = HORIVO_ASSETS;
    const std::vector<CityRecord> cities = ReadCities(ReadTextFile(assets / "cities.tsv"));
    const struct {
        const wchar_t *language, *wanted, *first;
    } cases[] = {
        {L"en", L"par", L"Paris"},  // not Paramaribo, nor Asuncion in Paraguay
        {L"en", L"york", L"York"},  // New York only contains it
        {L"en", L"SAIGON", L"Ho Chi Minh"},  {L"en", L"malmö", L"Malmo"},
        {L"en", L"st johns", L"St. John's"}, {L"de", L"gdansk", L"Danzig"},
        {L"fr", L"islande", L"Reykjavik"},   {L"ja", L"みゅんへん", L"ミュンヘン"},
    };
    for (const auto& c : cases) {
        const auto names =
            ReadCityNames(ReadTextFile(assets / "city_names.tsv"), cities, c.language);
        std::vector<CityRow> rows;
        for (std::size_t i = 0; i < cities.size(); ++i) {
            const Fit fit = FitOf(cities[i], names[i], c.wanted);
            if (fit != Fit::None) rows.push_back({static_cast<std::int32_t>(i), fit, false, {}});
        }
        SortRows(rows, names, CityColumn::Name, false);
        EXPECT_EQ(names[static_cast<std::size_t>(rows.at(0).city)].city[0], c.first);
    }
    std::vector<CityRow> rows = {{0, Fit::Country, false, {}}, {1, Fit::Country, true, {}}};
    SortRows(rows, ReadCityNames(L"", cities, L"en"), CityColumn::Time, false);
    EXPECT_EQ(rows[0].city, 1) << "a city without a time comes last";
    EXPECT_EQ(FindCityOfZone(cities, 135, L"Italy"), FindCity(cities, L"Rome", L"Italy"));
    EXPECT_EQ(OffsetText(-5) + OffsetText(330), L"UTC\u22120:05UTC+5:30");
    const auto broken = ReadCities(
        L"# remark\t\t1\t1\nLima\nLima\tPeru\t-12\nLima\tPeru\t-12x\t-77\nLima\tPeru\t-91\t-77\n"
        L"Lima\tPeru\t-12\t180.5\nLima\tPeru\tnan\t-77\n\tPeru\t-12\t-77\nLima\tPeru\t\t-77\n\0Hidden\tPeru\t1\t1"s);
    EXPECT_TRUE(broken.empty());
}

TEST(FolderWatch, TellsNewPhotosByCityOrCountry) {
    const TemporaryFolder folder;
    const auto cities = ReadCities(L"X\tX\t1\t1\nParis\tFrance\t1\t1\nLyon\tFrance\t1\t1\n");
    std::filesystem::create_directories(folder.path / "France\\Paris");
    std::filesystem::create_directories(folder.path / "France\\Lyon");
    const auto write = [&](const char* path, const char* text) {
        std::ofstream(folder.path / path, std::ios::app) << text;
    };
    write("France\\Paris\\index.tsv", "# remark\nparis-1\t1\n");
    std::vector<std::pair<int, int>> told;
    FolderWatch watch(folder.path.wstring() + L"\\", cities,
                      [&](int city, int count) { told.emplace_back(city, count); });
    for (int i = 0; i < 3; ++i) {
        write("note.txt", "nothing that counts");
        ASSERT_EQ(WaitForSingleObject(watch.Event(), 10000), WAIT_OBJECT_0) << "set anew";
        watch.ReadChanges();
    }
    write("France\\Paris\\index.tsv", "paris-2\t1\nparis-3\t1\n");
    write("France\\index.tsv", "france-1\t1\n");
    write("France\\Lyon\\index.tsv", "lyon-1\t1\n");
    watch.CheckAll();
    write("France\\Paris\\index.tsv", "# another remark\n");
    std::filesystem::remove(folder.path / "France\\index.tsv");
    watch.CheckAll();
    const decltype(told) expected = {{1, 2}, {-1, 1}, {2, 1}};
    EXPECT_THAT(told, testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(CountryIndexPath(ReadCities(L"Paris\t\\. .\t1\t1")[0]), L"") << "out of the tree";
}

TEST(Settings, WhatIsWrittenIsReadAgain) {
    const HostSettings before = ReadSettings();
    WriteSettings({.language = L"JPN",
                   .city = L"St. John's",
                   .country = L"Antigua and Barbuda",
                   .place = {-1200, 30, -200, 730},  // a monitor left of the first
                   .maximized = true,
                   .sortColumn = 99});
    const HostSettings read = ReadSettings();
    EXPECT_EQ(read.language + read.city + read.country, L"JPNSt. John'sAntigua and Barbuda");
    EXPECT_EQ(read.place.left + read.place.right, -1400);
    EXPECT_TRUE(read.maximized && !read.sortDescending && !read.alwaysOnTop);
    EXPECT_EQ(read.sortColumn, 4) << "the last that there is";
    WriteSettings(before);
    RECT lost{90000, -9000, 90800, -8400};
    const RECT corner{GetSystemMetrics(SM_CXSCREEN) - 800, 0, GetSystemMetrics(SM_CXSCREEN), 600};
    EXPECT_TRUE(FitToScreen(lost) && EqualRect(&lost, &corner));
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
        std::vector<WPARAM> pressed;
        const auto note = [&](HWND to, UINT message, WPARAM key, LPARAM lParam) {
            if (message == WM_KEYDOWN && to == app.windows[0]->Map()) pressed.push_back(key);
            return Sending::Real(to, message, key, lParam);
        };
        {
            const Sending noted(GetModuleHandleW(nullptr), note);
            for (WPARAM command = IDM_HOME_VIEW; command <= IDM_INFORMATION; ++command)
                SendMessageW(window, WM_COMMAND, command, 0);
        }
        pressed.erase(std::unique(pressed.begin(), pressed.end()), pressed.end());
        EXPECT_THAT(pressed,
                    testing::ElementsAre(VK_HOME, VK_ADD, VK_SUBTRACT, 'H', 'L', 'F', 'I'));
        const auto fieldHeight = [window] {
            RECT field{};
            GetClientRect(FindWindowExW(window, nullptr, L"Edit", nullptr), &field);
            return field.bottom;
        };
        const LONG before = fieldHeight();
        SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&place));
        EXPECT_GT(fieldHeight(), before * 3 / 2);
        const HWND map = app.windows[0]->Map();
        ValidateRect(map, nullptr);
        SendMessageW(window, WM_TIMECHANGE, 0, 0);
        EXPECT_TRUE(GetUpdateRect(map, nullptr, FALSE)) << "the Sun has moved";
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
