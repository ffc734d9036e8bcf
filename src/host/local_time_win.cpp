// Converts UTC to local times by the time zone rules of a year.

#include <cstring>
#include <iterator>

#include "base/windows_types.h"
#include "horivo_host.h"

namespace {

bool SameZone(const DYNAMIC_TIME_ZONE_INFORMATION& a,
              const DYNAMIC_TIME_ZONE_INFORMATION& b) noexcept {
    // Compare the bytes up to the last member, without the padding after it. This is fast, because
    // the first member, the bias, is different in most pairs.
    constexpr std::size_t kBytes =
        offsetof(DYNAMIC_TIME_ZONE_INFORMATION, DynamicDaylightTimeDisabled) +
        sizeof(DYNAMIC_TIME_ZONE_INFORMATION::DynamicDaylightTimeDisabled);
    return std::memcmp(&a, &b, kBytes) == 0;
}

/// The rules that the record itself contains: its bias and its dates of daylight saving.
TIME_ZONE_INFORMATION OwnRules(const DYNAMIC_TIME_ZONE_INFORMATION& zone) noexcept {
    TIME_ZONE_INFORMATION rules = {};
    rules.Bias = zone.Bias;
    rules.StandardDate = zone.StandardDate;
    rules.StandardBias = zone.StandardBias;
    rules.DaylightDate = zone.DaylightDate;
    rules.DaylightBias = zone.DaylightBias;
    return rules;
}

TIME_ZONE_INFORMATION ReadRules(const DYNAMIC_TIME_ZONE_INFORMATION& zone, WORD year) noexcept {
    // GetTimeZoneInformationForYear takes no const record.
    DYNAMIC_TIME_ZONE_INFORMATION copy = zone;
    // The key name in a host's record may lack its terminator.
    copy.TimeZoneKeyName[std::size(copy.TimeZoneKeyName) - 1] = L'\0';
    TIME_ZONE_INFORMATION rules = {};
    const bool asksSystem = copy.TimeZoneKeyName[0] != L'\0' && !copy.DynamicDaylightTimeDisabled;
    if (asksSystem && GetTimeZoneInformationForYear(year, &copy, &rules) != FALSE) return rules;
    return OwnRules(zone);
}

/// Returns the earliest local year that is possible at `utc`. On 1 January UTC this is the previous
/// year, because some zones are up to 12 hours behind UTC; on all other days it is the year of
/// `utc`.
WORD EarliestYear(const SYSTEMTIME& utc) noexcept {
    const bool newYearsDay = utc.wMonth == 1 && utc.wDay == 1 && utc.wYear > 0;
    return newYearsDay ? static_cast<WORD>(utc.wYear - 1) : utc.wYear;
}

}  // namespace

struct ZoneRuleCache::Entry {
    WORD year;
    DYNAMIC_TIME_ZONE_INFORMATION zone;
    TIME_ZONE_INFORMATION rules;
};

ZoneRuleCache::Entry& ZoneRuleCache::At(std::size_t index) noexcept {
    static_assert(sizeof(Entry) == kEntryBytes && alignof(Entry) == 4);
    return *reinterpret_cast<Entry*>(entries_.data() + index * kEntryBytes);
}

const TIME_ZONE_INFORMATION& ZoneRuleCache::ForYear(const DYNAMIC_TIME_ZONE_INFORMATION& zone,
                                                    WORD year) noexcept {
    for (std::size_t i = 0; i < used_; ++i) {
        const Entry& entry = At(i);
        if (entry.year == year && SameZone(entry.zone, zone)) return entry.rules;
    }
    Entry& entry = At(next_);
    entry = {year, zone, ReadRules(zone, year)};
    next_ = (next_ + 1) % kCapacity;
    if (used_ < kCapacity) ++used_;
    return entry.rules;
}

bool UtcToZoneTime(const SYSTEMTIME& utc, const DYNAMIC_TIME_ZONE_INFORMATION& zone,
                   ZoneRuleCache& rules, SYSTEMTIME& local) noexcept {
    const WORD earliestYear = EarliestYear(utc);
    SYSTEMTIME old;
    if (!SystemTimeToTzSpecificLocalTime(&rules.ForYear(zone, earliestYear), &utc, &old)) {
        return false;
    }
    local = old;
    if (old.wYear <= earliestYear) return true;
    // By the rules of the old year, the new year has begun in this zone, so the rules of the new
    // year apply. But when the zone changes its bias at this midnight, the new rules may give a
    // time in the old year again: then `local` keeps the result of the old rules.
    SYSTEMTIME fresh;
    const TIME_ZONE_INFORMATION& newRules = rules.ForYear(zone, old.wYear);
    if (SystemTimeToTzSpecificLocalTime(&newRules, &utc, &fresh) && fresh.wYear == old.wYear) {
        local = fresh;
    }
    return true;
}

void FormatShortTime(const SYSTEMTIME& time, wchar_t (&text)[kTimeTextChars]) noexcept {
    static_assert(std::size(kTimeErrorText) <= kTimeTextChars);
    const int length =
        GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text, kTimeTextChars);
    if (length == 0) std::memcpy(text, kTimeErrorText, sizeof(kTimeErrorText));
}
