// What the sample host's list shows: search, order and local times.
#include "clock/city_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "clock/start_city.h"
#include "clock/time_texts.h"
#include "data/data_folder.h"
#include "horivo_host.h"

namespace {

using testing::ElementsAre;

/// The sample's own cities, with their names in a language.
struct Sample {
    std::vector<CityRecord> cities =
        ReadCities(ReadTextFile(std::wstring(HORIVO_ASSETS) + L"/cities.tsv"));
    std::vector<PlaceNames> names;

    explicit Sample(const wchar_t* language)
        : names(ReadCityNames(ReadTextFile(std::wstring(HORIVO_ASSETS) + L"/city_names.tsv"),
                              cities, language)) {}

    /// The first hit of a search, as it is shown; empty when there is none.
    std::wstring FirstHit(const wchar_t* wanted) const {
        std::vector<CityRow> rows;
        for (std::size_t i = 0; i < cities.size(); ++i) {
            const Fit fit = FitOf(cities[i], names[i], wanted);
            if (fit != Fit::None) rows.push_back({static_cast<std::int32_t>(i), fit, false, {}});
        }
        SortRows(rows, names, CityColumn::Name, false);
        return rows.empty() ? L"" : names[static_cast<std::size_t>(rows[0].city)].city[0];
    }
};

TEST(CitySearch, FindsFirstWhatPeopleMeanInTheirLanguageAndInEnglish) {
    const struct {
        const wchar_t *language, *wanted, *first;
    } cases[] = {
        {L"en", L"par", L"Paris"},  // not Paramaribo, nor Asuncion in Paraguay
        {L"en", L"ber", L"Berlin"},
        {L"en", L"iceland", L"Reykjavik"},
        {L"en", L"york", L"York"},  // New York only contains it
        {L"en", L"new york city", L"New York"},
        {L"en", L"st johns", L"St. John's"},
        {L"en", L"BOMBAY", L"Mumbai"},
        {L"en", L"saigon", L"Ho Chi Minh"},
        {L"en", L"malm\xF6", L"Malmo"},
        {L"en",
         L"\x141\xF3"
         L"d\x17A",
         L"Lodz"},
        {L"en", L"xyzzy", L""},
        {L"de", L"danzig", L"Danzig"},
        {L"de", L"gdansk", L"Danzig"},
        {L"de", L"munchen", L"M\xFCnchen"},
        {L"es", L"mexico", L"Ciudad de M\xE9xico"},
        {L"fr", L"islande", L"Reykjavik"},
        {L"ru", L"\x43C\x43E\x441\x43A", L"\x41C\x43E\x441\x43A\x432\x430"},
        {L"ja", L"\xFF90\xFF6D\xFF9D\xFF8D\xFF9D",
         L"\x30DF\x30E5\x30F3\x30D8\x30F3"},  // half width
        {L"ja", L"\x307F\x3085\x3093\x3078\x3093", L"\x30DF\x30E5\x30F3\x30D8\x30F3"},  // hiragana
    };
    for (const auto& c : cases)
        EXPECT_EQ(Sample(c.language).FirstHit(c.wanted), c.first) << c.language << ' ' << c.wanted;
}

TEST(StartCity, IsOneThatPeopleOfTheZoneKnow) {
    const std::vector<CityRecord> cities = Sample(L"en").cities;
    const auto nameIn = [&](const wchar_t* zone, const wchar_t* country) -> std::wstring {
        const std::int32_t city = FindCityOfZone(cities, ZoneNumber(zone), country);
        return city < 0 ? L"" : cities[static_cast<std::size_t>(city)].cityName;
    };
    EXPECT_EQ(nameIn(L"W. Europe Standard Time", L"Italy"), L"Rome");
    EXPECT_EQ(nameIn(L"W. Europe Standard Time", L"Japan"), L"Berlin") << "another country's zone";
    EXPECT_EQ(nameIn(L"Eastern Standard Time", L"United States"), L"New York");
    EXPECT_EQ(nameIn(L"UTC", L"Iceland"), L"") << "a zone without a city";
    EXPECT_EQ(nameIn(L"no such zone", L"Italy"), L"");
    EXPECT_EQ(FindCity(cities, L"St. John's", L"Canada"),
              FindCityOfZone(cities, ZoneNumber(L"Newfoundland Standard Time"), L""));
    EXPECT_EQ(FindCity(cities, L"St. John's", L"France"), -1);
}

TEST(CityOrderTest, ColumnsSortAndCitiesWithoutATimeComeLast) {
    constexpr SYSTEMTIME kJuneNight = {2026, 6, 0, 21, 20, 15, 0, 0};  // UTC
    std::vector<CityRecord> cities = ReadCities(
        L"Tokyo\tJapan\t1\t1\tTokyo Standard Time\nAtlantis\t\t1\t1\n"
        L"New York\tUnited States\t1\t1\tEastern Standard Time\n"
        L"Kolkata\tIndia\t1\t1\tIndia Standard Time\n");
    const std::vector<PlaceNames> names = ReadCityNames(L"", cities, L"en");
    CityTimes times;
    times.Finish(cities);
    std::vector<CityRow> rows;
    for (std::int32_t i = 0; i < std::ssize(cities); ++i) {
        CityRow& row = rows.emplace_back(CityRow{i, Fit::NameBegins, false, {}});
        row.hasTime = times.At(cities[static_cast<std::size_t>(i)], kJuneNight, row.local);
    }
    const auto sorted = [&](CityColumn column, bool descending) {
        SortRows(rows, names, column, descending);
        std::vector<std::wstring> shown;
        for (const CityRow& row : rows) {
            shown.push_back(names[static_cast<std::size_t>(row.city)].city[0]);
        }
        return shown;
    };
    // At 20:15 UTC it is 5:15 on the 22nd in Tokyo, 16:15 in New York, 1:45 on the 22nd in Kolkata.
    EXPECT_THAT(sorted(CityColumn::Name, true),
                ElementsAre(L"Tokyo", L"New York", L"Kolkata", L"Atlantis"));
    EXPECT_THAT(sorted(CityColumn::Country, false),
                ElementsAre(L"Atlantis", L"Kolkata", L"Tokyo", L"New York"));
    EXPECT_THAT(sorted(CityColumn::Date, false),
                ElementsAre(L"New York", L"Kolkata", L"Tokyo", L"Atlantis"))
        << "cities of one day by name";
    EXPECT_THAT(sorted(CityColumn::Time, false),
                ElementsAre(L"Kolkata", L"Tokyo", L"New York", L"Atlantis"));
    EXPECT_THAT(sorted(CityColumn::Offset, true),
                ElementsAre(L"Tokyo", L"Kolkata", L"New York", L"Atlantis"));
    EXPECT_EQ(rows[1].local.offsetMinutes, 330);
    EXPECT_EQ(rows[2].local.offsetMinutes, -240);
}

TEST(TimeTextsTest, OffsetsAndDifferencesSpeakInWholeHoursAndMinutes) {
    // Without a module of texts the services speak in their built-in unit words.
    const struct {
        std::int32_t minutes;
        const wchar_t *difference, *offset;
    } cases[] = {{0, L"0 h", L"UTC"},
                 {60, L"+1 h", L"UTC+1"},
                 {-480, L"\u22128 h", L"UTC\u22128"},
                 {330, L"+5 h 30 m", L"UTC+5:30"},
                 {-5, L"\u22125 m", L"UTC\u22120:05"}};
    for (const auto& c : cases) {
        EXPECT_EQ(DifferenceText(c.minutes), c.difference);
        EXPECT_EQ(OffsetText(c.minutes), c.offset);
    }
}

TEST(TimeTextsTest, WordsFollowTheLanguageAndFormatsWindows) {
    constexpr SYSTEMTIME kTime = {2026, 6, 0, 21, 14, 5, 0, 0};
    SetLanguage(L"ENU");
    const std::wstring time = TimeText(kTime);
    const std::wstring date = DateText(kTime).substr(DayText(kTime).size());
    SetLanguage(L"DEU");
    EXPECT_EQ(TimeText(kTime), time);
    EXPECT_EQ(DateText(kTime), L"Sonntag" + date);
    InitLangFile();
}

}  // namespace
