// Local times of the sample cities against the tz database, and of hosts' own zones.
#include "host/local_time_win.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cwchar>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/time_zone_table_win.h"

namespace {

using UtcMinutes = std::chrono::sys_time<std::chrono::minutes>;

struct SampleCity {
    std::string name;
    std::string windowsKey;
    std::string tzName;
};

/// Offsets from UTC over time: each holds from its instant to the next, in minutes.
using ZoneCourse = std::map<UtcMinutes, int>;

SYSTEMTIME ToSystemTime(UtcMinutes instant) {
    const auto day = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(day);
    const auto minutes = (instant - day).count();
    SYSTEMTIME t = {};
    t.wYear = static_cast<WORD>(static_cast<int>(date.year()));
    t.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
    t.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
    t.wHour = static_cast<WORD>(minutes / 60);
    t.wMinute = static_cast<WORD>(minutes % 60);
    return t;
}

UtcMinutes FromSystemTime(const SYSTEMTIME& time) {
    using namespace std::chrono;
    const year_month_day date(year(time.wYear), month(time.wMonth), day(time.wDay));
    return sys_days(date) + hours(time.wHour) + minutes(time.wMinute);
}

UtcMinutes ParseInstant(const std::string& text) {
    SYSTEMTIME t = {};
    std::sscanf(text.c_str(), "%4hu-%2hu-%2huT%2hu:%2hu", &t.wYear, &t.wMonth, &t.wDay, &t.wHour,
                &t.wMinute);
    return FromSystemTime(t);
}

std::string InstantText(UtcMinutes instant) {
    const SYSTEMTIME t = ToSystemTime(instant);
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

/// "60 2015-03-29T01:00=120 ..."
ZoneCourse ParseCourse(const std::string& text) {
    ZoneCourse course;
    for (const std::string& part : Split(text, ' ')) {
        const std::size_t equals = part.find('=');
        if (equals == std::string::npos) {
            course[ParseInstant("2014-12-31T00:00")] = std::stoi(part);
        } else {
            course[ParseInstant(part)] = std::stoi(part.substr(equals + 1));
        }
    }
    return course;
}

std::vector<std::vector<std::string>> LoadTable(const std::string& path) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream file(std::string(HORIVO_ASSETS) + "/../" + path, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line.front() != '#') rows.push_back(Split(line, '\t'));
    }
    return rows;
}

std::vector<SampleCity> LoadSampleCities() {
    std::vector<SampleCity> cities;
    for (const auto& row : LoadTable("assets/cities.tsv")) {
        cities.push_back({row.at(0), row.at(4), row.at(5)});
    }
    return cities;
}

std::map<std::string, ZoneCourse> LoadZoneCourses() {
    std::map<std::string, ZoneCourse> courses;
    for (const auto& row : LoadTable("tests/data/zone_offsets.tsv")) {
        const ZoneCourse course = ParseCourse(row.at(0));
        for (const std::string& name : Split(row.at(1), ' ')) courses[name] = course;
    }
    return courses;
}

int OffsetAt(const ZoneCourse& course, UtcMinutes instant) {
    return std::prev(course.upper_bound(instant))->second;
}

using std::chrono::hours;
using std::chrono::minutes;

/// A span in which the operating system knows another time than the tz database.
struct Difference {
    std::string city;
    UtcMinutes from, to;
    int systemOffset;
};

std::vector<Difference> LoadDifferences() {
    std::vector<Difference> differences;
    for (const auto& row : LoadTable("tests/data/zone_differences.tsv")) {
        differences.push_back(
            {row.at(0), ParseInstant(row.at(1)), ParseInstant(row.at(2)), std::stoi(row.at(3))});
    }
    return differences;
}

/// 200 instants spread over 2015 to 2030, and every hour in which some place begins a new year.
std::vector<UtcMinutes> Instants() {
    std::vector<UtcMinutes> instants;
    const UtcMinutes start = ParseInstant("2015-01-01T00:00");
    for (int i = 0; i < 200; ++i) instants.push_back(start + i * minutes(42077));
    for (int year = 2016; year <= 2030; ++year) {
        const UtcMinutes newYear = ParseInstant(std::to_string(year) + "-01-01T00:30");
        for (int hour = -15; hour <= 12; ++hour) instants.push_back(newYear + hours(hour));
    }
    return instants;
}

std::uint32_t ZoneNumber(const std::string& windowsKey) {
#define HORIVO_TEST_ZONE(number, key) \
    if (windowsKey == key) return number;
    HORIVO_TIME_ZONES(HORIVO_TEST_ZONE)
#undef HORIVO_TEST_ZONE
    return 0;
}

bool RunsUnderWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

class LocalTimeTest : public testing::Test {
protected:
    /// Minutes that `zone` is ahead of UTC; -9999 when there is no time.
    int OffsetOf(const DYNAMIC_TIME_ZONE_INFORMATION& zone, UtcMinutes instant) {
        SYSTEMTIME local;
        if (!UtcToZoneTime(ToSystemTime(instant), zone, *rules_, local)) return -9999;
        return static_cast<int>((FromSystemTime(local) - instant).count());
    }
    int OffsetOf(const DYNAMIC_TIME_ZONE_INFORMATION& zone, const char* instant) {
        return OffsetOf(zone, ParseInstant(instant));
    }
    /// Reports where the zone's time is neither the tz database's nor a known difference.
    void ExpectCourse(const SampleCity& city, const ZoneCourse& course) {
        const DYNAMIC_TIME_ZONE_INFORMATION* zone = zones_->Find(ZoneNumber(city.windowsKey));
        ASSERT_NE(zone, nullptr) << city.windowsKey;
        for (const UtcMinutes instant : instants_) {
            const int right = OffsetAt(course, instant);
            const int known = KnownOffset(city.name, instant, right);
            const int offset = OffsetOf(*zone, instant);
            // A system with a newer table than Wine's may be right where Wine is not.
            if (offset == right && !RunsUnderWine()) continue;
            EXPECT_EQ(offset, known)
                << city.name << " at " << InstantText(instant) << ", tz database: " << right;
        }
    }
    int KnownOffset(const std::string& city, UtcMinutes instant, int right) const {
        for (const Difference& known : differences_) {
            if (known.city == city && instant >= known.from && instant < known.to) {
                return known.systemOffset;
            }
        }
        return right;
    }

    const std::unique_ptr<TimeZoneTable> zones_ = std::make_unique<TimeZoneTable>();
    const std::unique_ptr<ZoneRuleCache> rules_ = std::make_unique<ZoneRuleCache>();
    const std::vector<UtcMinutes> instants_ = Instants();
    const std::vector<Difference> differences_ = LoadDifferences();
};

TEST_F(LocalTimeTest, CitiesKeepTheTimeOfTheTzDatabase) {
    const auto cities = LoadSampleCities();
    const auto courses = LoadZoneCourses();
    ASSERT_EQ(cities.size(), 417U);
    for (const SampleCity& city : cities) ExpectCourse(city, courses.at(city.tzName));
}

/// Central European rules without a name that the system could look up.
DYNAMIC_TIME_ZONE_INFORMATION NamelessZone() {
    DYNAMIC_TIME_ZONE_INFORMATION zone = {};
    zone.Bias = -60;
    zone.DaylightBias = -60;
    zone.DaylightDate.wMonth = 3;
    zone.DaylightDate.wDay = 5;
    zone.DaylightDate.wHour = 2;
    zone.StandardDate.wMonth = 10;
    zone.StandardDate.wDay = 5;
    zone.StandardDate.wHour = 3;
    return zone;
}

TEST_F(LocalTimeTest, HostsOwnRecordCountsAsItIs) {
    DYNAMIC_TIME_ZONE_INFORMATION zone = NamelessZone();
    EXPECT_EQ(OffsetOf(zone, "2024-01-15T12:00"), 60);
    EXPECT_EQ(OffsetOf(zone, "2024-07-15T12:00"), 120);
    // A name that no system has, filled to the last character.
    std::wmemset(zone.TimeZoneKeyName, L'x', std::size(zone.TimeZoneKeyName));
    EXPECT_EQ(OffsetOf(zone, "2024-07-15T12:00"), 120);
    // The host may write new rules into the same record.
    zone.Bias = 300;
    EXPECT_EQ(OffsetOf(zone, "2024-07-15T12:00"), -240);
}

TEST_F(LocalTimeTest, MoreZonesThanAreRememberedKeepTheirOwnRules) {
    DYNAMIC_TIME_ZONE_INFORMATION zone = NamelessZone();
    for (int round = 0; round < 2; ++round) {
        for (int bias = -400; bias < 400; bias += 2) {
            zone.Bias = bias;
            ASSERT_EQ(OffsetOf(zone, "2024-01-15T12:00"), -bias);
        }
    }
}

TEST_F(LocalTimeTest, HoursThatASeasonSkipsOrRepeatsAreEachShownOnce) {
    const struct {
        const char* why;
        const char* utc;
        int offset;
    } cases[] = {
        {"the last minute before the skipped hour", "2024-03-31T00:59", 60},
        {"the first after it", "2024-03-31T01:00", 120},
        {"the repeated hour begins, the first time", "2024-10-27T00:00", 120},
        {"and ends", "2024-10-27T00:59", 120},
        {"the second time", "2024-10-27T01:00", 60},
        {"its end", "2024-10-27T01:59", 60},
        {"the last year of four digits", "9999-07-15T12:00", 120},
        {"its last minute in UTC is in the next", "9999-12-31T23:30", 60},
        {"the first year that Windows counts", "1601-01-02T00:00", 60},
    };
    for (const auto& c : cases) EXPECT_EQ(OffsetOf(NamelessZone(), c.utc), c.offset) << c.why;
    // Before its first instant there is no time; what is shown instead is no garbage.
    DYNAMIC_TIME_ZONE_INFORMATION west = NamelessZone();
    west.Bias = 300;
    SYSTEMTIME local = {};
    const SYSTEMTIME first = ToSystemTime(ParseInstant("1601-01-01T00:00"));
    const bool hasTime = UtcToZoneTime(first, west, *rules_, local);
    EXPECT_EQ(local.wYear, hasTime ? 1600 : 0);
}

}  // namespace
