// The switches of administrators, and the log that one of them turns on.
#include <gmock/gmock.h>
#include <process.h>

#include <cstdlib>
#include <fstream>
#include <thread>

#include "base/handles_win.h"
#include "horivo_host.h"
#include "support/faked_import_win.h"
#include "support/temporary_folder_win.h"

namespace {

using testing::ElementsAre;
using testing::SizeIs;
namespace fs = std::filesystem;

TEST(AdminFlags, AreSetByFourBytesThatAreNotZero) {
    // A tree of the user stands in for HKEY_LOCAL_MACHINE in this process only: it needs no rights.
    HKEY root = nullptr;
    RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\HorivoTest", &root);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, root);
    const auto flagsWith = [root](const wchar_t* name, DWORD size, std::uint64_t value) {
        RegSetKeyValueW(root, L"Software\\Zelmo\\Horivo", name, REG_DWORD, &value, size);
        ReadAdminFlags();
        RegDeleteTreeW(root, L"Software");
        return adminFlags.load();
    };
    std::uint32_t bit = 1;
    for (const wchar_t* name : {L"no_updates", L"no_news", L"no_photos", L"no_preferences",
                                L"no_time_table", L"logging"}) {
        EXPECT_EQ(flagsWith(name, 4, 0x80000000), bit) << name;
        EXPECT_TRUE(IsFeatureEnabled(0x3F & ~bit));
        EXPECT_FALSE(IsFeatureEnabled(0x3F)) << "one of several bits is enough";
        bit *= 2;
    }
    ReadAdminFlags();
    EXPECT_EQ(adminFlags, 0U) << "no key";
    EXPECT_EQ(flagsWith(L"logging", 4, 0), 0U) << "zero is off";
    EXPECT_EQ(flagsWith(L"logging", 8, 1), 0U) << "too long";
    EXPECT_EQ(flagsWith(L"logging", 1, 1), 0U) << "too short";
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\HorivoTest");
}

class LogTest : public testing::Test {
protected:
    LogTest() {
        UseFolder(folder_.path);
        adminFlags = kLogging;
    }
    ~LogTest() override {
        CloseLogMutex();
        UseFolder(folder_.path.parent_path());
    }
    static void UseFolder(const fs::path& path) { SetEnvironmentVariableW(L"TMP", path.c_str()); }

    /// The lines of the log without their LF.
    std::vector<std::string> Lines() const {
        std::ifstream file(log_, std::ios::binary);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) lines.push_back(line);
        return lines;
    }

    const TemporaryFolder folder_;
    const fs::path log_ = folder_.path / "horivo.log";
};

TEST_F(LogTest, ALineSaysWhenWhoAndWhat) {
    const FakedImport<"GetLocalTime", decltype(GetLocalTime)> clock(
        GetModuleHandleW(nullptr), [](SYSTEMTIME* now) { *now = {2022, 1, 0, 2, 7, 8, 9, 10}; });
    adminFlags = ~kLogging;
    WriteLog("no");
    EXPECT_FALSE(fs::exists(log_)) << "written with the switch off";
    adminFlags = kLogging;
    WriteLog("first, 100%s");
    const std::ofstream other(log_, std::ios::app);  // another program has it open
    WriteLogW(L"Größe");
    WriteLogW(std::wstring(3000, L'w').c_str());
    WriteLog(nullptr);
    WriteLogW(nullptr);
    WriteLog(std::string(5000, 'n').c_str());
    char size[16];
    WideCharToMultiByte(CP_ACP, 0, L"Größe", -1, size, 16, nullptr, nullptr);
    char prefix[64];
    std::snprintf(prefix, 64, "07:08:09.010 0x%08X:0x%08X horivo_host_tests.exe: ",
                  static_cast<unsigned>(GetCurrentProcessId()),
                  static_cast<unsigned>(GetCurrentThreadId()));
    const auto line = [&](const std::string& text) { return prefix + text + '\r'; };
    EXPECT_THAT(Lines(), ElementsAre(line("first, 100%s"), line(size), line(std::string(2047, 'w')),
                                     line(std::string(5000, 'n'))));
}

TEST_F(LogTest, WhoeverFailsOrDiesLeavesTheMutexToTheNext) {
    ASSERT_TRUE(CreateLogMutex());
    const auto openMutex = [] {
        return UniqueHandle(OpenMutexW(SYNCHRONIZE, FALSE, L"horivo_log_mutex"));
    };
    const auto waitOfAnother = [&] {
        DWORD result = WAIT_FAILED;
        std::thread([&] { result = WaitForSingleObject(openMutex().get(), 5000); }).join();
        return result;
    };
    fs::create_directory(log_);
    WriteLog("lost");
    EXPECT_EQ(waitOfAnother(), WAIT_OBJECT_0) << "after a line that was lost";
    fs::remove(log_);
    WriteLog("kept");  // the other has ended without releasing the mutex
    EXPECT_EQ(waitOfAnother(), WAIT_OBJECT_0);
    EXPECT_THAT(Lines(), SizeIs(1));
    CloseLogMutex();
    EXPECT_FALSE(openMutex());
}

TEST_F(LogTest, LinesOfTwoProgramsStayWhole) {
    constexpr wchar_t kShared[] = L"HORIVO_SHARED_LOG";
    // The second program is this test once more. Its environment has the folder of the first.
    const wchar_t* const shared = _wgetenv(kShared);
    std::intptr_t second = 0;
    if (shared != nullptr) {
        UseFolder(shared);
    } else {
        SetEnvironmentVariableW(kShared, folder_.path.c_str());
        wchar_t program[MAX_PATH] = {};
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        second = _wspawnl(_P_NOWAIT, program, L"second", L"--gtest_brief=1",
                          L"--gtest_filter=*TwoProgramsStayWhole", nullptr);
        ASSERT_NE(second, -1);
        while (!fs::exists(log_)) Sleep(1);
    }
    ASSERT_TRUE(CreateLogMutex());
    for (int i = 0; i < 300; ++i) WriteLog("so much");
    if (shared != nullptr) return;
    _cwait(nullptr, second, 0);
    const auto lines = Lines();
    EXPECT_THAT(lines, SizeIs(600));
    EXPECT_THAT(lines,
                testing::Each(AllOf(SizeIs(lines[0].size()), testing::EndsWith(": so much\r"))));
}

}  // namespace
