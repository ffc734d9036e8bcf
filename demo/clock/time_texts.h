#pragma once
// Times as texts. Their words are in the language that SetLanguage has chosen. Their formats and
// digits are those of the user's settings in Windows, as in the map.

#include <string>

#include "clock/city_times.h"

/// "14:05" or "2:05 PM", without seconds.
std::wstring TimeText(const SYSTEMTIME& time);
/// The weekday.
std::wstring DayText(const SYSTEMTIME& time);
/// The weekday and the short date.
std::wstring DateText(const SYSTEMTIME& time);
/// "UTC", "UTC+5:30" or "UTC-3".
std::wstring OffsetText(std::int32_t minutes);
/// "+5 hours 30 minutes" with the unit words of the language; "0 hours" for 0.
std::wstring DifferenceText(std::int32_t minutes);
