// The log on disk: whole lines from several threads and programs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "base/handles_win.h"
#include "horivo_host.h"

namespace {

using testing::ElementsAre;
using testing::MatchesRegex;

class LogTest : public testing::Test {
protected:
    LogTest() {
        std::filesystem::create_directories(folder_);
        SetFolder(folder_);
        adminFlags = kLogging;
    }
    ~LogTest() override {
        adminFlags = 0;
        CloseLogMutex();
        SetFolder(folder_.parent_path());
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    static void SetFolder(const std::filesystem::path& folder) {
        SetEnvironmentVariableW(L"TMP", folder.c_str());
    }

    /// The lines of the log without their CR LF, each of which must have one.
    std::vector<std::string> Lines() const {
        std::ifstream file(folder_ / "horivo.log", std::ios::binary);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            EXPECT_TRUE(line.ends_with('\r') && !file.eof());
            lines.push_back(line.substr(0, line.size() - 1));
        }
        return lines;
    }

    const std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                          (L"horivo-log-" + std::to_wstring(GetTickCount64()) +
                                           std::to_wstring(GetCurrentProcessId()));
};

TEST_F(LogTest, ALineSaysWhenWhoAndWhat) {
    adminFlags = 0xFFFFFFFF & ~kLogging;
    WriteLog("no");
    WriteLogW(L"no");
    EXPECT_TRUE(std::filesystem::is_empty(folder_)) << "written with the switch off";
    adminFlags = kLogging;
    WriteLog("first, 100%s");
    const std::ifstream reader(folder_ / "horivo.log");  // somebody who looks on
    WriteLogW(L"second");
    WriteLogW(std::wstring(3000, L'w').c_str());
    WriteLog(nullptr);
    WriteLogW(nullptr);
    WriteLog(std::string(5000, 'n').c_str());
    char who[32];
    std::snprintf(who, sizeof who, "0x%08X:0x%08X ", static_cast<unsigned>(GetCurrentProcessId()),
                  static_cast<unsigned>(GetCurrentThreadId()));
    const std::string prefix =
        std::string("\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d ") + who + "horivo_host_tests\\.exe: ";
    const auto lines = Lines();
    ASSERT_THAT(lines,
                ElementsAre(MatchesRegex(prefix + "first, 100%s"), MatchesRegex(prefix + "second"),
                            MatchesRegex(prefix + "w+"), MatchesRegex(prefix + "n+")));
    const std::size_t prefixSize = lines[1].size() - std::string("second").size();
    EXPECT_EQ(lines[2].size() - prefixSize, 2047U) << "a wide message is cut";
    EXPECT_EQ(lines[3].size() - prefixSize, 5000U) << "a narrow one is not";
}

TEST_F(LogTest, AFolderThatCannotBeWrittenIsSilent) {
    CreateLogMutex();
    SetFolder(folder_ / "missing");
    WriteLog("lost");
    SetFolder(folder_);
    std::filesystem::create_directory(folder_ / "horivo.log");
    WriteLog("lost");
    std::filesystem::remove(folder_ / "horivo.log");
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
    // Another thread or program must get the mutex now, and this one again later.
    std::thread([] { WriteLog("kept"); }).join();
    EXPECT_EQ(Lines().size(), 1U);
}

TEST_F(LogTest, ALineWaitsForThatOfAnotherProgram) {
    ASSERT_TRUE(CreateLogMutex());
    // As another program has it: by its name alone.
    const UniqueHandle mutex(CreateMutexW(nullptr, FALSE, L"horivo_log_mutex"));
    MutexHold hold = AcquireMutex(mutex.get(), 0);
    ASSERT_TRUE(hold);
    std::thread writer([] { WriteLog("waited"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_TRUE(std::filesystem::is_empty(folder_)) << "between the pieces of a line";
    hold.reset();
    writer.join();
    EXPECT_EQ(Lines().size(), 1U);
}

}  // namespace
