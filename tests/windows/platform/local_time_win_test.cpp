// The table of time zones, local times against the tz database, and hosts' own zones.

#include <gtest/gtest.h>

#include <cstdio>
#include <cwchar>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include "base/windows_types.h"
#include "horivo_host.h"
#include "support/faked_import_win.h"

namespace {

/// The public number of a zone, 0 for none.
std::uint32_t NumberOf(const std::string& windowsKey) {
#define HORIVO_TEST_ZONE(number, key) {key, number},
    static const std::map<std::string, std::uint32_t> numbers = {
        HORIVO_TIME_ZONES(HORIVO_TEST_ZONE)};
#undef HORIVO_TEST_ZONE
    const auto found = numbers.find(windowsKey);
    return found == numbers.end() ? 0 : found->second;
}

TEST(TimeZoneTable, EveryZoneOfTheSystemHasANumberAndFindsItself) {
    // Hosts have stored these: a name put in between would move all that follow.
    EXPECT_EQ(NumberOf("AUS Central Standard Time"), 1U);
    EXPECT_EQ(NumberOf("Central Standard Time"), 30U);
    EXPECT_EQ(NumberOf("Tokyo Standard Time"), 114U);
    EXPECT_EQ(NumberOf("Yukon Standard Time"), 141U);
    const auto table = std::make_unique<TimeZoneTable>();
    DYNAMIC_TIME_ZONE_INFORMATION zone;
    DWORD count = 0;
    for (; EnumDynamicTimeZoneInformation(count, &zone) == ERROR_SUCCESS; ++count) {
        const std::wstring key = zone.TimeZoneKeyName;
        const auto* found = table->Find(NumberOf(std::string(key.begin(), key.end())));
        ASSERT_NE(found, nullptr) << count;
        EXPECT_EQ(found->TimeZoneKeyName, key);
        EXPECT_EQ(found->Bias, zone.Bias);
        EXPECT_TRUE(table->Owns(found));
    }
    EXPECT_GE(count, 130U);
    for (const std::uint32_t id : {0U, kTimeZoneCount + 1, 0xFFFFFFFFU})
        EXPECT_EQ(table->Find(id), nullptr) << id;
}

/// Minutes since 1601 of a time of any zone.
std::int64_t MinutesOf(const SYSTEMTIME& time) {
    ULARGE_INTEGER ticks;
    FILETIME file;
    SystemTimeToFileTime(&time, &file);
    ticks.LowPart = file.dwLowDateTime;
    ticks.HighPart = file.dwHighDateTime;
    return static_cast<std::int64_t>(ticks.QuadPart) / 600'000'000;
}

/// "2024-07-15T12:00", which sorts as time does.
SYSTEMTIME InstantOf(const char* text) {
    SYSTEMTIME t = {};
    std::sscanf(text, "%4hu-%2hu-%2huT%2hu:%2hu", &t.wYear, &t.wMonth, &t.wDay, &t.wHour,
                &t.wMinute);
    return t;
}

class LocalTimeTest : public testing::Test {
protected:
    /// Minutes that `zone` is ahead of UTC; -9999 when there is no time.
    int OffsetOf(const DYNAMIC_TIME_ZONE_INFORMATION& zone, const char* instant) {
        const SYSTEMTIME utc = InstantOf(instant);
        SYSTEMTIME local;
        if (!UtcToZoneTime(utc, zone, *rules_, local)) return -9999;
        return static_cast<int>(MinutesOf(local) - MinutesOf(utc));
    }

    const std::unique_ptr<ZoneRuleCache> rules_ = std::make_unique<ZoneRuleCache>();
};

TEST_F(LocalTimeTest, ZonesKeepTheTimeOfTheTzDatabase) {
    const auto zones = std::make_unique<TimeZoneTable>();
    int count = 0;
    std::ifstream file(HORIVO_TEST_DATA "/zones_2022.tsv");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        std::istringstream row(line);
        int january = 0;
        int july = 0;
        row >> january >> july >> std::ws;
        for (std::string key; std::getline(row, key, ';'); ++count) {
            const auto* zone = zones->Find(NumberOf(key));
            ASSERT_NE(zone, nullptr) << key;
            EXPECT_EQ(OffsetOf(*zone, "2022-01-15T12:00"), january) << key;
            EXPECT_EQ(OffsetOf(*zone, "2022-07-15T12:00"), july) << key;
        }
    }
    EXPECT_GT(count, 100);
}

TEST_F(LocalTimeTest, ChangesOfLawComeAtTheirMinute) {
    const struct {
        const char *key, *lastMinute, *change;
        int before, after;
    } cases[] = {
        {"Russian Standard Time", "2014-10-25T21:59", "2014-10-25T22:00", 240, 180},
        {"Turkey Standard Time", "2016-10-30T00:59", "2016-10-30T01:00", 180, 180},
        {"Venezuela Standard Time", "2016-05-01T06:59", "2016-05-01T07:00", -270, -240},
        {"North Korea Standard Time", "2018-05-04T14:59", "2018-05-04T15:00", 510, 540},
        {"Sao Tome Standard Time", "2019-01-01T00:59", "2019-01-01T01:00", 60, 0},
        {"E. South America Standard Time", "2018-11-04T02:59", "2018-11-04T03:00", -180, -120},
        {"Sudan Standard Time", "2017-10-31T20:59", "2017-10-31T21:00", 180, 120},
        {"Samoa Standard Time", "2021-04-03T13:59", "2021-04-03T14:00", 840, 780},
        {"Lord Howe Standard Time", "2022-04-02T14:59", "2022-04-02T15:00", 660, 630},
        {"South Sudan Standard Time", "2021-01-31T20:59", "2021-01-31T21:00", 180, 120},
        {"Namibia Standard Time", "2017-09-03T00:59", "2017-09-03T01:00", 60, 120},
    };
    const auto zones = std::make_unique<TimeZoneTable>();
    for (const auto& c : cases) {
        const auto* zone = zones->Find(NumberOf(c.key));
        ASSERT_NE(zone, nullptr) << c.key;
        EXPECT_EQ(OffsetOf(*zone, c.lastMinute), c.before) << c.key;
        EXPECT_EQ(OffsetOf(*zone, c.change), c.after) << c.key;
    }
}

/// Central European rules without a name that the system could look up.
DYNAMIC_TIME_ZONE_INFORMATION NamelessZone() {
    DYNAMIC_TIME_ZONE_INFORMATION zone = {};
    zone.Bias = -60;
    zone.DaylightBias = -60;
    zone.DaylightDate = {0, 3, 0, 5, 2, 0, 0, 0};
    zone.StandardDate = {0, 10, 0, 5, 3, 0, 0, 0};
    return zone;
}

TEST_F(LocalTimeTest, HostsOwnRecordFollowsTheSystemByItsNameUnlessThatIsDisabled) {
    DYNAMIC_TIME_ZONE_INFORMATION zone = NamelessZone();
    const struct {
        const char* why;
        std::wstring key;
        bool disabled;
        int in2014, in2015;
    } cases[] = {
        {"its own rules without a name", L"", false, 120, 120},
        {"a name that no system has", std::wstring(128, L'x'), false, 120, 120},
        {"the system's rules of the year", L"Russian Standard Time", false, 240, 180},
        {"its own although there are such", L"Russian Standard Time", true, 120, 120},
    };
    for (const auto& c : cases) {
        std::wmemset(zone.TimeZoneKeyName, L'\0', std::size(zone.TimeZoneKeyName));
        c.key.copy(zone.TimeZoneKeyName, std::size(zone.TimeZoneKeyName));
        zone.DynamicDaylightTimeDisabled = c.disabled;
        EXPECT_EQ(OffsetOf(zone, "2014-07-15T12:00"), c.in2014) << c.why;
        EXPECT_EQ(OffsetOf(zone, "2015-07-15T12:00"), c.in2015) << c.why;
    }
    // The host may write new rules into the same record, and have more zones than are remembered.
    for (int round = 0; round < 2; ++round) {
        for (int bias = -400; bias < 400; bias += 2) {
            zone.Bias = bias;
            ASSERT_EQ(OffsetOf(zone, "2024-01-15T12:00"), -bias);
        }
    }
}

TEST_F(LocalTimeTest, AClockOfEveryZoneReadsTheRulesOfAYearOnce) {
    const FakedImport<"GetTimeZoneInformationForYear", decltype(GetTimeZoneInformationForYear)>
        readings(GetModuleHandleW(nullptr));
    const auto zones = std::make_unique<TimeZoneTable>();
    int afterFirst = 0;
    for (int minute = 0; minute < 2; ++minute) {
        for (std::uint32_t id = 1; id <= kTimeZoneCount; ++id) {
            const auto* zone = zones->Find(id);
            if (zone != nullptr)
                OffsetOf(*zone, minute == 0 ? "2024-01-01T00:30" : "2024-01-01T00:31");
        }
        if (minute == 0) afterFirst = readings.Calls();
    }
    EXPECT_GT(afterFirst, 128) << "every zone of Windows, some in two years";
    EXPECT_EQ(readings.Calls(), afterFirst);
}

TEST_F(LocalTimeTest, HoursThatASeasonSkipsOrRepeatsAreEachShownOnce) {
    const struct {
        const char* why;
        const char* utc;
        int offset;
    } cases[] = {
        {"the last minute before the skipped hour", "2024-03-31T00:59", 60},
        {"the first after it", "2024-03-31T01:00", 120},
        {"the repeated hour, the first time", "2024-10-27T00:59", 120},
        {"the second time", "2024-10-27T01:00", 60},
        {"the last year of four digits", "9999-07-15T12:00", 120},
        {"its last minute in UTC is in the next", "9999-12-31T23:30", 60},
        {"the first year that Windows counts", "1601-01-02T00:00", 60},
    };
    for (const auto& c : cases) EXPECT_EQ(OffsetOf(NamelessZone(), c.utc), c.offset) << c.why;
    // Before its first instant there is no time; what is shown instead is no garbage.
    DYNAMIC_TIME_ZONE_INFORMATION west = NamelessZone();
    west.Bias = 300;
    SYSTEMTIME local = {};
    const bool hasTime = UtcToZoneTime(InstantOf("1601-01-01T00:00"), west, *rules_, local);
    EXPECT_EQ(local.wYear, hasTime ? 1600 : 0);
}

}  // namespace
