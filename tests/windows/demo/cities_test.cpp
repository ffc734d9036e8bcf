// The sample host's table of cities and their names, and what its list shows of them.
#include <gmock/gmock.h>

#include <filesystem>

#include "clock/city_order.h"
#include "clock/start_city.h"
#include "clock/time_texts.h"
#include "data/data_folder.h"
#include "horivo_host.h"

namespace {

using testing::ElementsAre;
using std::string_literals::operator""s;

std::wstring Asset(const char* name) {
    return ReadTextFile(std::filesystem::path(HORIVO_ASSETS) / name);
}

TEST(CityFile, ReadsGoodLinesAndLeavesBrokenOnesOut) {
    const auto cities = ReadCities(
        L"# remark\t\t1\t1\nS\x00E3o Paulo\tBrazil\t-23.5333\t-46.6167\tE. South America "
        L"Standard Time\tAmerica/Sao_Paulo\tzone\r\nLima\nLima\tPeru\t-12.05\n"
        L"Lima\tPeru\t-12.05x\t-77.05\nLima\tPeru\t-91\t-77.05\nLima\tPeru\t-12.05\t180.5\n"
        L"Lima\tPeru\tnan\t-77.05\n\tPeru\t-12.05\t-77.05\nLima\tPeru\t\t-77.05\n"
        L"Nowhere\t\t1.5\t180\r\n\0Hidden\tPeru\t1\t1"s);
    ASSERT_EQ(cities.size(), 2U);
    EXPECT_STREQ(cities[0].cityName, L"S\x00E3o Paulo");
    EXPECT_STREQ(cities[0].countryName, L"Brazil");
    EXPECT_EQ(cities[0].latitude, -23.5333);
    EXPECT_EQ(cities[0].longitude, -46.6167);
    EXPECT_EQ(cities[0].timeZoneId, 39U);
    EXPECT_EQ(cities[0].hostBytes[0], static_cast<unsigned char>(StandsFor::Zone));
}

TEST(CityFile, NamesComeInTheLanguageThenInEnglishThenOthers) {
    const auto german = ReadCityNames(
        L"# city\tcountry\tde\tfr\tothers\n\tPoland\tPolen\tPologne\tPolska\r\n"
        L"Gdansk\tPoland\tDanzig\t\tDantzig, Dantsic\nGdansk\tNowhere\tDanzig\n",
        ReadCities(L"Gdansk\tPoland\t54\t18\nAtlantis\tNowhere\t1\t1\n"), L"de");
    EXPECT_THAT(german[0].city, ElementsAre(L"Danzig", L"Gdansk", L"Dantzig", L"Dantsic"));
    EXPECT_THAT(german[0].country, ElementsAre(L"Polen", L"Poland", L"Polska"));
    EXPECT_THAT(german[1].city, ElementsAre(L"Atlantis")) << "a city without a line";
}

/// The names in the rows of a list, with the times of a night in June.
std::vector<std::wstring> Listed(std::vector<CityRecord> cities, const wchar_t* language,
                                 const wchar_t* wanted, CityColumn column, bool descending) {
    constexpr SYSTEMTIME kJuneNight = {2026, 6, 0, 21, 20, 15, 0, 0};  // UTC
    const auto names = ReadCityNames(Asset("city_names.tsv"), cities, language);
    CityTimes times;
    times.Finish(cities);
    std::vector<CityRow> rows;
    for (std::size_t i = 0; i < cities.size(); ++i) {
        CityRow row{static_cast<std::int32_t>(i), FitOf(cities[i], names[i], wanted), false, {}};
        row.hasTime = times.At(cities[i], kJuneNight, row.local);
        if (row.fit != Fit::None) rows.push_back(row);
    }
    SortRows(rows, names, column, descending);
    std::vector<std::wstring> listed;
    for (const CityRow& row : rows)
        listed.push_back(names[static_cast<std::size_t>(row.city)].city[0]);
    return listed;
}

TEST(CityOrder, FindsFirstWhatPeopleMeanInTheirLanguageAndInEnglish) {
    const std::vector<CityRecord> cities = ReadCities(Asset("cities.tsv"));
    const struct {
        const wchar_t *language, *wanted, *first;
    } cases[] = {
        {L"en", L"par", L"Paris"},  // not Paramaribo, nor Asuncion in Paraguay
        {L"en", L"york", L"York"},  // New York only contains it
        {L"en", L"SAIGON", L"Ho Chi Minh"},  {L"en", L"malmö", L"Malmo"},
        {L"en", L"st johns", L"St. John's"}, {L"de", L"gdansk", L"Danzig"},
        {L"fr", L"islande", L"Reykjavik"},   {L"ja", L"みゅんへん", L"ミュンヘン"},
    };
    for (const auto& c : cases) {
        const auto listed = Listed(cities, c.language, c.wanted, CityColumn::Name, false);
        EXPECT_EQ(listed.at(0), c.first);
    }
    const auto cityIn = [&](const wchar_t* zone, const wchar_t* country) {
        return FindCityOfZone(cities, ZoneNumber(zone), country);
    };
    EXPECT_EQ(cityIn(L"W. Europe Standard Time", L"Italy"), FindCity(cities, L"Rome", L"Italy"));
    EXPECT_EQ(cityIn(L"W. Europe Standard Time", L"Japan"),
              FindCity(cities, L"Berlin", L"Germany"));
    EXPECT_EQ(cityIn(L"UTC", L"Iceland"), -1) << "a zone without a city";
    EXPECT_EQ(FindCity(cities, L"St. John's", L"France"), -1);
}

TEST(CityOrder, ColumnsSortAndCitiesWithoutATimeComeLast) {
    // At 20:15 UTC it is 5:15 on the 22nd in Xa, 16:15 in Xb and 1:45 on the 22nd in Xc.
    const auto cities = ReadCities(
        L"Xa\tJ\t1\t1\tTokyo Standard Time\nXd\t\t1\t1\nXb\tU\t1\t1\tEastern Standard Time\n"
        L"Xc\tI\t1\t1\tIndia Standard Time\n");
    const auto sorted = [&](CityColumn column, bool descending) {
        return Listed(cities, L"en", L"x", column, descending);
    };
    EXPECT_THAT(sorted(CityColumn::Name, true), ElementsAre(L"Xd", L"Xc", L"Xb", L"Xa"));
    EXPECT_THAT(sorted(CityColumn::Country, false), ElementsAre(L"Xd", L"Xc", L"Xa", L"Xb"));
    EXPECT_THAT(sorted(CityColumn::Date, false), ElementsAre(L"Xb", L"Xa", L"Xc", L"Xd"));
    EXPECT_THAT(sorted(CityColumn::Time, false), ElementsAre(L"Xc", L"Xa", L"Xb", L"Xd"));
    EXPECT_THAT(sorted(CityColumn::Offset, true), ElementsAre(L"Xa", L"Xc", L"Xb", L"Xd"));
}

TEST(TimeTexts, SpeakInWholeHoursAndMinutes) {
    InitLangFile();
    EXPECT_EQ(DifferenceText(0) + OffsetText(0), L"0 hUTC");
    EXPECT_EQ(DifferenceText(330) + OffsetText(330), L"+5 h 30 mUTC+5:30");
    EXPECT_EQ(DifferenceText(-5) + OffsetText(-480), L"\u22125 mUTC\u22128");
}

}  // namespace
