#include "api/map_data_folder_win.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/temporary_folder_win.h"

namespace {

namespace fs = std::filesystem;

TEST(DataFolder, HasTwoLevelsOrIsEmptyWhereNoFolderCanBe) {
    const TemporaryFolder base;
    const std::wstring expected = base.path.wstring() + L"\\Zelmo\\Horivo\\";
    for (const char* round : {"made", "found"}) {
        EXPECT_EQ(DataDirectoryBelow(base.path), expected) << round;
        EXPECT_TRUE(fs::is_directory(expected)) << round;
    }
    EXPECT_EQ(DataDirectoryBelow(L""), L"") << "never a folder of the current directory";
    EXPECT_EQ(DataDirectoryBelow(base.path / "missing\\deeper"), L"");
    for (const char* file : {"Zelmo\\Horivo", "Zelmo"}) {
        fs::remove(base.path / file);
        std::ofstream(base.path / file) << "a file in the way";
        EXPECT_EQ(DataDirectoryBelow(base.path), L"");
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
        fs::remove(base.path / file);
    }
    // What is added has 14 characters. Windows makes folders of up to 247.
    std::wstring folder = base.path.wstring() + L'\\';
    folder += std::wstring(120 - folder.size(), L'd') + L'\\';
    folder += std::wstring(234 - folder.size(), L'd');
    fs::create_directories(folder);
    EXPECT_EQ(DataDirectoryBelow(folder).size(), 248U);
    std::error_code ignored;
    fs::create_directory(folder + std::wstring(12, L'd'), ignored);
    EXPECT_EQ(DataDirectoryBelow(folder + std::wstring(12, L'd')), L"")
        << "260 characters leave no room for a terminator";
}

}  // namespace
