#include "interface/command_line_folder.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace {

std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

TEST(FolderOfCommandLine, IsWhatStandsBeforeTheLastBackslash) {
    for (const Row& row : Table("command_line")) {
        EXPECT_EQ(FolderOfCommandLine(Wide(row.Text(0))), Wide(row.Text(1))) << row.why;
    }
}

TEST(FolderOfCommandLine, IsEmptyWhenItGetsTooLong) {
    const std::wstring longest = std::wstring(258, L'd') + L"\\";
    EXPECT_EQ(FolderOfCommandLine(longest + L"clock.exe"), longest);
    EXPECT_EQ(FolderOfCommandLine(L"d" + longest + L"clock.exe"), L"") << "no room for its end";
    EXPECT_EQ(FolderOfCommandLine(L"C:\\a\\" + std::wstring(5000, L'x')), L"C:\\a\\");
}

}  // namespace
