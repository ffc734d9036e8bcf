#include "horivo_host.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/handles_win.h"

namespace {

UniqueRegistryKey CreateKey(HKEY parent, const wchar_t* path) {
    HKEY key = nullptr;
    RegCreateKeyExW(parent, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return UniqueRegistryKey(key);
}

/// The flags while the policy key has this one value; without a name, while there is no key.
std::uint32_t FlagsWith(const wchar_t* name, DWORD type, const std::vector<BYTE>& data) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Zelmo");
    if (name != nullptr) {
        const auto key = CreateKey(HKEY_LOCAL_MACHINE, L"Software\\Zelmo\\Horivo");
        const auto size = static_cast<DWORD>(data.size());
        EXPECT_EQ(RegSetValueExW(key.get(), name, 0, type, data.data(), size), ERROR_SUCCESS);
    }
    ReadAdminFlags();
    return adminFlags;
}

TEST(AdminFlags, AreSetByFourBytesThatAreNotZero) {
    // A real registry tree that stands in for HKEY_LOCAL_MACHINE in this process only: it needs no
    // rights, and programs that run at the same time do not see it.
    const std::wstring path =
        L"Software\\HorivoAdminFlagsTest" + std::to_wstring(GetCurrentProcessId());
    const UniqueRegistryKey root = CreateKey(HKEY_CURRENT_USER, path.c_str());
    // Otherwise the test would change the settings of the machine.
    ASSERT_TRUE(root != nullptr &&
                RegOverridePredefKey(HKEY_LOCAL_MACHINE, root.get()) == ERROR_SUCCESS);
    std::uint32_t bit = 1;
    for (const wchar_t* name : {L"no_updates", L"no_news", L"no_photos", L"no_preferences",
                                L"no_time_table", L"logging"}) {
        EXPECT_EQ(FlagsWith(name, REG_DWORD, {0, 0, 0, 0x80}), bit);
        EXPECT_TRUE(IsFeatureEnabled(0x3F & ~bit));
        EXPECT_FALSE(IsFeatureEnabled(0x3F)) << "one of several bits is enough";
        bit *= 2;
    }
    EXPECT_EQ(FlagsWith(nullptr, 0, {}), 0U) << "no key";
    EXPECT_TRUE(IsFeatureEnabled(0x3F));
    EXPECT_EQ(FlagsWith(L"logging", REG_DWORD, {0, 0, 0, 0}), 0U) << "zero is off";
    EXPECT_EQ(FlagsWith(L"logging", REG_QWORD, {1, 0, 0, 0, 0, 0, 0, 0}), 0U) << "too long";
    EXPECT_EQ(FlagsWith(L"logging", REG_BINARY, {1}), 0U) << "too short";
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
}

}  // namespace
