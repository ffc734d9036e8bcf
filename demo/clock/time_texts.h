#pragma once
// Times as the user reads them, in the language that the services have chosen.

#include <string>

#include "clock/city_times.h"

/// "14:05" or "2:05 PM", without seconds.
std::wstring TimeText(const SYSTEMTIME& time);
/// The weekday and the short date.
std::wstring DateText(const SYSTEMTIME& time);
/// "UTC", "UTC+5:30" or "UTC-3".
std::wstring OffsetText(std::int32_t minutes);
/// "+5 hours 30 minutes", with the language's own words for the numbers; "0 hours" for none.
std::wstring DifferenceText(std::int32_t minutes);
