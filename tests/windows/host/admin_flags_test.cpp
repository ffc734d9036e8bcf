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

TEST_F(AdminFlagsTest, FourBytesThatAreNotZeroSetTheBit) {
    const struct {
        const wchar_t* name;
        DWORD type, size;
        unsigned char data[8];
        std::uint32_t flags;
    } cases[] = {
        {L"no_updates", REG_DWORD, 4, {1}, 0x01},
        {L"no_news", REG_DWORD, 4, {1}, 0x02},
        {L"no_photos", REG_DWORD, 4, {1}, 0x04},
        {L"no_preferences", REG_DWORD, 4, {1}, 0x08},
        {L"no_time_table", REG_DWORD, 4, {1}, 0x10},
        {L"logging", REG_DWORD, 4, {0, 0, 0, 0x80}, 0x20},
        {L"logging", REG_DWORD, 4, {}, 0},   // zero is off
        {L"logging", REG_QWORD, 8, {1}, 0},  // too long for the buffer
        {L"logging", REG_BINARY, 1, {1}, 0},
        {L"logging", REG_BINARY, 0, {}, 0},
    };
    for (const auto& c : cases) {
        SetValue(c.name, c.type, c.data, c.size);
        ReadAdminFlags();
        EXPECT_EQ(adminFlags.load(), c.flags) << c.size << " bytes";
        EXPECT_TRUE(IsFeatureEnabled(0x3F & ~c.flags));
        EXPECT_EQ(IsFeatureEnabled(0x3F), c.flags == 0) << "one of several bits is enough";
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
