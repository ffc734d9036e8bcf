// The labels beside the pointer, as the picture shows them, and what is left of the host's table.
#include <gmock/gmock.h>

#include <cmath>
#include <cwchar>

#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

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
    static void ExpectColour(const SeenColour& seen, const SeenColour& expected) {
        for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(seen[i], expected[i], 1e-6);
    }
    void ExpectBox(const SeenBox* box, double x, double y, double width, double height) {
        ASSERT_NE(box, nullptr);
        EXPECT_NEAR(box->x, x, 0.01);
        EXPECT_NEAR(box->y, y, 0.01);
        EXPECT_NEAR(box->width, width, 0.01);
        EXPECT_NEAR(box->height, height, 0.01);
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
    const std::string first = ShortTime(8, 0);
    const std::string last = ShortTime(17, 45);
    // Widest name with a blank; then the widest row.
    const int nameWidth = static_cast<int>(SizeOf("The middle one ").cx);
    const int rowWidth = nameWidth + static_cast<int>(SizeOf(late).cx);

    ExpectBox(seen.Find(kBoxColour), x + 7, y + row + line / 2 - 3 * row, rowWidth + 4, 3 * row);
    const SeenBox* bar = seen.Find(kBarColour);
    ASSERT_NE(bar, nullptr);
    // The column's left edge is a whole pixel, cut off.
    EXPECT_NEAR(bar->x, x + 6.5, 0.51);
    ExpectBox(bar, bar->x, y - line / 2 - 2, rowWidth + 4, line + 2);
    ASSERT_EQ(seen.dots.size(), 1U);
    EXPECT_EQ(seen.dots[0].size, 3.5);
    EXPECT_NEAR(seen.dots[0].x, x, 1.0);
    EXPECT_NEAR(seen.dots[0].y, y, 1.0);
    ExpectColour(seen.dots[0].colour, kDotColour);

    const struct {
        std::string text;
        int row;
        bool isTime;
        const SeenColour& colour;
    } expected[] = {
        {"Top", 1, false, kNameColour},
        {first, 1, true, kNameColour},
        {"The middle one", 0, false, kSelectedColour},
        {late, 0, true, kSelectedColour},
        {"Lowest", -1, false, kNameColour},
        {last, -1, true, kNameColour},
    };
    ASSERT_GE(seen.texts.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const SeenText& text = seen.texts[i];
        EXPECT_EQ(text.text, expected[i].text);
        EXPECT_NEAR(text.x, bar->x + 2 + (expected[i].isTime ? nameWidth : 0), 0.01) << text.text;
        EXPECT_NEAR(text.y, y + expected[i].row * row - line / 3, 0.01) << text.text;
        ExpectColour(text.colour, expected[i].colour);
    }
    EXPECT_EQ(seen.Find("Nowhere"), nullptr);
    EXPECT_EQ(seen.Find("Farther"), nullptr);
    EXPECT_EQ(seen.openMatrices, 0);
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
    CityRecord& city = cities[1];
    std::fill(std::begin(city.cityName), std::end(city.cityName), L'x');
    std::fill(std::begin(city.countryName), std::end(city.countryName), L'y');
    const FakedImport<"GetTimeFormatW", decltype(GetTimeFormatW)> failing(
        library.module,
        [](LCID, DWORD, const SYSTEMTIME*, const wchar_t*, wchar_t*, int) { return 0; });
    EXPECT_THAT(Labels(), ElementsAre(std::string(63, 'x'), "York", "Error!", "Delhi", "Error!"));
}

TEST_F(LabelsTest, PointedPlaceOnTheFarSideShowsNone) {
    AddCity(L"York", L"A", 40.0, 0.1, kUtc);
    Open();
    Hover(PixelOf(40.0, 0.1));
    Hover({3, 3});  // space: the pointed place stays
    EXPECT_THAT(Labels(), ElementsAre("York", ShortTime(12, 0)));
    for (int i = 0; i < 180; ++i) Key(window, VK_LEFT);
    EXPECT_THAT(Labels(), IsEmpty());
    for (int i = 0; i < 180; ++i) Key(window, VK_LEFT);
    EXPECT_THAT(Labels(), ElementsAre("York", ShortTime(12, 0)));
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
    ASSERT_NE(hanging.Find(kBoxColour), nullptr);
    EXPECT_EQ(hanging.Find(kBoxColour)->height, 64 * row);
    EXPECT_NE(hanging.Find("C63"), nullptr);
    EXPECT_EQ(hanging.Find("C64"), nullptr);
    // The nearest is the 51st: the first row lies above the window, which ends the column.
    Hover(PixelOf(40.1 - 50 * 0.0005, 0.1));
    const SeenOverlay standing = Look();
    ASSERT_NE(standing.Find(kBoxColour), nullptr);
    EXPECT_EQ(standing.Find(kBoxColour)->height, 64 * row);
    EXPECT_EQ(standing.Find("C0"), nullptr);
    EXPECT_EQ(standing.dots.size(), 0U);
}

/// Fills all bytes that the library may not write with a pattern of their own.
void Sprinkle(CityRecord& city) {
    unsigned char next = 1;
    const auto fill = [&](auto& field, std::size_t from = 0) {
        auto* bytes = reinterpret_cast<unsigned char*>(&field);
        for (std::size_t i = from; i < sizeof field; ++i) bytes[i] = next++;
    };
    fill(city.cityName, (std::wcslen(city.cityName) + 1) * sizeof(wchar_t));
    fill(city.countryName, (std::wcslen(city.countryName) + 1) * sizeof(wchar_t));
    fill(city.hostBytes);
    fill(city.padding);
    fill(city.tail);
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
    for (CityRecord& city : cities) Sprinkle(city);
    const std::vector<CityRecord> before = cities;
    photos.PutCity(L"A\\Zoned", 2);
    consent = 1;
    Open();
    Hover(PixelOf(40.0, 0.1));
    Look();
    EXPECT_NE(cities[0].timeZone, nullptr);
    EXPECT_NE(cities[0].timeZone, &own);
    Click(PixelOf(40.0, 0.1));
    Look();
    for (const CityRecord& city : before) {
        SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&city));
        Tick(kFlightTimer);
    }
    SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, 0, 1);
    for (const int key : {VK_HOME, VK_ADD, VK_NEXT, VK_PRIOR, int{'I'}, int{'F'}}) Key(window, key);
    Tick(kSunTimer);
    Look();
    DestroyWindow(window);
    library.FreeMap();
    for (std::size_t i = 0; i < cities.size(); ++i) {
        EXPECT_EQ(HostsBytes(cities[i]), HostsBytes(before[i])) << i;
        EXPECT_EQ(cities[i].timeZone, before[i].timeZone) << i;
    }
}

}  // namespace
