#include "host/local_time_win.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <memory>
#include <vector>

#include "host/time_zone_table_win.h"
#include "zone_courses_win.h"

namespace {

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

TEST_F(LocalTimeTest, ZoneThatMakesNoTimeIsRefused) {
    DYNAMIC_TIME_ZONE_INFORMATION zone = NamelessZone();
    zone.StandardDate.wMonth = 99;
    zone.StandardDate.wDay = 99;
    zone.DaylightDate = zone.StandardDate;
    SYSTEMTIME local = {};
    local.wYear = 1;
    const SYSTEMTIME utc = ToSystemTime(ParseInstant("2024-07-15T12:00"));
    EXPECT_FALSE(UtcToZoneTime(utc, zone, *rules_, local));
    EXPECT_FALSE(UtcToZoneTime({}, NamelessZone(), *rules_, local)) << "no such instant";
    EXPECT_EQ(local.wYear, 1);
}

TEST(FormatShortTime, ShowsHoursAndMinutesWithoutSeconds) {
    SYSTEMTIME time = ToSystemTime(ParseInstant("2024-07-15T07:05"));
    time.wSecond = 59;
    wchar_t text[kTimeTextChars];
    FormatShortTime(time, text);
    EXPECT_NE(std::wcsstr(text, L"7"), nullptr);
    EXPECT_NE(std::wcsstr(text, L"05"), nullptr);
    EXPECT_EQ(std::wcsstr(text, L"59"), nullptr);
}

TEST(FormatShortTime, SaysErrorForATimeThatDoesNotExist) {
    SYSTEMTIME time = ToSystemTime(ParseInstant("2024-07-15T07:05"));
    time.wHour = 30;
    wchar_t text[kTimeTextChars];
    FormatShortTime(time, text);
    EXPECT_STREQ(text, L"Error!");
}

}  // namespace
