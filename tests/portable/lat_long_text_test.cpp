#include "globe/lat_long_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/table.h"

namespace {

/// The text as UTF-8.
std::string Text(double latitude, double longitude) {
    char buffer[kLatLongTextSize];
    FormatLatLong(buffer, latitude, longitude);
    std::string text;
    for (const char c : std::string(buffer)) text += c == '\xB0' ? "\u00B0" : std::string(1, c);
    return text;
}

TEST(FormatLatLong, FoldsBehindThePolesAndKeepsTheSideOfMinutes) {
    for (const Row& row : Table("lat_long_text")) {
        EXPECT_EQ(Text(row.Real(0), row.Real(1)), row.Text(2)) << row.why;
    }
}

TEST(FormatLatLong, TextHasOneLengthForEveryAngle) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const double scale = std::pow(10.0, static_cast<double>(random() % 40));
        const double latitude = (static_cast<double>(random() % 20001) - 10000.0) / 37.0 * scale;
        const double longitude = (static_cast<double>(random() % 20001) - 10000.0) / 41.0 * scale;
        ASSERT_EQ(Text(latitude, longitude).size(), 28U) << latitude << ", " << longitude;
    }
}

}  // namespace
