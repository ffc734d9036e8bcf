// The labels beside the pointer, as the picture shows them, and what is left of the host's table.
#include <cmath>
#include <cstring>

#include "support/map_play_win.h"

namespace {

constexpr std::uint32_t kIndia = 54;
constexpr std::uint32_t kTokyo = 114;
constexpr std::uint32_t kNewYork = 41;

/// The user's short time, without seconds.
std::string ShortTime(WORD hour, WORD minute) {
    const SYSTEMTIME time = {2024, 7, 1, 1, hour, minute, 0, 0};
    char text[64] = {};
    GetTimeFormatA(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text, sizeof text);
    return text;
}

class LabelsTest : public MapPlay {};

TEST_F(LabelsTest, CitiesNearThePointerStandInAColumnWithTheNearestLevelWithIt) {
    DYNAMIC_TIME_ZONE_INFORMATION own = {};
    own.Bias = -(5 * 60 + 45);
    AddCity(L"Lowest", L"A", 39.85, 0.05).timeZone = &own;
    AddCity(L"Top", L"A", 40.1, 0.1, kNewYork);
    AddCity(L"The middle one", L"A", 40.0, 0.1, kTokyo);
    Play("open; zoom");
    const POINT pointer = points["pointer"] = PixelOf(40.0, 0.1);
    Play("move pointer; labels Top | " + ShortTime(8, 0) + " | The middle one | " +
         ShortTime(21, 0) + " | Lowest | " + ShortTime(17, 45));
    const SeenOverlay seen = Look();
    const double y = kOpenHeight - 1 - pointer.y;
    EXPECT_NEAR(seen.PlaceOf("The middle one").y, y, LineHeight()) << "level";
    EXPECT_GT(seen.PlaceOf("Top").y, seen.PlaceOf("The middle one").y);
    for (std::size_t i = 0; i < 6; ++i)  // name and time of each row: only the nearest is bright
        EXPECT_NEAR(seen.texts[i].colour[1], i / 2 == 1 ? 0.9 : 0.82, 1e-6) << seen.texts[i].text;
    const SeenItem& dot = seen.dots.at(0);
    EXPECT_LT(std::hypot(dot.x - pointer.x, dot.y - y), 1.5);
    EXPECT_EQ(dot.width, 3.5);
    EXPECT_NEAR(dot.colour[1], 0.99, 1e-6) << "green";
    for (LONG x = pointer.x - 6; x < pointer.x + 6; ++x) {
        Hover({x, pointer.y});
        EXPECT_EQ(Look().BoxOf(0.17).x, x + 7) << "it moves as evenly as the pointer";
    }
}

TEST_F(LabelsTest, TimesFollowTheClockAndTheSeason) {
    AddCity(L"York", L"A", 40.0, 0.1, kNewYork);
    AddCity(L"Unknown", L"A", 40.1, 0.1, 9999);
    AddCity(L"Delhi", L"A", 39.9, 0.1, kIndia);
    AddCity(L"", L"", 39.95, 0.1);
    Play("open; zoom; move York; labels Unknown | York | " + ShortTime(8, 0) + " | Delhi | " +
         ShortTime(17, 30));
    FixedClock() = {2024, 1, 1, 1, 20, 15, 0, 0};
    Play("labels Unknown | York | " + ShortTime(15, 15) + " | Delhi | " + ShortTime(1, 45));
    // A name that fills its field, and a time that Windows cannot write.
    std::fill(std::begin(cities[1].cityName), std::end(cities[1].cityName), L'x');
    const FakedImport<"GetTimeFormatW", decltype(GetTimeFormatW)> failing(
        library.module, [](auto...) { return 0; });
    Play("labels " + std::string(63, 'x') + " | York | Error! | Delhi | Error!");
    Play("home; move York; move 3,3; says York; key left 180; labels none",
         "in space the pointed place stays, on the far side not");
}

TEST_F(LabelsTest, NamesHaveTheGlyphsOfTheUsersCodePage) {
    UINT codePage = 0;
    std::map<DWORD, wchar_t> glyphs;  // characters by list
    using Narrow = FakedImport<"WideCharToMultiByte", decltype(WideCharToMultiByte)>;
    using Glyphs = FakedImport<"wglUseFontBitmapsW", decltype(wglUseFontBitmapsW)>;
    const FakedImport<"GetACP", decltype(GetACP)> ansi(library.module, [&] { return codePage; });
    const Narrow narrow(library.module, [&](UINT page, auto... rest) {
        return Narrow::Real(page == CP_ACP ? codePage : page, rest...);
    });
    const Glyphs record(library.module, [&](HDC dc, DWORD first, DWORD count, DWORD list) {
        for (DWORD i = 0; i < count; ++i) glyphs[list + i] = static_cast<wchar_t>(first + i);
        return Glyphs::Real(dc, first, count, list);
    });
    const std::tuple<UINT, const wchar_t*, char> cases[] = {
        {1251, L"\x0416", '\xC6'}, {1252, L"\x00E9", '\xE9'}, {1252, L"\x20AC", '\x80'}};
    for (const auto& [page, name, code] : cases) {
        codePage = page;
        glyphs.clear();
        cities.clear();
        AddCity(name, L"A", 40.0, 0.1);
        Play("open; zoom; move 40:0.1; labels " + std::string(1, code));
        EXPECT_EQ(glyphs[glyphs.begin()->first + static_cast<unsigned char>(code)], name[0]);
        EXPECT_EQ(glyphs.size(), 255U) << "the last code gets no glyph";
        Play("close; free");
    }
}

TEST_F(LabelsTest, TheLibraryWritesItsFieldsOfARecordAndTakesItsZonesBack) {
    const DYNAMIC_TIME_ZONE_INFORMATION own = {};
    AddCity(L"Zoned", L"A", 40.0, 0.1, kTokyo);
    AddCity(L"Own", L"A", 40.05, 0.1, kTokyo).timeZone = &own;
    const std::vector<CityRecord> before = cities;
    photos.PutCity(L"A\\Zoned", 2);
    consent = 1;
    Play("open; move Zoned; paint");
    const auto* const lent = cities[0].timeZone;
    EXPECT_TRUE(lent != nullptr && lent != &own);
    Play("click 400,300; fly; city Own/A; photos changed 0; key next; tick sun; close; free");
    for (std::size_t i = 0; i < cities.size(); ++i) {
        EXPECT_EQ(std::memcmp(&cities[i], &before[i], offsetof(CityRecord, markerPoint)), 0) << i;
        EXPECT_EQ(std::memcmp(cities[i].tail, before[i].tail, sizeof before[i].tail), 0) << i;
    }
    cities[0].timeZone = lent;
    Play("free again");
    EXPECT_EQ(cities[0].timeZone, lent) << "a freed library touches no record";
    Play("cities; free");
    EXPECT_EQ(cities[0].timeZone, nullptr) << "the table was handed over again";
    library.InitMap(cities.data(), -3);
    Play("create a; move 80,60; paint; close", "a negative count is an empty table");
}

}  // namespace
