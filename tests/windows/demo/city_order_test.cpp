// What the sample host's list shows: search, order and local times.
#include "clock/city_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "clock/time_texts.h"
#include "horivo_host.h"

namespace {

using testing::ElementsAre;

CityRecord MakeCity(const wchar_t* name, const wchar_t* country, std::uint32_t zone = 0) {
    CityRecord city{};
    lstrcpynW(city.cityName, name, 64);
    lstrcpynW(city.countryName, country, 64);
    city.timeZoneId = zone;
    return city;
}

TEST(CityOrderTest, SearchIgnoresCaseAndAccentsAndKnowsCountries) {
    const CityRecord city = MakeCity(L"Bogot\xE1", L"Colombia");
    for (const wchar_t* wanted : {L"", L"bogota", L"GOT", L"colomb"})
        EXPECT_TRUE(Matches(city, wanted)) << wanted;
    for (const wchar_t* wanted : {L"peru", L"bogotas"}) EXPECT_FALSE(Matches(city, wanted));
}

TEST(CityOrderTest, ColumnsSortAndCitiesWithoutATimeComeLast) {
    constexpr SYSTEMTIME kJuneNight = {2026, 6, 0, 21, 20, 15, 0, 0};  // UTC
    std::vector<CityRecord> cities = {MakeCity(L"Tokyo", L"Japan", 114), MakeCity(L"Atlantis", L""),
                                      MakeCity(L"New York", L"United States", 41),
                                      MakeCity(L"Kolkata", L"India", 54)};
    CityTimes times;
    times.Finish(cities);
    std::vector<CityRow> rows;
    for (std::int32_t i = 0; i < std::ssize(cities); ++i) {
        CityRow& row = rows.emplace_back(CityRow{i, false, {}});
        row.hasTime = times.At(cities[static_cast<std::size_t>(i)], kJuneNight, row.local);
    }
    const auto sorted = [&](CityColumn column, bool descending) {
        SortRows(rows, cities, column, descending);
        std::vector<std::wstring> names;
        for (const CityRow& row : rows) {
            names.emplace_back(cities[static_cast<std::size_t>(row.city)].cityName);
        }
        return names;
    };
    // At 20:15 UTC it is 5:15 on the 22nd in Tokyo, 16:15 in New York, 1:45 on the 22nd in Kolkata.
    EXPECT_THAT(sorted(CityColumn::Name, true),
                ElementsAre(L"Tokyo", L"New York", L"Kolkata", L"Atlantis"));
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

}  // namespace
