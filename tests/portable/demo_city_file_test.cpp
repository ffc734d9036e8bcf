#include "data/city_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace {

using Name = std::basic_string<HorivoWideChar>;
using std::string_literals::operator""s;

TEST(CityFile, ReadsGoodLinesAndLeavesBrokenOnesOut) {
    const auto cities = ReadCities(
        "# remark\t\t1\t1\nS\xC3\xA3o Paulo\tBrazil\t-23.5333\t-46.6167\tE. South America "
        "Standard Time\tAmerica/Sao_Paulo\r\nLima\nLima\tPeru\t-12.05\n"
        "Lima\tPeru\t-12.05x\t-77.05\nLima\tPeru\t-91\t-77.05\nLima\tPeru\t-12.05\t180.5\n"
        "Lima\tPeru\tnan\t-77.05\n\tPeru\t-12.05\t-77.05\n"
        "Nowhere\t\t1.5\t180\r\n\0Hidden\tPeru\t1\t1"s);
    ASSERT_EQ(cities.size(), 2U);
    EXPECT_EQ(Name(cities[0].cityName), u"S\u00E3o Paulo");
    EXPECT_EQ(Name(cities[0].countryName), u"Brazil");
    EXPECT_EQ(cities[0].latitude, -23.5333);
    EXPECT_EQ(cities[0].longitude, -46.6167);
    EXPECT_EQ(cities[0].timeZoneId, 39U);
    EXPECT_EQ(cities[1].timeZoneId, 0U);
}

TEST(CityFile, CutsLongNamesAtAWholeCharacter) {
    const std::pair<std::string, Name> cases[] = {
        {std::string(62, 'a') + "bc", Name(62, u'a') + u"b"},
        {std::string(62, 'a') + "\xF0\x9F\x8C\x8D", Name(62, u'a')},
        {"a\xC3(\x80\xF5", u"a\uFFFD(\uFFFD\uFFFD"},
        {"a\xE2\x82", u"a\uFFFD"},
        {"a\xE0\x80\x80 \xED\xA0\x80 \xF4\x90\x80\x80", u"a\uFFFD \uFFFD \uFFFD"},
    };
    for (const auto& [name, stored] : cases) {
        EXPECT_EQ(Name(ReadCities(name + "\tX\t1\t1").at(0).cityName), stored) << name;
    }
}

TEST(CityFile, EveryCityOfTheSampleHasAPlaceAndAKnownZone) {
    std::ifstream file(HORIVO_ASSETS "/cities.tsv", std::ios::binary);
    const auto cities = ReadCities(std::string(std::istreambuf_iterator<char>(file), {}));
    EXPECT_EQ(cities.size(), 1303U);
    for (const auto& city : cities) EXPECT_NE(city.timeZoneId, 0U) << &city - cities.data();
}

}  // namespace
