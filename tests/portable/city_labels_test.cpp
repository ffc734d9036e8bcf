#include "globe/city_labels.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <deque>
#include <map>

#include "base/angles.h"
#include "base/wide_text.h"
#include "support/gl_stand_in.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Answers each city with the text given for it.
class TestClock final : public CityClock {
public:
    void TakeTime() noexcept override {}
    void WriteTime(CityRecord& city, char (&text)[kLabelTextSize]) noexcept override {
        std::strcpy(text, times[&city].c_str());
    }
    std::map<const CityRecord*, std::string> times;
};

/// A window of 800 x 600 pixels, the camera 16 units from the centre of the globe of radius 3.
class CityLabelsTest : public GlTest {
protected:
    CityLabelsTest() {
        scene_.width = 800;
        scene_.height = 600;
        scene_.position.z = -16.0F;
        for (auto& width : font_.charWidth) width = 8;
        font_.maxHeight = 13;
        geoPoint_.globePoint = Place(0, 0);
    }

    /// The point in the plane that touches the globe in front which lies so many pixels right of
    /// and above the window's centre.
    static CVector4 Place(double right, double up) {
        const double pixel = 13.0 * std::tan(DegToRad(15.0)) / 300.0;
        return {right * pixel, up * pixel, 3.0, 1.0};
    }
    CityRecord& AddCity(WideView name, double right, double up, const std::string& time = "") {
        CityRecord& city = cities_.emplace_back();
        name.copy(city.cityName, 63);
        city.latitude = city.longitude = 1.0;
        const CVector4 place = Place(right, up);
        for (int i = 0; i < 4; ++i) city.markerPoint[i] = place[i];
        clock_.times[&city] = time;
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
    AddCity(u"Lima", 0, 0);
    EXPECT_EQ(Render(-13.0).size(), 1U) << "just on the edge";
    EXPECT_THAT(Render(-12.999), IsEmpty()) << "behind it";
    EXPECT_THAT(Render(0.0), IsEmpty()) << "edge not measured yet";
    for (const CVector4& place : {CVector4(kNan, kNan, kNan, 1.0), CVector4(0.0, 0.0, 16.0, 1.0)}) {
        geoPoint_.globePoint = place;
        EXPECT_THAT(Render(-1e30), IsEmpty()) << "no number, and in the camera itself";
    }
    geoPoint_.globePoint = Place(0, 0);
    RenderCityLabels(nullptr, 1, geoPoint_, scene_, font_, -15.0, clock_);
    RenderCityLabels(entries_.data(), -1, geoPoint_, scene_, font_, -15.0, clock_);
    EXPECT_THAT(Gl().texts, IsEmpty());
    AddCity(u"", 0, 0);
    EXPECT_EQ(Render().size(), 1U) << "an empty text leaves no matrix behind";
}

TEST_F(CityLabelsTest, SixtyFourHighestCitiesAreShownWithTheirFullTexts) {
    for (int i = 0; i < 200; ++i) AddCity(WideString(63, u'n'), 0, i - 400.0, std::string(63, 't'));
    std::fill(std::begin(cities_[199].cityName), std::end(cities_[199].cityName), u'x');
    cities_[10].nearest = 1;  // far below the 64 that are shown
    const auto& texts = Render();
    ASSERT_EQ(texts.size(), 128U);
    EXPECT_EQ(texts[0], std::string(63, 'x')) << "a name without terminator ends with its field";
    for (const std::string& text : texts) EXPECT_EQ(text.size(), 63U);
    EXPECT_EQ(entries_[0], &cities_[199]);
    EXPECT_EQ(entries_[199], &cities_[0]);
}

TEST_F(CityLabelsTest, HeightsThatAreNoNumbersSortSafelyAndEqualOnesKeepTheirOrder) {
    for (const WideView name : {u"first", u"second", u"third"}) AddCity(name, 0, 5);
    EXPECT_THAT(Render(), ElementsAre("first", "second", "third"));
    for (std::size_t i = 0; i < 26; ++i) {
        CityRecord& city = AddCity(u"more", 0, static_cast<double>(i * 7 % 26));
        if (i % 5 == 2) city.markerPoint[1] = kNan;
        if (i % 7 == 3) city.markerPoint[1] = std::numeric_limits<double>::infinity();
    }
    EXPECT_EQ(Render().size(), 29U);
    std::sort(entries_.begin(), entries_.end());
    EXPECT_EQ(std::adjacent_find(entries_.begin(), entries_.end()), entries_.end());
}

}  // namespace
