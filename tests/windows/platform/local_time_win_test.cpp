// The table of time zones, local times of the sample cities against the tz database, and hosts' own
// zones.

#include <gtest/gtest.h>

#include <cstdio>
#include <cwchar>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

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

std::string TextOf(std::int64_t minutes) {
    const auto ticks = static_cast<std::uint64_t>(minutes) * 600'000'000;
    const FILETIME file = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME t = {};
    FileTimeToSystemTime(&file, &t);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d", t.wYear, t.wMonth, t.wDay, t.wHour,
                  t.wMinute);
    return text;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
    return parts;
}

/// The rows of a table of the repository, without its comments.
std::vector<std::vector<std::string>> RowsOf(const std::string& path) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream file(HORIVO_ASSETS "/../" + path);
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with('#')) rows.push_back(Split(line, '\t'));
    }
    EXPECT_FALSE(rows.empty()) << path;
    return rows;
}

/// By the tz database's name: offsets from UTC in minutes, each from its instant to the next.
std::map<std::string, std::map<std::string, int>> LoadCourses() {
    std::map<std::string, std::map<std::string, int>> courses;
    for (const auto& row : RowsOf("tests/data/zone_offsets.tsv")) {
        std::map<std::string, int> course;
        for (const std::string& part : Split(row.at(0), ' ')) {
            const auto change = Split("=" + part, '=');  // the first part has no instant
            course[change.size() > 2 ? change[1] : ""] = std::stoi(change.back());
        }
        for (const std::string& name : Split(row.at(1), ' ')) courses[name] = course;
    }
    return courses;
}

/// 200 instants spread over 2015 to 2030, and every hour in which some place begins a new year.
std::vector<std::string> Instants() {
    std::vector<std::string> instants;
    const std::int64_t start = MinutesOf(InstantOf("2015-01-01T00:00"));
    for (int i = 0; i < 200; ++i) instants.push_back(TextOf(start + i * 42077));
    for (int year = 2016; year <= 2030; ++year) {
        const std::string newYear = std::to_string(year) + "-01-01T00:30";
        const std::int64_t middle = MinutesOf(InstantOf(newYear.c_str()));
        for (int hour = -15; hour <= 12; ++hour) instants.push_back(TextOf(middle + hour * 60));
    }
    return instants;
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

TEST_F(LocalTimeTest, CitiesKeepTheTimeOfTheTzDatabase) {
    const auto zones = std::make_unique<TimeZoneTable>();
    const auto courses = LoadCourses();
    const auto instants = Instants();
    std::map<std::string, std::vector<std::vector<std::string>>> differences;  // by zone
    for (const auto& row : RowsOf("tests/data/zone_differences.tsv")) {
        differences[row.at(0)].push_back(row);
        const bool ofOnePlace = NumberOf(row[0]) == 0;
        EXPECT_TRUE(!ofOnePlace || row.at(2) <= "2025") << row[0] << " belongs to another zone";
    }
    const bool underWine =
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    std::set<std::string> pairs;  // of zones: one city of each is enough
    for (const auto& city : RowsOf("assets/cities.tsv")) {
        if (!pairs.insert(city.at(4) + '\t' + city.at(5)).second) continue;
        const DYNAMIC_TIME_ZONE_INFORMATION* zone = zones->Find(NumberOf(city[4]));
        ASSERT_NE(zone, nullptr) << city[4];
        for (const std::string& instant : instants) {
            const int right = std::prev(courses.at(city[5]).upper_bound(instant))->second;
            int ahead = 0;
            for (const std::size_t column : {5U, 4U}) {
                for (const auto& row : differences[city[column]])
                    if (instant >= row.at(1) && instant < row.at(2)) ahead = std::stoi(row.at(3));
            }
            const int offset = OffsetOf(*zone, instant.c_str());
            // A system with a newer table than Wine's may be right where Wine is not.
            if (offset == right && !underWine) continue;
            EXPECT_EQ(offset, right + ahead)
                << city[0] << " at " << instant << ", tz database: " << right;
        }
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
