#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/windows_types.h"

/// A zone's rules by year. They come from the registry, which is too slow for every label of every
/// frame, so the latest answers are kept; a change of the system's own table shows after a restart.
/// Window thread.
class ZoneRuleCache {
public:
    /// Bias and daylight saving of `zone` in `year`: the system's rules of that year by the
    /// record's key name. A record without a name that the system knows, or with
    /// DynamicDaylightTimeDisabled, counts with its own bias and dates in every year.
    const TIME_ZONE_INFORMATION& ForYear(const DYNAMIC_TIME_ZONE_INFORMATION& zone,
                                         WORD year) noexcept;

private:
    struct Entry {
        WORD year;
        DYNAMIC_TIME_ZONE_INFORMATION zone;
        TIME_ZONE_INFORMATION rules;
    };

    /// One frame's worth: 64 labels, each in two years on New Year's Eve.
    static constexpr std::size_t kCapacity = 128;

    std::array<Entry, kCapacity> entries_;
    std::size_t used_ = 0;
    std::size_t next_ = 0;  ///< the entry that goes first when all are used
};

/// Converts a UTC instant to the local time of `zone`, with the daylight saving of the local year.
/// @return false when the record or the instant makes no time; `local` is then left alone
bool UtcToZoneTime(const SYSTEMTIME& utc, const DYNAMIC_TIME_ZONE_INFORMATION& zone,
                   ZoneRuleCache& rules, SYSTEMTIME& local) noexcept;

/// Room that every time text fits into, characters, terminator included.
inline constexpr std::int32_t kTimeTextChars = 64;
/// What stands for a time that cannot be shown.
inline constexpr wchar_t kTimeErrorText[] = L"Error!";

/// Writes `time` as the user's short time without seconds; kTimeErrorText when the system refuses.
void FormatShortTime(const SYSTEMTIME& time, wchar_t (&text)[kTimeTextChars]) noexcept;
