// The sample host's own files: the table of cities, and their names.
#include "data/city_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/data_folder.h"

namespace {

using testing::ElementsAre;
using std::string_literals::operator""s;

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
    EXPECT_EQ(cities[1].timeZoneId, 0U);
    const std::wstring most(62, L'a');
    EXPECT_EQ(ReadCities(most + L"bc\tX\t1\t1")[0].cityName, most + L'b');
    EXPECT_EQ(ReadCities(most + L"\xD83C\xDF0D\tX\t1\t1")[0].cityName, most) << "half of a pair";
}

TEST(CityFile, NamesComeInTheLanguageThenInEnglishThenOthers) {
    const auto cities = ReadCities(L"Gdansk\tPoland\t54\t18\nAtlantis\tNowhere\t1\t1\n");
    constexpr wchar_t kNames[] =
        L"# city\tcountry\tde\tfr\tothers\n\tPoland\tPolen\tPologne\tPolska\r\n"
        L"Gdansk\tPoland\tDanzig\t\tDantzig, Dantsic\nGdansk\tNowhere\tDanzig\n";
    const auto german = ReadCityNames(kNames, cities, L"de");
    EXPECT_THAT(german[0].city, ElementsAre(L"Danzig", L"Gdansk", L"Dantzig", L"Dantsic"));
    EXPECT_THAT(german[0].country, ElementsAre(L"Polen", L"Poland", L"Polska"));
    EXPECT_THAT(german[1].city, ElementsAre(L"Atlantis")) << "a city without a line";
    const auto french = ReadCityNames(kNames, cities, L"fr");
    EXPECT_THAT(french[0].city, ElementsAre(L"Gdansk", L"Dantzig", L"Dantsic")) << "as in English";
    EXPECT_EQ(french[0].country[0], L"Pologne");
    EXPECT_EQ(ReadCityNames(kNames, cities, L"en")[0].city[0], L"Gdansk");
    EXPECT_THAT(ReadCityNames(L"", cities, L"de")[1].country, ElementsAre(L"Nowhere"));
}

}  // namespace
