// The table of time zones, local times against the tz database, and hosts' own zones.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "base/windows_types.h"
#include "horivo_host.h"
#include "support/faked_import_win.h"

namespace {

using Zone = DYNAMIC_TIME_ZONE_INFORMATION;
using ReadZone =
    FakedImport<"EnumDynamicTimeZoneInformation", decltype(EnumDynamicTimeZoneInformation)>;

#define HORIVO_TEST_KEY(number, key) L##key,
constexpr const wchar_t* kKeys[] = {HORIVO_TIME_ZONES(HORIVO_TEST_KEY)};
#undef HORIVO_TEST_KEY

TEST(TimeZones, EveryOneOfTheSystemHasANumberAndFindsItself) {
    // Hosts have stored the numbers: a name put in between would move all that follow.
    EXPECT_STREQ(kKeys[0], L"AUS Central Standard Time");
    EXPECT_STREQ(kKeys[140], L"Yukon Standard Time");
    const ReadZone damagedFirst(GetModuleHandleW(nullptr), [](DWORD index, Zone* zone) -> DWORD {
        return index == 0 ? ERROR_BADKEY : ReadZone::Real(index - 1, zone);
    });
    const auto table = std::make_unique<TimeZoneTable>();
    Zone zone;
    DWORD count = 0;
    while (ReadZone::Real(count, &zone) == ERROR_SUCCESS) ++count;
    EXPECT_GE(count, 130U);
    for (std::uint32_t id = 1; id <= kTimeZoneCount; ++id) {
        const Zone* found = table->Find(id);
        if (found == nullptr) continue;
        EXPECT_STREQ(found->TimeZoneKeyName, kKeys[id - 1]);
        EXPECT_TRUE(table->Owns(found));
        --count;
    }
    EXPECT_EQ(count, 0U) << "zones of the system that cannot be found";
    EXPECT_TRUE(table->Find(0) == nullptr && table->Find(kTimeZoneCount + 1) == nullptr);
    EXPECT_FALSE(table->Owns(table->Find(1) - 1) || table->Owns(table->Find(1) + kTimeZoneCount));
}

/// The rules that the system has for a name, else those of central Europe.
Zone ZoneOf(const std::wstring& key, bool isDisabled = false) {
    Zone zone = {};
    zone.Bias = -50;
    zone.StandardBias = -10;
    zone.DaylightBias = -70;
    zone.DaylightDate = {0, 3, 0, 5, 2, 0, 0, 0};
    zone.StandardDate = {0, 10, 0, 5, 3, 0, 0, 0};
    zone.DynamicDaylightTimeDisabled = isDisabled;
    key.copy(zone.TimeZoneKeyName, std::size(zone.TimeZoneKeyName));
    return zone;
}

/// Minutes since 1970 of a time of any zone.
std::int64_t MinutesOf(const SYSTEMTIME& t) {
    const std::chrono::sys_days day = std::chrono::year(t.wYear) / t.wMonth / t.wDay;
    return day.time_since_epoch().count() * 1440 + t.wHour * 60 + t.wMinute;
}

/// Minutes that `zone` is ahead of UTC at an instant such as "2024-07-15T12:00".
std::int64_t OffsetOf(const Zone& zone, const char* instant, ZoneRuleCache& rules) {
    SYSTEMTIME utc = {};
    std::sscanf(instant, "%4hu-%2hu-%2huT%2hu:%2hu", &utc.wYear, &utc.wMonth, &utc.wDay, &utc.wHour,
                &utc.wMinute);
    SYSTEMTIME local = {};
    EXPECT_TRUE(UtcToZoneTime(utc, zone, rules, local));
    return MinutesOf(local) - MinutesOf(utc);
}

TEST(LocalTime, IsThatOfTheTzDatabaseAndReadsTheRulesOfAYearOnce) {
    const FakedImport<"GetTimeZoneInformationForYear", decltype(GetTimeZoneInformationForYear)>
        readings(GetModuleHandleW(nullptr));
    const auto rules = std::make_unique<ZoneRuleCache>();
    int count = 0;
    std::wifstream file(HORIVO_TEST_DATA "/zones_2022.tsv");
    for (std::wstring line; std::getline(file, line);) {
        std::wistringstream row(line);
        int offset = 0;
        row >> offset;
        row.ignore();
        for (const auto& [januaryMore, julyMore] : {std::pair{0, 0}, {0, 60}, {60, 0}}) {
            std::getline(row, line, L'\t');
            std::wistringstream keys(row ? line : L"");
            for (std::wstring key; std::getline(keys, key, L';'); ++count) {
                const Zone zone = ZoneOf(key);
                EXPECT_EQ(OffsetOf(zone, "2022-01-15T12:00", *rules), offset + januaryMore) << key;
                EXPECT_EQ(OffsetOf(zone, "2022-07-15T12:00", *rules), offset + julyMore) << key;
            }
        }
    }
    EXPECT_GT(count, 100);
    EXPECT_EQ(readings.Calls(), count);
}

TEST(LocalTime, ChangesOfLawAndOfTheSeasonComeAtTheirMinute) {
    const struct {
        Zone zone;
        const char *lastMinute, *change;
        int before, after;
    } cases[] = {
        {ZoneOf(L"Russian Standard Time"), "2014-10-25T21:59", "2014-10-25T22:00", 240, 180},
        {ZoneOf(L"Argentina Standard Time"), "2009-01-01T00:30", "2009-01-01T02:30", -120, -120},
        {ZoneOf(L"Venezuela Standard Time"), "2016-05-01T06:59", "2016-05-01T07:00", -270, -240},
        {ZoneOf(L"Sao Tome Standard Time"), "2019-01-01T00:59", "2019-01-01T01:00", 60, 0},
        {ZoneOf(L"Samoa Standard Time"), "2021-04-03T13:59", "2021-04-03T14:00", 840, 780},
        {ZoneOf(L"Lord Howe Standard Time"), "2022-04-02T14:59", "2022-04-02T15:00", 660, 630},
        {ZoneOf(L"Russian Standard Time", true), "2014-07-15T12:00", "2015-07-15T12:00", 120, 120},
        {ZoneOf(std::wstring(128, L'x')), "2014-07-15T12:00", "2015-07-15T12:00", 120, 120},
        {ZoneOf(L""), "2024-03-31T00:59", "2024-03-31T01:00", 60, 120},
        {ZoneOf(L""), "2024-10-27T00:59", "2024-10-27T01:00", 120, 60},
        {ZoneOf(L""), "1601-07-02T00:00", "9999-12-31T23:30", 120, 60},
    };
    const auto rules = std::make_unique<ZoneRuleCache>();
    for (const auto& c : cases) {
        EXPECT_EQ(OffsetOf(c.zone, c.lastMinute, *rules), c.before) << c.lastMinute;
        EXPECT_EQ(OffsetOf(c.zone, c.change, *rules), c.after) << c.change;
    }
    // The host may write new rules into the same record, and have more zones than are remembered.
    Zone zone = ZoneOf(L"");
    for (zone.Bias = -400; zone.Bias < 400; ++zone.Bias)
        ASSERT_EQ(OffsetOf(zone, "2024-01-15T12:00", *rules), 10 - zone.Bias);
    wchar_t text[kTimeTextChars];
    FormatShortTime({2022, 1, 0, 2, 7, 8, 9, 0}, text);
    EXPECT_EQ(std::wstring(text).find(L"09"), std::wstring::npos) << "no seconds";
    SYSTEMTIME noTime = {2022, 13, 0, 2, 25, 8, 9, 0};
    EXPECT_FALSE(UtcToZoneTime(noTime, zone, *rules, noTime));
    FormatShortTime(noTime, text);
    EXPECT_STREQ(text, L"Error!");
}

}  // namespace
