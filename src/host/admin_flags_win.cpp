#include "base/handles_win.h"
#include "horivo_host.h"

namespace {

struct AdminSwitch {
    const wchar_t* name;
    std::uint32_t bit;
};

constexpr AdminSwitch kSwitches[] = {
    {L"no_updates", kNoUpdates},      {L"no_news", kNoNews},
    {L"no_photos", kNoPhotos},        {L"no_preferences", kNoPreferences},
    {L"no_time_table", kNoTimeTable}, {L"logging", kLogging},
};

constexpr const wchar_t* kPolicyKey = L"Software\\Zelmo\\Horivo";

UniqueRegistryKey OpenPolicyKey() noexcept {
    HKEY key = nullptr;
    const LSTATUS status =
        RegOpenKeyExW(HKEY_LOCAL_MACHINE, kPolicyKey, 0, KEY_QUERY_VALUE | KEY_WOW64_64KEY, &key);
    return UniqueRegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

/// Whether the registry value `name` exists, is 4 bytes long and is not zero.
bool IsSwitchSet(HKEY key, const wchar_t* name) noexcept {
    DWORD value = 0;
    DWORD size = sizeof value;
    const LSTATUS status =
        RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size);
    return status == ERROR_SUCCESS && size == sizeof value && value != 0;
}

/// Reads all switches from the registry. @return the bits of the switches that are set
std::uint32_t QuerySwitches() noexcept {
    std::uint32_t flags = 0;
    const UniqueRegistryKey key = OpenPolicyKey();
    if (!key) return flags;
    for (const AdminSwitch& adminSwitch : kSwitches) {
        if (IsSwitchSet(key.get(), adminSwitch.name)) flags |= adminSwitch.bit;
    }
    return flags;
}

}  // namespace

std::atomic<std::uint32_t> adminFlags = 0;

void ReadAdminFlags() noexcept { adminFlags = QuerySwitches(); }

bool IsFeatureEnabled(std::uint32_t bits) noexcept { return (adminFlags & bits) == 0; }
