#include "clock/time_texts.h"

#include <cstdlib>

#include "horivo_host.h"

namespace {

constexpr std::int32_t kMinutesPerHour = 60;
// Numbers of the tables that GetUnitWord reads.
constexpr std::uint32_t kMinuteTable = 1;
constexpr std::uint32_t kHourTable = 2;
constexpr int kTextSize = 80;  // characters, terminator included; short dates and times are shorter
constexpr wchar_t kMinus = L'\x2212';

/// A number and its unit word, such as "3 hours".
std::wstring CountWithUnit(std::uint32_t unit, std::int32_t number) {
    return std::to_wstring(number) + L' ' + GetUnitWord(unit, static_cast<std::uint32_t>(number));
}

}  // namespace

std::wstring TimeText(const SYSTEMTIME& time) {
    wchar_t text[kTextSize] = {};
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text, kTextSize);
    return text;
}

std::wstring DateText(const SYSTEMTIME& time) {
    wchar_t text[kTextSize] = {};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, text, kTextSize);
    return DayText(time) + L' ' + text;
}

std::wstring DayText(const SYSTEMTIME& time) { return dayNames[time.wDayOfWeek % 7]; }

std::wstring OffsetText(std::int32_t minutes) {
    if (minutes == 0) return L"UTC";
    const std::int32_t size = std::abs(minutes);
    std::wstring text = minutes < 0 ? std::wstring(L"UTC") + kMinus : L"UTC+";
    text += std::to_wstring(size / kMinutesPerHour);
    const std::int32_t rest = size % kMinutesPerHour;
    if (rest != 0) text += (rest < 10 ? L":0" : L":") + std::to_wstring(rest);
    return text;
}

std::wstring DifferenceText(std::int32_t minutes) {
    const std::int32_t size = std::abs(minutes);
    const std::int32_t hours = size / kMinutesPerHour;
    const std::int32_t rest = size % kMinutesPerHour;
    std::wstring text;
    if (minutes != 0) text += minutes < 0 ? kMinus : L'+';
    if (hours != 0 || rest == 0) text += CountWithUnit(kHourTable, hours);
    if (rest != 0) text += (hours != 0 ? L" " : L"") + CountWithUnit(kMinuteTable, rest);
    return text;
}
