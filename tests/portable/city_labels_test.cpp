#include "globe/city_labels.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <deque>

#include "base/wide_text.h"
#include "math/angles.h"
#include "support/gl_fake.h"
#include "support/table.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Answers each city with the same text.
struct TestClock final : CityClock {
    void ReadTime() noexcept override {}
    void WriteTime(CityRecord&, char (&text)[kLabelTextSize]) noexcept override {
        std::strcpy(text, time.c_str());
    }
    std::string time;
};

/// A window of 800 x 600 pixels, the camera 16 units from the centre of the globe of radius 3.
class CityLabelsTest : public GlTest {
protected:
    CityLabelsTest() {
        scene_.width = 800;
        scene_.height = 600;
        scene_.position.z = -16.0F;
        std::fill(std::begin(font_.charWidth), std::end(font_.charWidth), 8);
        font_.maxHeight = 13;
        geoPoint_.globePoint = Place(0);
    }

    /// The point in the plane that touches the globe in front which lies so many pixels above the
    /// window's centre.
    static CVector4 Place(double up) {
        return {0.0, up * 13.0 * std::tan(DegToRad(15.0)) / 300.0, 3.0, 1.0};
    }
    CityRecord& AddCity(WideView name, double up) {
        CityRecord& city = cities_.emplace_back();
        name.copy(city.cityName, 64);
        city.latitude = city.longitude = 1.0;
        for (int i = 0; i < 4; ++i) city.markerPoint[i] = Place(up)[i];
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
    EXPECT_THAT(Render(0.0), IsEmpty()) << "edge not measured yet";
    // No number, in the camera itself, its row at the upper edge of the window.
    for (const CVector4& place : {CVector4(kNan, kNan, kNan, 1.0), {0, 0, 16, 1}, Place(300)}) {
        geoPoint_.globePoint = place;
        EXPECT_THAT(Render(-1e30), IsEmpty());
    }
    geoPoint_.globePoint = Place(299);
    EXPECT_THAT(Render(), ElementsAre("Lima"));
    Gl().texts.clear();
    RenderCityLabels(nullptr, 1, geoPoint_, scene_, font_, -15.0, clock_);
    RenderCityLabels(entries_.data(), -1, geoPoint_, scene_, font_, -15.0, clock_);
    EXPECT_THAT(Gl().texts, IsEmpty());
}

TEST_F(CityLabelsTest, SixtyFourHighestCitiesAreShownWithTheirFullTexts) {
    clock_.time = std::string(63, 't');
    for (int i = 0; i < 200; ++i) AddCity(WideString(63, u'n'), i - 400.0);
    AddCity(WideString(64, u'x'), 0.0);
    cities_[10].nearest = 1;  // far below the 64 that are shown
    const auto& texts = Render();
    ASSERT_EQ(texts.size(), 128U);
    EXPECT_EQ(texts[0], std::string(63, 'x')) << "a name without terminator ends with its field";
    for (const std::string& text : texts) EXPECT_EQ(text.size(), 63U);
    EXPECT_EQ(entries_[200], &cities_[0]);
}

TEST_F(CityLabelsTest, HeightsThatAreNoNumbersSortSafelyAndEqualOnesKeepTheirOrder) {
    for (const WideView name : {u"first", u"second", u"third"}) AddCity(name, 5);
    EXPECT_THAT(Render(), ElementsAre("first", "second", "third"));
    for (std::size_t i = 0; i < 26; ++i) {
        CityRecord& city = AddCity(u"more", static_cast<double>(i * 7 % 26));
        if (i % 5 == 2) city.markerPoint[1] = kNan;
        if (i % 7 == 3) city.markerPoint[1] = std::numeric_limits<double>::infinity();
    }
    EXPECT_EQ(Render().size(), 29U);
    std::sort(entries_.begin(), entries_.end());
    EXPECT_EQ(std::adjacent_find(entries_.begin(), entries_.end()), entries_.end());
}

TEST(CompareMarkers, PutsTheHigherOnScreenFirst) {
    for (const Row& row : Table("markers")) {
        CityRecord a{};
        CityRecord b{};
        a.windowPoint[1] = row.Real(0);
        b.windowPoint[1] = row.Real(1);
        EXPECT_EQ(CompareMarkers(a, b, row.Real(2)), row.Int(3)) << row.why;
    }
}

}  // namespace
