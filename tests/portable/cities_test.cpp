// The host's cities: read from the sample host's file, placed on the globe, found by place and
// name.
#include <gmock/gmock.h>

#include <cmath>

#include "cities/city_lookup.h"
#include "cities/city_markers.h"
#include "cities/city_pick.h"
#include "cities/city_zone.h"
#include "math/geographic.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using Name = std::basic_string<HorivoWideChar>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A record with a position and a marker at (x, y, z), flagged by whoever had it before.
CityRecord TestCity(double latitude, double longitude, double x, double y, double z) {
    CityRecord city{};
    city.latitude = latitude;
    city.longitude = longitude;
    city.nearest = city.inRange = 0xEE;
    const double point[] = {x, y, z, 1.0};
    std::copy(std::begin(point), std::end(point), city.markerPoint);
    return city;
}

struct CitiesTest : testing::Test {
    CityTable Cities() { return {cities.data(), static_cast<std::int32_t>(cities.size())}; }
    std::int32_t Find(const CVector4& point, double radius) {
        return FindCitiesNear(Cities(), point, radius, found.data(), 4, count);
    }
    std::vector<int> Flags(unsigned char CityRecord::*flag) const {
        std::vector<int> flags;
        for (const CityRecord& city : cities) flags.push_back(city.*flag);
        return flags;
    }

    std::vector<CityRecord> cities;
    std::vector<CityRecord*> found{4};
    std::int32_t count = -1;
};

TEST_F(CitiesTest, MarkersFloatJustAboveTheirPlace) {
    cities = {TestCity(-33.9, 151.2, 7, 7, 7), TestCity(0, 10, 7, 7, 7), TestCity(10, 0, 7, 7, 7)};
    PlaceCityMarkers(Cities(), 3.0);
    const double* sydney = cities[0].markerPoint;
    EXPECT_NEAR(std::hypot(sydney[0], sydney[1], sydney[2]), 3.0003, 1e-12);
    const LatLon place = PointToLatLonDeg({sydney[0], sydney[1], sydney[2], 1.0});
    EXPECT_NEAR(place.latitude, -33.9, 1e-9);
    EXPECT_NEAR(place.longitude, 151.2, 1e-9);
    EXPECT_EQ(cities[1].markerPoint[0], 7.0) << "on the equator: no position";
    EXPECT_EQ(cities[2].markerPoint[0], 7.0) << "on the prime meridian: no position";
}

TEST_F(CitiesTest, CollectsWhatIsInReachInTableOrder) {
    cities = {TestCity(1, 1, 3, 0, 0), TestCity(1, 1, 1, 0, 0), TestCity(0, 1, 0, 0, 0),
              TestCity(1, 1, 0, 2, 0), TestCity(1, 1, 0, 0, -1)};
    cities[2].distanceSq = -7.0;
    EXPECT_EQ(Find({}, 2.0), 1) << "the first of equals";
    EXPECT_EQ(count, 3) << "a city at exactly the radius is in";
    EXPECT_THAT(found, ElementsAre(&cities[1], &cities[3], &cities[4], nullptr));
    EXPECT_THAT(Flags(&CityRecord::inRange), ElementsAre(0, 1, 0, 1, 1));
    EXPECT_THAT(Flags(&CityRecord::nearest), ElementsAre(0, 1, 0, 0, 0));
    EXPECT_EQ(cities[0].distanceSq, 0.0);
    EXPECT_EQ(FindCitiesNear(Cities(), {}, 10.0, nullptr, 1, count), 1);
    EXPECT_EQ(count, 1) << "never above the capacity";
    EXPECT_EQ(cities[0].distanceSq, 9.0) << "stored where no output is wanted";
    EXPECT_EQ(cities[2].distanceSq, -7.0) << "a city without a position keeps what it has";
    EXPECT_EQ(Find({4.0, 0.0, 0.0, 1.0}, 0.0), 0) << "the nearest is found outside the range";
    EXPECT_EQ(count, 0);
}

TEST_F(CitiesTest, HopelessInputFindsNothing) {
    EXPECT_EQ(Find({}, 1.0), -1) << "empty table";
    EXPECT_EQ(count, 0);
    EXPECT_EQ(FindCitiesNear({nullptr, 5}, {}, 1.0, nullptr, 8, count), -1) << "no table";
    cities = {TestCity(1, 1, kNaN, 0, 0),       TestCity(0, 0, 0, 0, 0),
              TestCity(1, 1, 1e30, 0, 0),       TestCity(kInfinity, 1, 0, 0, 0),
              TestCity(1, -kInfinity, 0, 0, 0), TestCity(10, kNaN, 7, 7, 7)};
    EXPECT_EQ(FindCitiesNear({cities.data(), -3}, {}, 1.0, nullptr, 8, count), -1);
    EXPECT_EQ(cities[0].nearest, 0xEE) << "a table of negative length is not touched";
    PlaceCityMarkers(Cities(), 3.0);
    cities[0].markerPoint[0] = kNaN;
    cities[2].markerPoint[0] = 1e30;
    EXPECT_EQ(Find({}, 9.0), -1) << "not a number, unplaced, farther than anything";
    EXPECT_THAT(Flags(&CityRecord::nearest), Each(0));
    EXPECT_THAT(Flags(&CityRecord::inRange), Each(0));
    cities[3] = TestCity(1, 1, 1, 0, 0);
    EXPECT_EQ(Find({}, kNaN), 3) << "the nearest does not depend on the radius";
}

TEST_F(CitiesTest, TellTheHostWhichCityIsHitBySign) {
    cities = {TestCity(1, 1, 1, 0, 0), TestCity(1, 1, kCityReach, 0, 0)};
    EXPECT_EQ(PickCity(Cities(), {}).SignedIndex(), 1) << "hit, just within reach";
    EXPECT_EQ(PickCity(Cities(), {-1e-9, 0, 0, 1}).SignedIndex(), -1)
        << "nearest, but out of reach";
    EXPECT_TRUE((CityPick{1, 0}).IsIn(2) && !(CityPick{1, 0}).IsIn(1) && !CityPick().IsIn(2));
    EXPECT_TRUE(IsSignedIndexIn(-1, 2) && !IsSignedIndexIn(-2, 2) && !IsSignedIndexIn(2, 2));
    EXPECT_FALSE(IsSignedIndexIn(std::numeric_limits<std::int32_t>::min(), 2));
}

TEST_F(CitiesTest, AreFoundByTheirNamesInAnyCase) {
    const Name longest(64, u'x');
    const WideView names[][2] = {
        {u"Lima", u"Peru"}, {u"Lima", u"United States"}, {u"Singapore", u""}, {longest, longest}};
    for (const auto& [city, country] : names) {
        CityRecord& record = cities.emplace_back();
        city.copy(record.cityName, 64);
        country.copy(record.countryName, 64);
    }
    EXPECT_EQ(FindCity(Cities(), u"", u"LIMA"), 0) << "in any country";
    EXPECT_EQ(FindCity(Cities(), u"united states", u"Lima"), 1);
    EXPECT_EQ(FindCity(Cities(), u"Chile", u"Lima"), -1);
    EXPECT_EQ(FindCity(Cities(), u"Peru", u""), -1);
    EXPECT_EQ(FindCity(Cities(), longest, longest), 3) << "no terminator in the fields";
    EXPECT_EQ(FindCityByDisplayName(Cities(), u"lima, United States"), 1);
    EXPECT_EQ(FindCityByDisplayName(Cities(), u"Lima"), -1) << "the country is part of it";
    EXPECT_EQ(FindCityByDisplayName(Cities(), u"Singapore"), 2) << "unless there is none";
    EXPECT_EQ(FindCityByDisplayName(Cities(), longest + u", " + longest), 3);
}

/// Any address will do for a zone: nobody reads it here.
const auto* const kZones = reinterpret_cast<const _TIME_DYNAMIC_ZONE_INFORMATION*>("ab");
const auto* const kHostsZone = reinterpret_cast<const _TIME_DYNAMIC_ZONE_INFORMATION*>("c");

TEST_F(CitiesTest, TakeTheirZoneFromTheTableAndGiveOnlyThatBack) {
    TimeZoneTable table;
    cities.resize(3);
    cities[0].timeZoneId = 1;
    cities[1].timeZone = kHostsZone;
    cities[1].timeZoneId = 1;
    EXPECT_EQ(ResolveTimeZone(cities[0], table), kZones);
    EXPECT_EQ(ResolveTimeZone(cities[1], table), kHostsZone);
    EXPECT_EQ(ResolveTimeZone(cities[2], table), nullptr) << "no such zone";
    EXPECT_EQ(cities[0].timeZone, kZones) << "kept in the record";
    RestoreTimeZones(Cities(), table);
    EXPECT_EQ(cities[0].timeZone, nullptr);
    EXPECT_EQ(cities[1].timeZone, kHostsZone);
}

}  // namespace

// Fake of the table of Windows' zones: it has number 1 only.
const _TIME_DYNAMIC_ZONE_INFORMATION* TimeZoneTable::Find(std::uint32_t id) noexcept {
    return id == 1 ? kZones : nullptr;
}
bool TimeZoneTable::Owns(const _TIME_DYNAMIC_ZONE_INFORMATION* zone) const noexcept {
    return zone == kZones;
}
