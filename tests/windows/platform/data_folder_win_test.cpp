#include "api/map_data_folder_win.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/windows_types.h"

namespace {

namespace fs = std::filesystem;

class DataFolderTest : public testing::Test {
protected:
    DataFolderTest() { fs::create_directories(base_); }
    ~DataFolderTest() override {
        std::error_code ignored;
        fs::remove_all(base_, ignored);
    }
    const fs::path base_ =
        fs::temp_directory_path() / (L"horivo-data-" + std::to_wstring(GetCurrentProcessId()));
};

TEST_F(DataFolderTest, HasTwoLevelsOrIsEmptyWhereNoFolderCanBe) {
    const std::wstring expected = base_.wstring() + L"\\Zelmo\\Horivo\\";
    for (const char* round : {"made", "found"}) {
        EXPECT_EQ(DataDirectoryBelow(base_.wstring()), expected) << round;
        EXPECT_TRUE(fs::is_directory(expected)) << round;
    }
    fs::remove(expected);
    EXPECT_EQ(DataDirectoryBelow(L""), L"") << "never a folder of the current directory";
    EXPECT_EQ(DataDirectoryBelow(base_.wstring() + L"\\missing\\deeper"), L"");
    std::ofstream(base_ / "Zelmo" / "Horivo") << "a file in the way";
    EXPECT_EQ(DataDirectoryBelow(base_.wstring()), L"");
    fs::remove_all(base_ / "Zelmo");
    std::ofstream(base_ / "Zelmo") << "and one above";
    EXPECT_EQ(DataDirectoryBelow(base_.wstring()), L"");
}

TEST_F(DataFolderTest, IsEmptyWhenThePathGetsTooLong) {
    // What is added has 14 characters; Windows makes folders of up to 247.
    std::wstring folder = base_.wstring() + L'\\';
    folder += std::wstring(120 - folder.size(), L'd') + L'\\';
    folder += std::wstring(234 - folder.size(), L'd');
    fs::create_directories(folder);
    EXPECT_EQ(DataDirectoryBelow(folder).size(), 248U);
    const std::wstring longer = folder + std::wstring(12, L'd');
    std::error_code ignored;
    fs::create_directory(longer, ignored);
    EXPECT_EQ(DataDirectoryBelow(longer), L"") << "260 characters leave no room for a terminator";
    EXPECT_EQ(DataDirectoryBelow(std::wstring(5000, L'x')), L"");
}

}  // namespace
