#include "host/time_zone_table_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

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

TEST(TimeZoneTable, PublishedNumbersStay) {
    // Hosts have stored these: a name put in between would move all that follow.
    EXPECT_EQ(NumberOf(L"AUS Central Standard Time"), 1U);
    EXPECT_EQ(NumberOf(L"Central Standard Time"), 30U);
    EXPECT_EQ(NumberOf(L"Tokyo Standard Time"), 114U);
    EXPECT_EQ(NumberOf(L"Yukon Standard Time"), 141U);
}

TEST(TimeZoneTable, EveryZoneOfTheSystemHasANumberAndFindsItself) {
    const auto table = std::make_unique<TimeZoneTable>();
    DYNAMIC_TIME_ZONE_INFORMATION zone;
    DWORD count = 0;
    for (; EnumDynamicTimeZoneInformation(count, &zone) == ERROR_SUCCESS; ++count) {
        const DYNAMIC_TIME_ZONE_INFORMATION* found = table->Find(NumberOf(zone.TimeZoneKeyName));
        ASSERT_NE(found, nullptr) << count;
        EXPECT_STREQ(found->TimeZoneKeyName, zone.TimeZoneKeyName);
        EXPECT_EQ(found->Bias, zone.Bias);
        EXPECT_TRUE(table->Owns(found));
    }
    EXPECT_GE(count, 130U);
    for (const std::uint32_t id : {0U, kTimeZoneCount + 1, 0xFFFFFFFFU, 0x80000000U})
        EXPECT_EQ(table->Find(id), nullptr) << id;
}

}  // namespace
