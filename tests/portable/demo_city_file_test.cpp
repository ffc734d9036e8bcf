#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "data/city_file.h"

namespace {

/// A record's name in a form that a failing test can print.
std::u32string Text(const HorivoWideChar* name) {
    std::u32string text;
    for (; *name != 0; ++name) text += static_cast<char32_t>(*name);
    return text;
}

TEST(CityFile, ReadsGoodLinesAndLeavesBrokenOnesOut) {
    const auto cities = ReadCities(
        "# remark\nS\xC3\xA3o Paulo\tBrazil\t-23.5333\t-46.6167\tE. South America "
        "Standard Time\tAmerica/Sao_Paulo\r\nLima\nLima\tPeru\t-12.05\n"
        "Lima\tPeru\tsouth\t-77.05\nLima\tPeru\t-12.05x\t-77.05\nLima\tPeru\t-91\t-77.05\n"
        "Lima\tPeru\t-12.05\t180.5\nLima\tPeru\tnan\t-77.05\n\tPeru\t-12.05\t-77.05\n"
        "Nowhere\t\t1.5\t2\tNo Such Time");
    ASSERT_EQ(cities.size(), 2U);
    EXPECT_EQ(Text(cities[0].cityName), U"S\u00E3o Paulo");
    EXPECT_EQ(Text(cities[0].countryName), U"Brazil");
    EXPECT_EQ(cities[0].latitude, -23.5333);
    EXPECT_EQ(cities[0].longitude, -46.6167);
    EXPECT_NE(cities[0].timeZoneId, 0U);
    EXPECT_EQ(cities[1].timeZoneId, 0U);
}

TEST(CityFile, CutsLongNamesAtAWholeCharacter) {
    const std::string plain(62, 'a');
    const std::u32string wide(62, U'a');
    const std::pair<std::string, std::u32string> cases[] = {
        {plain + "bc", wide + U"b"},
        {plain + "\xF0\x9F\x8C\x8D", wide},
        {"a\xC3(\x80\xF5", U"a\uFFFD(\uFFFD\uFFFD"},
        {"a\xE2\x82", U"a\uFFFD"},
    };
    for (const auto& [name, stored] : cases) {
        EXPECT_EQ(Text(ReadCities(name + "\tX\t1\t1").at(0).cityName), stored) << name;
    }
}

TEST(CityFile, EveryCityOfTheSampleHasAPlaceAndAKnownZone) {
    std::ifstream file(HORIVO_ASSETS "/cities.tsv", std::ios::binary);
    const auto cities = ReadCities(std::string(std::istreambuf_iterator<char>(file), {}));
    EXPECT_EQ(cities.size(), 417U);
    for (const auto& city : cities) EXPECT_NE(city.timeZoneId, 0U) << &city - cities.data();
}

}  // namespace
