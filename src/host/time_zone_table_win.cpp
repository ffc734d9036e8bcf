// Reads Windows' records of the time zones in HORIVO_TIME_ZONES.

#include <cwchar>
#include <functional>
#include <iterator>
#include <new>

#include "base/windows_types.h"
#include "horivo_host.h"

namespace {

#define HORIVO_ZONE_KEY(number, key) L##key,
constexpr const wchar_t* kZoneKeys[] = {HORIVO_TIME_ZONES(HORIVO_ZONE_KEY)};
#undef HORIVO_ZONE_KEY

#define HORIVO_ZONE_NUMBER(number, key) number,
constexpr std::uint32_t kZoneNumbers[] = {HORIVO_TIME_ZONES(HORIVO_ZONE_NUMBER)};
#undef HORIVO_ZONE_NUMBER

static_assert(std::size(kZoneKeys) == kTimeZoneCount);

constexpr bool NumbersAreWithoutGaps() noexcept {
    for (std::uint32_t i = 0; i < kTimeZoneCount; ++i) {
        if (kZoneNumbers[i] != i + 1) return false;
    }
    return true;
}
static_assert(NumbersAreWithoutGaps(), "a zone's number is 1 + its index in the list");

// The enumeration of the zones ends at this number, so that it also ends when every call reports an
// error. Windows has far fewer zones.
constexpr DWORD kMaxSystemZones = 4096;

/// Index of a registry key name in HORIVO_TIME_ZONES; kTimeZoneCount when the list lacks the name.
std::uint32_t IndexOf(const wchar_t* key) noexcept {
    for (std::uint32_t i = 0; i < kTimeZoneCount; ++i) {
        if (std::wcscmp(kZoneKeys[i], key) == 0) return i;
    }
    return kTimeZoneCount;
}

}  // namespace

void TimeZoneTable::Prepare() noexcept {
    static_assert(sizeof(DYNAMIC_TIME_ZONE_INFORMATION) == kRecordBytes &&
                  alignof(DYNAMIC_TIME_ZONE_INFORMATION) == 4);
    if (prepared_) return;
    prepared_ = true;
    DYNAMIC_TIME_ZONE_INFORMATION zone;
    for (DWORD i = 0; i < kMaxSystemZones; ++i) {
        const DWORD result = EnumDynamicTimeZoneInformation(i, &zone);
        if (result == ERROR_NO_MORE_ITEMS) return;
        if (result != ERROR_SUCCESS) continue;  // a damaged registry key must not hide later zones
        const std::uint32_t index = IndexOf(zone.TimeZoneKeyName);
        if (index == kTimeZoneCount) continue;
        void* const record = records_.data() + index * kRecordBytes;
        found_[index] = ::new (record) DYNAMIC_TIME_ZONE_INFORMATION(zone);
    }
}

const DYNAMIC_TIME_ZONE_INFORMATION* TimeZoneTable::Find(std::uint32_t id) noexcept {
    if (id == 0 || id > kTimeZoneCount) return nullptr;
    Prepare();
    return found_[id - 1];
}

bool TimeZoneTable::Owns(const DYNAMIC_TIME_ZONE_INFORMATION* zone) const noexcept {
    // `zone` may point outside the table, and only std::less can compare such pointers.
    constexpr std::less<> kBefore;
    const auto* address = reinterpret_cast<const std::byte*>(zone);
    const std::byte* first = records_.data();
    return !kBefore(address, first) && kBefore(address, first + records_.size());
}
