// The labels beside the pointer, as the picture shows them, and what is left of the host's table.
#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <cwchar>

#include "support/driven_map_win.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr SeenColour kBoxColour = {0.0, 0.0, 0.0, 0.15};
constexpr SeenColour kBarColour = {0.0, 0.95, 0.9, 0.17};
constexpr SeenColour kDotColour = {0.0, 0.99, 0.0, 1.0};
constexpr SeenColour kSelectedColour = {1.0, 0.9, 0.2, 1.0};
constexpr SeenColour kNameColour = {0.75, 0.82, 0.0, 1.0};

constexpr std::uint32_t kIndia = 54;
constexpr std::uint32_t kTokyo = 114;
constexpr std::uint32_t kUtc = 122;
constexpr std::uint32_t kNewYork = 41;

/// The user's short time, without seconds.
std::string ShortTime(WORD hour, WORD minute) {
    const SYSTEMTIME time = {2024, 7, 1, 1, hour, minute, 0, 0};
    char text[64] = {};
    GetTimeFormatA(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text, sizeof text);
    return text;
}

class LabelsTest : public DrivenMapTest {
protected:
    static auto IsColour(const SeenColour& colour) {
        return testing::Pointwise(testing::DoubleNear(1e-6), colour);
    }
    static void ExpectRect(const SeenRect& seen, const SeenRect& expected) {
        EXPECT_NEAR(seen.x, expected.x, 0.01);
        EXPECT_NEAR(seen.y, expected.y, 0.01);
        EXPECT_NEAR(seen.width, expected.width, 0.01);
        EXPECT_NEAR(seen.height, expected.height, 0.01);
    }
    /// The texts of the labels: all but the readout.
    std::vector<std::string> Labels() {
        const SeenOverlay seen = Look();
        EXPECT_EQ(seen.openMatrices, 0) << "an empty name or time leaves its level behind";
        std::vector<std::string> words = seen.Words();
        std::erase_if(words, [](const std::string& word) { return word.starts_with("Lat "); });
        return words;
    }
};

TEST_F(LabelsTest, CitiesNearThePointerStandInAColumnWithTheNearestLevelWithIt) {
    DYNAMIC_TIME_ZONE_INFORMATION own = {};
    own.Bias = -(5 * 60 + 45);
    AddCity(L"Lowest", L"A", 39.85, 0.05).timeZone = &own;
    AddCity(L"Nowhere", L"A", 0.0, 0.1, kUtc);
    AddCity(L"Top", L"A", 40.1, 0.1, kNewYork);
    AddCity(L"The middle one", L"A", 40.0, 0.1, kTokyo);
    AddCity(L"Farther", L"A", 40.0, 3.0, kUtc);
    Open();
    ZoomIn();
    const POINT pointer = PixelOf(40.0, 0.1);
    Hover(pointer);
    const SeenOverlay seen = Look();

    const int line = LineHeight();
    const int row = line + 2;
    const double x = pointer.x;
    const double y = 600 - 1 - pointer.y;
    const std::string late = ShortTime(21, 0);
    // Widest name with a space; then the widest row.
    const int nameWidth = WidthOf("The middle one ");
    const double boxWidth = nameWidth + WidthOf(late) + 4;

    ExpectRect(seen.BoxOf(kBoxColour), {x + 7, y + row + line / 2 - 3 * row, boxWidth, 3.0 * row});
    const SeenRect bar = seen.BoxOf(kBarColour);
    EXPECT_EQ(bar.x, x + 7) << "under the box";
    ExpectRect(bar, {bar.x, y - line / 2 - 2, boxWidth, line + 2.0});
    ASSERT_EQ(seen.dots.size(), 1U);
    EXPECT_EQ(seen.dots[0].size, 3.5);
    EXPECT_NEAR(seen.dots[0].place.first, x, 1.0);
    EXPECT_NEAR(seen.dots[0].place.second, y, 1.0);
    EXPECT_THAT(seen.dots[0].colour, IsColour(kDotColour));

    const struct {
        std::string name, time;
        int row;
        const SeenColour& colour;
    } expected[] = {{"Top", ShortTime(8, 0), 1, kNameColour},
                    {"The middle one", late, 0, kSelectedColour},
                    {"Lowest", ShortTime(17, 45), -1, kNameColour}};
    ASSERT_EQ(seen.texts.size(), 7U) << "with the readout";
    const SeenText* text = seen.texts.data();
    for (const auto& e : expected) {
        for (const bool isTime : {false, true}) {
            EXPECT_EQ(text->text, isTime ? e.time : e.name);
            EXPECT_NEAR(text->place.first, bar.x + 2 + (isTime ? nameWidth : 0), 0.01) << e.name;
            EXPECT_NEAR(text->place.second, y + e.row * row - line / 3, 0.01) << e.name;
            EXPECT_THAT(text++->colour, IsColour(e.colour)) << e.name;
        }
    }
    for (POINT at = {pointer.x - 6, pointer.y}; at.x < pointer.x + 6; ++at.x) {
        Hover(at);
        EXPECT_EQ(Look().BoxOf(kBarColour).x, at.x + 7) << "it moves as evenly as the pointer";
    }
}

TEST_F(LabelsTest, TimesFollowTheClockAndTheSeason) {
    AddCity(L"York", L"A", 40.0, 0.1, kNewYork);
    AddCity(L"Unknown", L"A", 40.1, 0.1, 9999);
    AddCity(L"Delhi", L"A", 39.9, 0.1, kIndia);
    AddCity(L"", L"", 39.95, 0.1);
    Open();
    ZoomIn();
    Hover(PixelOf(40.0, 0.1));
    EXPECT_THAT(Labels(),
                ElementsAre("Unknown", "York", ShortTime(8, 0), "Delhi", ShortTime(17, 30)));
    FixedClock() = {2024, 1, 1, 1, 20, 15, 0, 0};
    EXPECT_THAT(Labels(),
                ElementsAre("Unknown", "York", ShortTime(15, 15), "Delhi", ShortTime(1, 45)));
    // A name that fills its field, and a time that Windows cannot write.
    std::fill(std::begin(cities[1].cityName), std::end(cities[1].cityName), L'x');
    std::fill(std::begin(cities[1].countryName), std::end(cities[1].countryName), L'y');
    const FakedImport<"GetTimeFormatW", decltype(GetTimeFormatW)> failing(
        library.module,
        [](LCID, DWORD, const SYSTEMTIME*, const wchar_t*, wchar_t*, int) { return 0; });
    EXPECT_THAT(Labels(), ElementsAre(std::string(63, 'x'), "York", "Error!", "Delhi", "Error!"));
    Home();
    Hover(PixelOf(40.0, 0.1));
    Hover({3, 3});
    EXPECT_THAT(Labels(), testing::Contains("York")) << "in space the pointed place stays";
    for (int i = 0; i < 180; ++i) Key(window, VK_LEFT);
    EXPECT_THAT(Labels(), IsEmpty()) << "on the far side";
}

TEST_F(LabelsTest, ColumnEndsAfterSixtyFourCities) {
    // From north to south: a picture shows them in the order of the table.
    for (int i = 0; i < 300; ++i)
        AddCity((L"C" + std::to_wstring(i)).c_str(), L"A", 40.1 - i * 0.0005, 0.1, kUtc);
    Open();
    ZoomIn();
    const int row = LineHeight() + 2;
    Hover(PixelOf(40.12, 0.1));  // the first is the nearest: the column hangs down
    const SeenOverlay hanging = Look();
    EXPECT_EQ(hanging.BoxOf(kBoxColour).height, 64 * row);
    EXPECT_TRUE(hanging.Has("C63"));
    EXPECT_FALSE(hanging.Has("C64"));
    // The nearest is the 51st: the first row lies above the window, which ends the column.
    Hover(PixelOf(40.1 - 50 * 0.0005, 0.1));
    const SeenOverlay standing = Look();
    EXPECT_EQ(standing.BoxOf(kBoxColour).height, 64 * row);
    EXPECT_FALSE(standing.Has("C0"));
    EXPECT_THAT(standing.dots, IsEmpty());
}

TEST_F(LabelsTest, StayWhenAnotherWindowsStartTakesTheViewBack) {
    AddCity(L"Near", L"A", 40.0, 0.1);
    Open();
    const POINT there = PixelOf(40.0, 0.1);
    ZoomIn();
    const HWND sizeless = CreateMap(0, 0);
    ASSERT_NE(sizeless, nullptr);
    Hover(there);
    EXPECT_THAT(Labels(), testing::Contains("Near"));
}

/// The bytes of a record that are the host's.
std::string HostsBytes(const CityRecord& city) {
    std::string hosts(reinterpret_cast<const char*>(&city), offsetof(CityRecord, timeZone));
    return hosts.append(reinterpret_cast<const char*>(city.tail), sizeof city.tail);
}

TEST_F(LabelsTest, OnlyThePermittedBytesOfARecordAreWritten) {
    const DYNAMIC_TIME_ZONE_INFORMATION own = {};
    AddCity(L"Zoned", L"A", 40.0, 0.1, kTokyo);
    AddCity(L"Own", L"A", 40.05, 0.1, kTokyo).timeZone = &own;
    AddCity(L"Nowhere", L"A", 0.0, 0.0, kTokyo);
    AddCity(L"Unknown", L"A", 39.95, 0.1, 0);
    AddCity(L"NaN", L"A", 10.0, std::nan(""), kTokyo);
    for (CityRecord& city : cities) {
        for (auto* name : {&city.cityName, &city.countryName})
            std::fill(*name + std::wcslen(*name) + 1, std::end(*name), L'\xC3C3');
        std::memset(city.hostBytes, 0xC3, sizeof city.hostBytes);
        city.padding = 0xC3C3C3C3;
        std::memset(city.tail, 0xC3, sizeof city.tail);
    }
    const std::vector<CityRecord> before = cities;
    photos.PutCity(L"A\\Zoned", 2);
    consent = 1;
    Open();
    Hover(PixelOf(40.0, 0.1));
    Look();
    EXPECT_NE(cities[0].timeZone, nullptr);
    EXPECT_NE(cities[0].timeZone, &own);
    Click({400, 300});
    for (const CityRecord& city : before) {
        ShowCity(city);
        Tick(kFlightTimer);
        Look();
    }
    SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, 0, 1);
    for (const int key : {VK_HOME, VK_ADD, VK_NEXT, VK_PRIOR, int{'I'}, int{'F'}}) Key(window, key);
    Tick(kSunTimer);
    Look();
    DestroyWindow(window);
    const auto* const lent = cities[0].timeZone;
    library.FreeMap();
    for (std::size_t i = 0; i < cities.size(); ++i) {
        EXPECT_EQ(HostsBytes(cities[i]), HostsBytes(before[i])) << i;
        EXPECT_EQ(cities[i].timeZone, before[i].timeZone) << i;
    }
    cities[0].timeZone = lent;
    library.FreeMap();
    EXPECT_EQ(cities[0].timeZone, lent) << "a freed library touches no record";
    Init();
    library.FreeMap();
    EXPECT_EQ(cities[0].timeZone, nullptr) << "the table was handed over again";
}

}  // namespace
