#include "photos/city_lookup.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/photo_tree.h"
#include "support/table.h"

namespace {

TEST(CityLookup, FindsTheFirstOfItsNameAndCountry) {
    CityRecord records[] = {MakeCity(u"London", u"Canada"), MakeCity(u"London", u"United Kingdom"),
                            MakeCity(u"Singapore", u""), MakeCity(u"", u"Nowhere")};
    const CityTable cities{records, 4};
    for (const Row& row : Table("city_lookup")) {
        EXPECT_EQ(FindCity(cities, WidenAscii(row.Text(0)), WidenAscii(row.Text(1))), row.Int(2))
            << row.why;
    }
    EXPECT_EQ(FindCity(CityTable{}, u"", u"London"), -1) << "no table";
    EXPECT_EQ(FindCity(CityTable{records, -5}, u"", u"London"), -1);
    EXPECT_EQ(FindCityByDisplayName(cities, u"london, united kingdom"), 1);
    EXPECT_EQ(FindCityByDisplayName(cities, u"Singapore"), 2);
    EXPECT_EQ(FindCityByDisplayName(cities, u"Singapore, "), -1);
    EXPECT_EQ(FindCityByDisplayName(cities, u"London"), -1);
}

}  // namespace
