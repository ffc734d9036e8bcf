#include "window/settings_win.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "base/handles_win.h"
#include "horivo_host.h"

namespace {

namespace fs = std::filesystem;

/// Real profile files, each under a name of its own because Windows remembers files by name.
class SettingsTest : public testing::Test {
protected:
    SettingsTest() { fs::create_directories(folder_); }
    ~SettingsTest() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    std::wstring Write(const std::string& bytes) {
        const fs::path file = folder_ / (std::to_wstring(++files_) + L".ini");
        std::ofstream(file, std::ios::binary) << bytes;
        return file.wstring();
    }

    const fs::path folder_ =
        fs::temp_directory_path() / (L"horivo-settings-" + std::to_wstring(GetCurrentProcessId()));
    int files_ = 0;
    MapSettings settings_;
};

/// The text as UTF-16 with a byte-order mark, as Windows' editors write it.
std::string Utf16(const std::string& text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

TEST_F(SettingsTest, ReadsTheFourNumbersInEitherEncoding) {
    const std::string text =
        "[other]\r\ntexScalerX=1\r\n[map]\r\ntexScalerX=5\r\ntexScalerY=-9\r\n"
        "tex_compression=7\r\nlag_factor=3\r\n";
    for (const std::string& bytes : {text, Utf16(text)}) {
        MapSettings settings;
        EXPECT_EQ(ReadMapSettings(Write(bytes), settings, 100), 300);
        EXPECT_EQ(settings.texScalerX, 2);
        EXPECT_EQ(settings.texScalerY, -3);
        EXPECT_EQ(settings.texCompression, 1);
    }
}

TEST_F(SettingsTest, MissingKeysKeepWhatIsHeld) {
    settings_ = {1, -2, 1};
    EXPECT_EQ(ReadMapSettings(Write("[map]\r\n"), settings_, 250), 200);
    EXPECT_EQ(settings_.texScalerX, 1);
    EXPECT_EQ(settings_.texScalerY, -2);
    EXPECT_EQ(settings_.texCompression, 1);
    EXPECT_EQ(ReadMapSettings((folder_ / L"none.ini").wstring(), settings_, 100), 100);
    EXPECT_EQ(settings_.texScalerY, -2) << "a missing file";
}

TEST_F(SettingsTest, ASecondWindowReadsOnTopOfTheFirst) {
    ReadMapSettings(Write("[map]\r\ntexScalerX=-1\r\n"), settings_, 100);
    ReadMapSettings(Write("[map]\r\ntexScalerY=1\r\n"), settings_, 100);
    EXPECT_EQ(settings_.texScalerX, -1);
    EXPECT_EQ(settings_.texScalerY, 1);
}

TEST_F(SettingsTest, AnEmptyPathTouchesNeitherSettingsNorSwitches) {
    const std::wstring path =
        L"Software\\HorivoSettingsTest" + std::to_wstring(GetCurrentProcessId());
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                    nullptr);
    const UniqueRegistryKey root(key);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, root.get());
    const DWORD one = 1;
    RegSetKeyValueW(root.get(), L"Software\\Zelmo\\Horivo", L"logging", REG_DWORD, &one,
                    sizeof one);
    settings_.texScalerX = 2;
    EXPECT_EQ(ReadMapSettings(L"", settings_, 250), 250);
    EXPECT_EQ(settings_.texScalerX, 2);
    EXPECT_TRUE(IsFeatureEnabled(kLogging));
    ReadMapSettings(Write("[map]\r\n"), settings_, 100);
    EXPECT_FALSE(IsFeatureEnabled(kLogging)) << "a read refreshes the switches";
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
}

}  // namespace
