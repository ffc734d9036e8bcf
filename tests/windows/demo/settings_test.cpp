// What the sample host remembers, in real profile files.
#include "data/settings.h"

#include <gtest/gtest.h>

#include "data/data_folder.h"
#include "horivo_host.h"

namespace {

TEST(Settings, WhatIsWrittenIsReadAgain) {
    const HostSettings before = ReadSettings();
    for (const std::uint32_t flags : {kNoPreferences, 0U}) {
        adminFlags = flags;
        HostSettings settings;
        settings.language = flags == 0 ? L"JPN" : L"RUS";
        settings.place = {-1200, 30, -200, 730};  // a monitor left of the first
        settings.maximized = settings.sortDescending = true;
        settings.alwaysOnTop = true;
        settings.sortColumn = 4;
        settings.city = L"St. John's";
        settings.country = L"Antigua and Barbuda";
        WriteSettings(settings);
        const HostSettings read = ReadSettings();
        EXPECT_EQ(read.language, settings.language);
        EXPECT_TRUE(EqualRect(&read.place, &settings.place));
        EXPECT_TRUE(read.maximized && read.sortDescending && read.alwaysOnTop);
        EXPECT_EQ(read.sortColumn, 4);
        EXPECT_EQ(read.city + read.country, settings.city + settings.country);
        const bool wasInProgramFolder = DeleteFileW((ProgramFolder() + L"default.ini").c_str());
        EXPECT_EQ(wasInProgramFolder, flags != 0);
    }
    WriteSettings(before);
}

TEST(Settings, AWindowOpensWhereItCanBeReached) {
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    RECT place{width + 5000, -9000, width + 5800, -8400};
    ASSERT_TRUE(FitToScreen(place));
    EXPECT_TRUE(place.left >= 0 && place.right <= width && place.top >= 0 &&
                place.bottom <= height);
    EXPECT_EQ(place.right - place.left, 800);
    RECT huge{0, 0, 30000, 30000};
    ASSERT_TRUE(FitToScreen(huge));
    EXPECT_LE(huge.right - huge.left, width);
    for (RECT bad : {RECT{}, RECT{10, 10, 20, 900}, RECT{500, 500, 100, 100}}) {
        EXPECT_FALSE(FitToScreen(bad));
    }
}

}  // namespace
