// The switches of administrators, and the log that one of them turns on.
#include <gtest/gtest.h>
#include <process.h>

#include <cstdlib>
#include <fstream>
#include <thread>

#include "base/handles_win.h"
#include "horivo_host.h"
#include "support/faked_import_win.h"
#include "support/temporary_folder_win.h"

namespace {

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
        if (!isSecond_) SetEnvironmentVariableW(L"TMP", folder_.path.c_str());
        adminFlags = kLogging;
    }
    ~LogTest() override { SetEnvironmentVariableW(L"TMP", folder_.path.parent_path().c_str()); }
    std::string Written() const {
        std::ifstream file(log_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const bool isSecond_ = std::getenv("HORIVO_SECOND") != nullptr;
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
    char prefix[64];
    std::snprintf(prefix, 64, "07:08:09.010 0x%08X:0x%08X horivo_host_tests.exe: ",
                  static_cast<unsigned>(GetCurrentProcessId()),
                  static_cast<unsigned>(GetCurrentThreadId()));
    char size[16];
    WideCharToMultiByte(CP_ACP, 0, L"Größe", -1, size, 16, nullptr, nullptr);
    std::string expected;
    for (const std::string& text : {std::string("first, 100%s"), std::string(size),
                                    std::string(2047, 'w'), std::string(5000, 'n')})
        expected += prefix + text + "\r\n";
    EXPECT_EQ(Written(), expected);
}

TEST_F(LogTest, WhoeverDiesWithTheMutexLeavesItToTheNext) {
    const auto dieWithIt = [] {
        DWORD result = WAIT_FAILED;
        std::thread([&] {
            const UniqueHandle mutex(OpenMutexW(SYNCHRONIZE, FALSE, L"horivo_log_mutex"));
            result = WaitForSingleObject(mutex.get(), 5000);
        }).join();
        return result;
    };
    ASSERT_TRUE(CreateLogMutex());
    EXPECT_EQ(dieWithIt(), WAIT_OBJECT_0);
    WriteLog("kept");
    EXPECT_EQ(dieWithIt(), WAIT_OBJECT_0) << "the writer has not released it";
    EXPECT_TRUE(Written().ends_with(": kept\r\n"));
    CloseLogMutex();
    EXPECT_EQ(dieWithIt(), WAIT_FAILED) << "there is still a mutex";
}

TEST_F(LogTest, LinesOfTwoProgramsStayWhole) {
    std::intptr_t second = 0;
    if (!isSecond_) {
        // The second program is this test once more, in the same folder.
        _putenv("HORIVO_SECOND=1");
        second = _spawnl(_P_NOWAIT, _pgmptr, "second", "--gtest_brief=1",
                         "--gtest_filter=*TwoProgramsStayWhole", nullptr);
        ASSERT_NE(second, -1);
        while (!fs::exists(log_)) Sleep(1);
    }
    ASSERT_TRUE(CreateLogMutex());
    for (int i = 0; i < 2000; ++i) WriteLog("so much");
    CloseLogMutex();
    if (isSecond_) return;
    _cwait(nullptr, second, 0);
    const std::string log = Written();
    const std::size_t length = log.size() / 4000;
    for (std::size_t at = 0; at < log.size(); at += length)
        ASSERT_EQ(log.substr(at + length - 11, 11), ": so much\r\n") << log.substr(at, length);
}

}  // namespace
