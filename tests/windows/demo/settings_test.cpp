// What the sample host remembers, in real profile files.
#include "data/settings.h"

#include <gtest/gtest.h>

#include "data/data_folder.h"
#include "horivo_host.h"

namespace {

class SettingsTest : public testing::TestWithParam<std::uint32_t> {
protected:
    SettingsTest() : before_(ReadSettings()) { adminFlags = GetParam(); }
    ~SettingsTest() override {
        DeleteFileW((ProgramFolder() + L"default.ini").c_str());
        adminFlags = 0;
        WriteSettings(before_);
    }

    const HostSettings before_;
};

TEST_P(SettingsTest, WhatIsWrittenIsReadAgain) {
    HostSettings settings;
    settings.language = L"JPN";
    settings.place = {-1200, 30, -200, 730};  // a monitor left of the first
    settings.maximized = true;
    settings.sortColumn = 3;
    settings.sortDescending = true;
    WriteSettings(settings);
    const HostSettings read = ReadSettings();
    EXPECT_EQ(read.language, settings.language);
    EXPECT_TRUE(EqualRect(&read.place, &settings.place));
    EXPECT_TRUE(read.maximized && read.sortDescending);
    EXPECT_EQ(read.sortColumn, 3);
    const bool inProgramFolder =
        GetFileAttributesW((ProgramFolder() + L"default.ini").c_str()) != INVALID_FILE_ATTRIBUTES;
    EXPECT_EQ(inProgramFolder, GetParam() == kNoPreferences);
}

INSTANTIATE_TEST_SUITE_P(Places, SettingsTest, testing::Values(0U, kNoPreferences));

TEST(SettingsAlone, AWindowOpensWhereItCanBeReached) {
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
