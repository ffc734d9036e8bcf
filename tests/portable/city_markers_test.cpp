#include "cities/city_markers.h"

#include <gmock/gmock.h>

#include <cmath>

#include "cities/city_pick.h"
#include "math/geographic.h"

namespace {

using testing::Each;
using testing::ElementsAre;

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

struct CityMarkersTest : testing::Test {
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

TEST_F(CityMarkersTest, MarkersFloatJustAboveTheirPlace) {
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

TEST_F(CityMarkersTest, CollectsWhatIsInReachInTableOrder) {
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

TEST_F(CityMarkersTest, HopelessInputFindsNothing) {
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

}  // namespace
