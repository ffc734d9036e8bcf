// The host's cities: placed on the globe, found by place and name, with their zones and labels.
#include <cmath>

#include "cities/city_lookup.h"
#include "cities/city_markers.h"
#include "cities/city_pick.h"
#include "cities/city_zone.h"
#include "globe/city_labels.h"
#include "math/angles.h"
#include "math/geographic.h"
#include "support/gl_fake.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A record with a position and a marker at (x, y, z), flagged by whoever had it before.
CityRecord TestCity(double latitude, double longitude, double x, double y, double z) {
    CityRecord city{};
    city.latitude = latitude;
    city.longitude = longitude;
    city.nearest = city.inRange = 0xEE;
    std::ranges::copy(std::array{x, y, z, 1.0}, city.markerPoint);
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
    EXPECT_LT(std::hypot(place.latitude + 33.9, place.longitude - 151.2), 1e-9);
    // On the equator or the prime meridian a city has no position.
    EXPECT_TRUE(cities[1].markerPoint[0] == 7.0 && cities[2].markerPoint[0] == 7.0);
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
    EXPECT_EQ(FindCitiesNear(Cities(), {}, 10.0, nullptr, 1, count), 1);
    EXPECT_EQ(count, 1) << "never above the capacity";
    EXPECT_EQ(cities[0].distanceSq, 9.0) << "stored where no output is wanted";
    EXPECT_EQ(cities[2].distanceSq, -7.0) << "a city without a position keeps what it has";
    EXPECT_TRUE(Find({4.0, 0.0, 0.0, 1.0}, 0.0) == 0 && count == 0) << "nearest, out of range";
}

TEST_F(CitiesTest, HopelessInputFindsNothing) {
    cities = {TestCity(1, 1, kNaN, 0, 0), TestCity(0, 0, 0, 0, 0), TestCity(1, 1, 1e30, 0, 0),
              TestCity(kInfinity, 1, 0, 0, 0)};
    EXPECT_EQ(FindCitiesNear({cities.data(), -3}, {}, 1.0, nullptr, 8, count), -1);
    EXPECT_EQ(cities[0].nearest, 0xEE) << "a table of negative length is not touched";
    PlaceCityMarkers({&cities[3], 1}, 3.0);
    EXPECT_EQ(Find({}, 9.0), -1) << "not a number, unplaced, farther than anything";
    EXPECT_THAT(Flags(&CityRecord::nearest), Each(0));
}

TEST_F(CitiesTest, TellTheHostWhichCityIsHitBySign) {
    cities = {TestCity(1, 1, 1, 0, 0), TestCity(1, 1, kCityReach, 0, 0)};
    EXPECT_EQ(PickCity(Cities(), {}).SignedIndex(), 1) << "hit, just within reach";
    EXPECT_EQ(PickCity(Cities(), {-1e-9, 0, 0, 1}).SignedIndex(), -1) << "out of reach";
    EXPECT_TRUE((CityPick{1, 0}).IsIn(2) && !(CityPick{1, 0}).IsIn(1) && !CityPick().IsIn(2));
    EXPECT_TRUE(IsSignedIndexIn(-1, 2) && !IsSignedIndexIn(-2, 2) && !IsSignedIndexIn(2, 2));
    EXPECT_FALSE(IsSignedIndexIn(1 << 31, 2));
}

TEST_F(CitiesTest, AreFoundByTheirNamesInAnyCase) {
    const WideString longest(64, u'x');
    const WideView names[][2] = {
        {u"Lima", u"Peru"}, {u"Lima", u"United States"}, {u"Singapore", u""}, {longest, longest}};
    for (const auto& [city, country] : names) {
        city.copy(cities.emplace_back().cityName, 64);
        country.copy(cities.back().countryName, 64);
    }
    EXPECT_EQ(FindCity(Cities(), u"", u"LIMA"), 0) << "in any country";
    EXPECT_EQ(FindCity(Cities(), u"united states", u"Lima"), 1);
    EXPECT_EQ(FindCity(Cities(), longest, longest), 3) << "no terminator in the fields";
    EXPECT_EQ(FindCityByDisplayName(Cities(), u"lima, United States"), 1);
    EXPECT_EQ(FindCityByDisplayName(Cities(), u"Lima"), -1) << "the country is part of it";
    EXPECT_EQ(FindCityByDisplayName(Cities(), u"Singapore"), 2) << "unless there is none";
}

/// Any address will do for a zone: nobody reads it here.
const auto* const kZones = reinterpret_cast<const _TIME_DYNAMIC_ZONE_INFORMATION*>("ab");
const auto* const kHostsZone = reinterpret_cast<const _TIME_DYNAMIC_ZONE_INFORMATION*>("c");

TEST_F(CitiesTest, TakeTheirZoneFromTheTableAndGiveOnlyThatBack) {
    TimeZoneTable table;
    cities.resize(3);
    cities[0].timeZoneId = cities[1].timeZoneId = 1;
    cities[1].timeZone = kHostsZone;
    EXPECT_EQ(ResolveTimeZone(cities[0], table), kZones);
    EXPECT_EQ(ResolveTimeZone(cities[1], table), kHostsZone);
    EXPECT_EQ(ResolveTimeZone(cities[2], table), nullptr) << "no such zone";
    RestoreTimeZones(Cities(), table);
    EXPECT_EQ(cities[0].timeZone, nullptr);
    EXPECT_EQ(cities[1].timeZone, kHostsZone);
}

/// Answers each city with the same text.
struct TestClock final : CityClock {
    void ReadTime() noexcept override {}
    void WriteTime(CityRecord&, char (&text)[kLabelTextSize]) noexcept override {
        text[time.copy(text, kLabelTextSize)] = '\0';
    }
    std::string time;
};

/// A window of 800 x 600 pixels, the camera 16 units from the centre of the globe of radius 3.
class CityLabelsTest : public GlTest {
protected:
    CityLabelsTest() {
        scene_.Resize(800, 600);
        scene_.position.z = -16.0F;
        std::fill(std::begin(font_.charWidth), std::end(font_.charWidth), 8);
        font_.maxHeight = 13;
        geoPoint_.globePoint = {0, Height(0), 3, 1};
    }

    /// How far up from the globe's axis a point of the plane that touches the globe in front lies
    /// so many pixels above the window's centre.
    static double Height(double pixels) { return pixels * 13.0 * std::tan(DegToRad(15.0)) / 300.0; }
    CityRecord& AddCity(WideView name, double up) {
        CityRecord& city = cities_.emplace_back(TestCity(1, 1, 0, Height(up), 3));
        city.nearest = 0;
        name.copy(city.cityName, 64);
        entries_.push_back(&city);
        return city;
    }
    const std::vector<std::string>& Render(double limbDepth = -15.0) {
        Gl().texts.clear();
        RenderCityLabels(entries_.data(), static_cast<std::int32_t>(entries_.size()), geoPoint_,
                         scene_, font_, limbDepth, clock_);
        return Gl().texts;
    }

    CScene scene_;
    CGLFont font_;
    CGeoPoint geoPoint_;
    TestClock clock_;
    std::deque<CityRecord> cities_;
    std::vector<CityRecord*> entries_;
};

TEST_F(CityLabelsTest, NothingIsDrawnWithoutAPlaceInSight) {
    AddCity(u"Lima", 0);
    AddCity(u"", 0);
    EXPECT_THAT(Render(-13.0), ElementsAre("Lima")) << "just on the edge, and no empty text";
    EXPECT_THAT(Render(-12.999), IsEmpty()) << "behind it";
    geoPoint_.globePoint = {0, Height(299), 3, 1};
    EXPECT_THAT(Render(), ElementsAre("Lima"));
    // Its row at the upper edge of the window, in the camera itself, no number.
    for (const CVector4& place : {CVector4(0, Height(300), 3, 1), {0, 0, 16, 1}, {kNaN, 0, 0, 1}}) {
        geoPoint_.globePoint = place;
        EXPECT_THAT(Render(-1e30), IsEmpty());
    }
}

TEST_F(CityLabelsTest, SixtyFourHighestCitiesAreShownWithTheirFullTexts) {
    clock_.time = std::string(63, 't');
    for (int i = 0; i < 200; ++i) AddCity(WideString(63, u'n'), i - 400.0);
    AddCity(WideString(64, u'x'), 0.0);
    cities_[50].nearest = 1;  // far below the 64 that are shown
    const auto& texts = Render();
    ASSERT_EQ(texts.size(), 128U);
    EXPECT_EQ(texts[0], std::string(63, 'x')) << "a name without terminator ends with its field";
    for (const std::string& text : texts) EXPECT_EQ(text.size(), 63U);
}

TEST_F(CityLabelsTest, StandInTheOrderOfTheirHeights) {
    for (const WideView name : {u"first", u"second", u"third"}) AddCity(name, 5);
    EXPECT_THAT(Render(), ElementsAre("first", "second", "third"));
    AddCity(u"nowhere", kNaN);
    EXPECT_EQ(Render().size(), 4U);
    // Heights of a and b, that of the pointer, order: where a subtraction makes them equal, the
    // larger comes last.
    const double cases[][4] = {{20, 10, 0, -1},  {10, 20, 100, 1},  {10, 10, 5, 0},
                               {2, 1, 1e300, 1}, {1, 2, 1e300, -1}, {kNaN, 1, 0, 0}};
    for (const auto& [heightA, heightB, reference, order] : cases) {
        CityRecord records[2] = {};
        std::tie(records[0].windowPoint[1], records[1].windowPoint[1]) = std::tie(heightA, heightB);
        EXPECT_EQ(CompareMarkers(records[0], records[1], reference), order) << heightA;
    }
}

}  // namespace

// Fake of the table of Windows' zones: it has number 1 only.
const _TIME_DYNAMIC_ZONE_INFORMATION* TimeZoneTable::Find(std::uint32_t id) noexcept {
    return id == 1 ? kZones : nullptr;
}
bool TimeZoneTable::Owns(const _TIME_DYNAMIC_ZONE_INFORMATION* zone) const noexcept {
    return zone == kZones;
}
