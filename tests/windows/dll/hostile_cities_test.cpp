// Tables of cities as no host should hand them over: huge, full of nonsense, and rewritten between
// one picture and the next.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "base/gl.h"
#include "support/map_play_win.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class HostileCitiesTest : public MapPlay {
protected:
    HostileCitiesTest() {
        std::memset(&ownZone_, 0xA5, sizeof ownZone_);  // dates, biases, name: no sense
    }
    /// Anything that the memory of a record may hold; a zone's address is the host's promise.
    void Scribble(CityRecord& city) {
        constexpr double kPlaces[] = {kNan, kInfinity, -kInfinity, 1e308, 5e-324, 725.0, 0.0};
        const auto place = [&] {
            const std::size_t i = random_() % 16;
            return i < std::size(kPlaces) ? kPlaces[i]
                                          : std::uniform_real_distribution<>(-181, 181)(random_);
        };
        // Flags, and names without a terminator in most records.
        std::memset(static_cast<void*>(&city), static_cast<int>(random_() % 255 + 1), sizeof city);
        if (random_() % 4 == 0) city.cityName[random_() % 64] = L'\0';
        city.latitude = place();
        city.longitude = place();
        city.timeZoneId = static_cast<std::uint32_t>(random_() % (random_() % 3 == 0 ? ~0U : 150U));
        city.timeZone = random_() % 8 == 0 ? &ownZone_ : nullptr;
        for (double& coordinate : city.markerPoint) coordinate = place();
        for (double& coordinate : city.windowPoint) coordinate = place();
        city.distanceSq = place();
    }

    /// All that a user and a host may do, and the picture after it.
    void Live() {
        for (const std::string at : {"400,300", "300,250", "5,5"})
            Play("move " + at + "; paint; tick hover; click " + at + "; tick flight");
        for (const std::size_t index : {std::size_t{0}, cities.size() / 2, cities.size() - 1}) {
            ShowCity(cities[index]);
            Play("tick flight 3");
            SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, 0 - index, 1);
        }
        Play("tick sun");
        EXPECT_EQ(Look().openMatrices, 0);
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    }

private:
    std::mt19937 random_{41};
    DYNAMIC_TIME_ZONE_INFORMATION ownZone_;
};

TEST_F(HostileCitiesTest, TableOf140000LivesAndMayChangeUnderThePictures) {
    consent = 1;
    for (const std::size_t count : {std::size_t{0}, std::size_t{140000}}) {
        cities.assign(count, CityRecord{});
        AddCity(L"York", L"A", 40.0, 0.1);
        for (int round = 0; round < 3; ++round) {
            for (CityRecord& city : cities) Scribble(city);
            if (round == 0) Open();
            Live();
        }
        EXPECT_TRUE(IsWindow(window));
        DestroyWindow(window);
        library.FreeMap();
    }
}

TEST_F(HostileCitiesTest, GlobeStaysWhereItIsForCitiesThatAreNowhere) {
    AddCity(L"A", L"", kNan, 1.0);
    AddCity(L"B", L"", 1.0, -kInfinity);
    AddCity(L"C", L"", 6e307, 1.0);  // finite, but the arithmetic of angles overflows
    AddCity(L"D", L"", 1.0, -1e308);
    Open();
    for (const CityRecord& city : cities) {
        ShowCity(city);
        Look();
        for (const GlCall& light : SpiedCalls("glLightfv"))
            for (const double number : light.numbers) EXPECT_FALSE(std::isnan(number));
    }
    Play("stops flight; view 40 0", "nothing has moved");
}

}  // namespace
