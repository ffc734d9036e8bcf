#include "host/time_zone_table_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "globe/city_clock_win.h"

namespace {

struct NumberedZone {
    std::uint32_t number;
    std::wstring key;
};

const std::vector<NumberedZone>& PublicZones() {
#define HORIVO_TEST_ZONE(number, key) {number, L##key},
    static const std::vector<NumberedZone> zones = {HORIVO_TIME_ZONES(HORIVO_TEST_ZONE)};
#undef HORIVO_TEST_ZONE
    return zones;
}

std::uint32_t NumberOf(const std::wstring& key) {
    const auto& zones = PublicZones();
    const auto found = std::find_if(zones.begin(), zones.end(),
                                    [&key](const NumberedZone& zone) { return zone.key == key; });
    return found == zones.end() ? 0 : found->number;
}

class TimeZoneTableTest : public testing::Test {
protected:
    const std::unique_ptr<TimeZoneTable> table_ = std::make_unique<TimeZoneTable>();
};

TEST_F(TimeZoneTableTest, PublishedNumbersStay) {
    // Hosts have stored these: a name put in between would move all that follow.
    EXPECT_EQ(NumberOf(L"AUS Central Standard Time"), 1U);
    EXPECT_EQ(NumberOf(L"Central Standard Time"), 30U);
    EXPECT_EQ(NumberOf(L"Tokyo Standard Time"), 114U);
    EXPECT_EQ(NumberOf(L"Yukon Standard Time"), 141U);
}

TEST_F(TimeZoneTableTest, EveryZoneOfTheSystemHasANumberAndFindsItself) {
    DYNAMIC_TIME_ZONE_INFORMATION zone;
    DWORD count = 0;
    for (; EnumDynamicTimeZoneInformation(count, &zone) == ERROR_SUCCESS; ++count) {
        const DYNAMIC_TIME_ZONE_INFORMATION* found = table_->Find(NumberOf(zone.TimeZoneKeyName));
        ASSERT_NE(found, nullptr) << count;
        EXPECT_STREQ(found->TimeZoneKeyName, zone.TimeZoneKeyName);
        EXPECT_EQ(found->Bias, zone.Bias);
        EXPECT_TRUE(table_->Owns(found));
    }
    EXPECT_GE(count, 130U);
}

TEST_F(TimeZoneTableTest, NumbersThatMeanNothingFindNothing) {
    for (const std::uint32_t id : {0U, kTimeZoneCount + 1, 0xFFFFFFFFU, 0x80000000U}) {
        EXPECT_EQ(table_->Find(id), nullptr) << id;
    }
    EXPECT_FALSE(table_->Owns(nullptr));
}

TEST_F(TimeZoneTableTest, OnlyWhatTheLibraryWroteIsTakenBack) {
    const DYNAMIC_TIME_ZONE_INFORMATION own = {};
    CityRecord cities[4] = {};
    cities[0].timeZoneId = NumberOf(L"Tokyo Standard Time");
    cities[1].timeZone = &own;
    cities[1].timeZoneId = NumberOf(L"Tokyo Standard Time");
    cities[3].timeZoneId = 9999;
    for (CityRecord& city : cities) ResolveTimeZone(city, *table_);
    EXPECT_TRUE(table_->Owns(cities[0].timeZone));
    EXPECT_EQ(cities[1].timeZone, &own);
    EXPECT_EQ(cities[2].timeZone, nullptr);
    EXPECT_EQ(cities[3].timeZone, nullptr);
    RestoreTimeZones({cities, 4}, *table_);
    EXPECT_EQ(cities[0].timeZone, nullptr);
    EXPECT_EQ(cities[1].timeZone, &own);
    RestoreTimeZones({nullptr, 4}, *table_);
    RestoreTimeZones({cities, -1}, *table_);
}

TEST_F(TimeZoneTableTest, ClockWritesTheTimeWhereThereIsAZoneAndNothingElse) {
    SystemCityClock clock(*table_);
    DYNAMIC_TIME_ZONE_INFORMATION broken = {};
    broken.StandardDate.wMonth = broken.DaylightDate.wMonth = 99;
    CityRecord tokyo = {};
    tokyo.timeZoneId = NumberOf(L"Tokyo Standard Time");
    CityRecord unknown = {};
    CityRecord refused = {};
    refused.timeZone = &broken;
    const CityRecord before = tokyo;

    clock.TakeTime();
    char text[kLabelTextSize];
    clock.WriteTime(unknown, text);
    EXPECT_STREQ(text, "");
    clock.WriteTime(refused, text);
    EXPECT_STREQ(text, "Error!");
    clock.WriteTime(tokyo, text);
    EXPECT_NE(std::strchr(text, ':'), nullptr) << text;
    EXPECT_TRUE(table_->Owns(tokyo.timeZone));
    tokyo.timeZone = nullptr;
    EXPECT_EQ(std::memcmp(&tokyo, &before, sizeof before), 0) << "only the zone may be written";
}

}  // namespace
