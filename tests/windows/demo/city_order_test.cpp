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

constexpr std::uint32_t kIndia = 54;
constexpr std::uint32_t kNewYork = 41;
constexpr std::uint32_t kTokyo = 114;
constexpr SYSTEMTIME kJuneNight = {2026, 6, 0, 21, 20, 15, 0, 0};  // UTC

TEST(CityOrderTest, SearchIgnoresCaseAndAccentsAndKnowsCountries) {
    const CityRecord city = MakeCity(L"Bogot\xE1", L"Colombia");
    constexpr struct {
        const wchar_t* wanted;
        bool found;
    } kCases[] = {{L"", true},       {L"bogota", true}, {L"GOT", true},
                  {L"colomb", true}, {L"peru", false},  {L"bogotas", false}};
    for (const auto& entry : kCases) {
        EXPECT_EQ(Matches(city, entry.wanted), entry.found)
            << testing::PrintToString(std::wstring(entry.wanted));
    }
}

class ListTest : public testing::Test {
protected:
    ListTest() {
        times_.Finish(cities_);
        for (std::size_t i = 0; i < cities_.size(); ++i) {
            CityRow row{static_cast<std::int32_t>(i), false, {}};
            row.hasTime = times_.At(cities_[i], kJuneNight, row.local);
            rows_.push_back(row);
        }
    }

    std::vector<std::wstring> Sorted(CityColumn column, bool descending) {
        SortRows(rows_, cities_, column, descending);
        std::vector<std::wstring> names;
        for (const CityRow& row : rows_) {
            names.emplace_back(cities_[static_cast<std::size_t>(row.city)].cityName);
        }
        return names;
    }

    std::vector<CityRecord> cities_ = {
        MakeCity(L"Tokyo", L"Japan", kTokyo), MakeCity(L"Atlantis", L""),
        MakeCity(L"New York", L"United States", kNewYork), MakeCity(L"Kolkata", L"India", kIndia)};
    CityTimes times_;
    std::vector<CityRow> rows_;
};

TEST_F(ListTest, ColumnsSortAndCitiesWithoutATimeComeLast) {
    // At 20:15 UTC it is 5:15 on the 22nd in Tokyo, 16:15 in New York, 1:45 on the 22nd in Kolkata.
    EXPECT_THAT(Sorted(CityColumn::Name, false),
                ElementsAre(L"Atlantis", L"Kolkata", L"New York", L"Tokyo"));
    EXPECT_THAT(Sorted(CityColumn::Time, false),
                ElementsAre(L"Kolkata", L"Tokyo", L"New York", L"Atlantis"));
    EXPECT_THAT(Sorted(CityColumn::Date, false),
                ElementsAre(L"New York", L"Kolkata", L"Tokyo", L"Atlantis"));
    EXPECT_THAT(Sorted(CityColumn::Offset, true),
                ElementsAre(L"Tokyo", L"Kolkata", L"New York", L"Atlantis"));
}

TEST_F(ListTest, OffsetsFollowTheClocks) {
    Sorted(CityColumn::Offset, false);
    std::vector<std::wstring> texts;
    for (const CityRow& row : rows_) {
        if (row.hasTime) texts.push_back(OffsetText(row.local.offsetMinutes));
    }
    EXPECT_THAT(texts, ElementsAre(L"UTC\x2212"
                                   L"4",
                                   L"UTC+5:30", L"UTC+9"));
}

TEST(TimeTextsTest, DifferencesSpeakInWholeHoursAndMinutes) {
    SetLanguage(L"en");
    constexpr struct {
        std::int32_t minutes;
        const wchar_t* text;
    } kCases[] = {{0, L"0 h"},
                  {60, L"+1 h"},
                  {-480,
                   L"\x2212"
                   L"8 h"},
                  {330, L"+5 h 30 m"},
                  {-15,
                   L"\x2212"
                   L"15 m"},
                  {825, L"+13 h 45 m"}};
    // Without a module of texts the services speak in their built-in unit words.
    for (const auto& entry : kCases) EXPECT_EQ(DifferenceText(entry.minutes), entry.text);
}

}  // namespace
