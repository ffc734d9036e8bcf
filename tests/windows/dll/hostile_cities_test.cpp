// Tables of cities as no host should hand them over: huge, full of nonsense, and rewritten between
// one picture and the next.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class HostileCitiesTest : public DrivenMapTest {
protected:
    /// Anything that the memory of a record may hold; a zone's address is the host's promise.
    void Scribble(CityRecord& city) {
        constexpr double kPlaces[] = {kNan, kInfinity, -kInfinity, 1e308, 5e-324, 725.0, 0.0};
        for (auto* text : {&city.cityName, &city.countryName}) {
            const auto first = static_cast<wchar_t>(random_() % 0xFFFF + 1);
            std::fill(std::begin(*text), std::end(*text), first);  // no terminator
            if (random_() % 4 == 0) (*text)[random_() % 64] = L'\0';
        }
        const auto place = [&] {
            const std::size_t i = random_() % 16;
            return i < std::size(kPlaces) ? kPlaces[i]
                                          : std::uniform_real_distribution<>(-181, 181)(random_);
        };
        city.latitude = place();
        city.longitude = place();
        city.timeZoneId =
            static_cast<std::uint32_t>(random_() % 3 == 0 ? random_() : random_() % 150);
        city.timeZone = random_() % 8 == 0 ? &ownZone_ : nullptr;
        for (double& coordinate : city.markerPoint) coordinate = place();
        for (double& coordinate : city.windowPoint) coordinate = place();
        city.distanceSq = place();
        city.inRange = static_cast<unsigned char>(random_());
        city.nearest = static_cast<unsigned char>(random_());
    }
    void ScribbleAll() {
        for (CityRecord& city : cities) Scribble(city);
    }

    /// All that a user and a host may do, and the picture after it.
    void Live() {
        const auto count = static_cast<int>(cities.size());
        for (const POINT at : {POINT{400, 300}, POINT{300, 250}, POINT{5, 5}}) {
            Hover(at);
            Look();
            Tick(kHoverTimer);
            Click(at);
            Tick(kFlightTimer);
        }
        for (const int index : {0, 1, count / 2, count - 1}) {
            const auto record = reinterpret_cast<LPARAM>(&cities[static_cast<std::size_t>(index)]);
            SendMessageW(window, HORIVO_MSG_CITY, 0, record);
            for (int step = 0; step < 3; ++step) Tick(kFlightTimer);
            SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, static_cast<WPARAM>(-index), 1);
        }
        Tick(kSunTimer);
        EXPECT_EQ(Look().openMatrices, 0);
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    }

private:
    std::mt19937 random_{41};
    DYNAMIC_TIME_ZONE_INFORMATION ownZone_ = [] {
        DYNAMIC_TIME_ZONE_INFORMATION zone;  // dates, biases and name that make no sense
        std::memset(&zone, 0xA5, sizeof zone);
        return zone;
    }();
};

TEST_F(HostileCitiesTest, TableOf140000LivesAndMayChangeUnderThePictures) {
    consent = 1;
    for (const std::size_t count : {std::size_t{0}, std::size_t{140000}}) {
        cities.assign(count, CityRecord{});
        ScribbleAll();
        AddCity(L"York", L"A", 40.0, 0.1);
        Open();
        Live();
        for (int round = 0; round < 3; ++round) {
            ScribbleAll();
            Live();
        }
        EXPECT_TRUE(IsWindow(window));
        DestroyWindow(window);
        library.FreeMap();
    }
}

TEST_F(HostileCitiesTest, GlobeStaysWhereItIsForCitiesThatAreNowhere) {
    AddCity(L"", L"", 40.0, 0.1);  // never hovers
    const std::pair<double, double> nowhere[] = {
        {kNan, 1.0}, {1.0, kNan}, {kInfinity, 1.0}, {1.0, -kInfinity}};
    for (const auto& [latitude, longitude] : nowhere) AddCity(L"X", L"", latitude, longitude);
    for (std::size_t i = 1; i < cities.size(); ++i)
        cities[i].cityName[0] += static_cast<wchar_t>(i);
    Open();
    const SeenView before = LookAtView();
    for (const CityRecord& city : cities) {
        if (&city == cities.data()) continue;
        SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&city));
        EXPECT_FALSE(Runs(kFlightTimer)) << city.latitude << ", " << city.longitude;
    }
    EXPECT_EQ(LookAtView().tilt, before.tilt);
}

}  // namespace
