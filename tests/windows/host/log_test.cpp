// The log on disk: whole lines from several threads and programs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "base/handles_win.h"
#include "horivo_host.h"

namespace {

using testing::MatchesRegex;

constexpr int kThreads = 4;
constexpr int kLinesEach = 100;

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
    WriteLog("first, 100%s");
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
    EXPECT_THAT(Lines(), testing::ElementsAre(
                             MatchesRegex(prefix + "first, 100%s"), MatchesRegex(prefix + "second"),
                             MatchesRegex(prefix + "w+"), MatchesRegex(prefix + "n+")));
    const std::size_t prefixSize = Lines()[1].size() - std::string("second").size();
    EXPECT_EQ(Lines()[2].size() - prefixSize, 2047U) << "a wide message is cut";
    EXPECT_EQ(Lines()[3].size() - prefixSize, 5000U) << "a narrow one is not";
}

TEST_F(LogTest, NothingIsWrittenWithTheSwitchOff) {
    adminFlags = 0xFFFFFFFF & ~kLogging;
    WriteLog("no");
    WriteLogW(L"no");
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
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
    // Another program must get the mutex now, and this one again later.
    std::thread([] { WriteLog("kept"); }).join();
    EXPECT_EQ(Lines().size(), 1U);
}

void WriteFromThreads(const std::string& who) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([thread, &who] {
            for (int i = 0; i < kLinesEach; ++i) {
                WriteLog((who + std::to_string(thread * kLinesEach + i) + ".").c_str());
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
}

/// The second program of the test below; it inherits the folder.
TEST(LogOtherProgram, DISABLED_Writes) {
    adminFlags = kLogging;
    ASSERT_TRUE(CreateLogMutex());
    WriteFromThreads("other ");
}

TEST_F(LogTest, LinesOfTwoProgramsStayWhole) {
    ASSERT_TRUE(CreateLogMutex());
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring line = L"\"" + std::wstring(program) +
                        L"\" --gtest_filter=LogOtherProgram.* --gtest_also_run_disabled_tests";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    ASSERT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                               nullptr, nullptr, &startup, &process));
    const UniqueHandle other(process.hProcess);
    const UniqueHandle otherThread(process.hThread);
    // So that both write at once.
    while (Lines().empty() && WaitForSingleObject(other.get(), 10) == WAIT_TIMEOUT) {
    }
    WriteFromThreads("own ");
    ASSERT_EQ(WaitForSingleObject(other.get(), 60000), WAIT_OBJECT_0);
    std::set<std::string> messages;
    for (const std::string& text : Lines()) {
        ASSERT_THAT(text,
                    MatchesRegex("\\d+:\\d+:\\d+\\.\\d+ 0x\\w+:0x\\w+ horivo_host_tests\\.exe: "
                                 "\\w+ \\d+\\."));
        messages.insert(text.substr(text.find("exe: ")));
    }
    EXPECT_EQ(messages.size(), 2U * kThreads * kLinesEach) << "each once";
    EXPECT_EQ(Lines().size(), messages.size());
}

}  // namespace
