#include "horivo_host.h"

#include <gtest/gtest.h>

#include <string>

#include "base/handles_win.h"

namespace {

/// A real registry tree that stands in for HKEY_LOCAL_MACHINE in this process only: it needs no
/// rights, and programs that run at the same time do not see it.
class AdminFlagsTest : public testing::Test {
protected:
    AdminFlagsTest() : root_(Create(HKEY_CURRENT_USER, rootPath_.c_str())) {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, root_.get());
    }
    ~AdminFlagsTest() override {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, rootPath_.c_str());
    }

    static UniqueRegistryKey Create(HKEY parent, const wchar_t* path) {
        HKEY key = nullptr;
        RegCreateKeyExW(parent, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
        return UniqueRegistryKey(key);
    }

    /// Gives the policy key this one value.
    void SetValue(const wchar_t* name, DWORD type, const void* data, DWORD size) {
        RegDeleteTreeW(root_.get(), L"Software");
        const UniqueRegistryKey key = Create(root_.get(), L"Software\\Zelmo\\Horivo");
        ASSERT_EQ(RegSetValueExW(key.get(), name, 0, type, static_cast<const BYTE*>(data), size),
                  ERROR_SUCCESS);
    }

private:
    std::wstring rootPath_ =
        L"Software\\HorivoAdminFlagsTest" + std::to_wstring(GetCurrentProcessId());
    UniqueRegistryKey root_;
};

TEST_F(AdminFlagsTest, EachSwitchSetsItsBit) {
    const struct {
        const wchar_t* name;
        std::uint32_t bit;
    } cases[] = {
        {L"no_updates", 0x01},     {L"no_news", 0x02},       {L"no_photos", 0x04},
        {L"no_preferences", 0x08}, {L"no_time_table", 0x10}, {L"logging", 0x20},
    };
    const DWORD one = 1;
    for (const auto& c : cases) {
        SetValue(c.name, REG_DWORD, &one, sizeof one);
        ReadAdminFlags();
        EXPECT_EQ(adminFlags.load(), c.bit);
        EXPECT_FALSE(IsFeatureEnabled(c.bit));
        EXPECT_FALSE(IsFeatureEnabled(0x3F)) << "one of several bits is enough";
        EXPECT_TRUE(IsFeatureEnabled(0x3F & ~c.bit));
    }
}

TEST_F(AdminFlagsTest, CountsOnlyFourBytesThatAreNotZero) {
    const struct {
        const char* why;
        DWORD type, size;
        unsigned char data[8];
        std::uint32_t flags;
    } cases[] = {
        {"any bit will do", REG_DWORD, 4, {0, 0, 0, 0x80}, 0x20},
        {"zero is off", REG_DWORD, 4, {0, 0, 0, 0}, 0},
        {"too long for the buffer", REG_QWORD, 8, {1, 0, 0, 0, 0, 0, 0, 0}, 0},
        {"too short", REG_BINARY, 1, {1}, 0},
        {"empty", REG_BINARY, 0, {}, 0},
    };
    for (const auto& c : cases) {
        SetValue(L"logging", c.type, c.data, c.size);
        ReadAdminFlags();
        EXPECT_EQ(adminFlags.load(), c.flags) << c.why;
    }
}

TEST_F(AdminFlagsTest, AMissingKeyClearsWhatWasSet) {
    const DWORD one = 1;
    SetValue(L"logging", REG_DWORD, &one, sizeof one);
    ReadAdminFlags();
    ASSERT_EQ(adminFlags.load(), 0x20U);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software");
    ReadAdminFlags();
    EXPECT_EQ(adminFlags.load(), 0U);
}

}  // namespace
