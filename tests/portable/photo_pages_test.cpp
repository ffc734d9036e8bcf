// From cities to the photos on a page: names of folders, order, paging, places in the panel, links.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <sstream>
#include <vector>

#include "photos/panel_layout.h"
#include "photos/photo_link.h"
#include "photos/photo_order.h"
#include "photos/photo_paging.h"
#include "photos/place_name.h"
#include "support/table.h"

namespace {

constexpr WideView kRoot = u"C:\\Data\\";

TEST(PlaceName, DropsWhatCouldLeadAwayAndKeepsSpaces) {
    EXPECT_EQ(CleanPlaceName(u"a*b/c:d;e?f\\g\tb\r\n\u001Fc\u007Fd"), u"abcdefgbcd");
    EXPECT_EQ(CleanPlaceName(u"S\u00E3o \u042F\u262F"), u"S\u00E3o \u042F\u262F")
        << "letters beyond ASCII stay, also those whose low byte is a mark";
    EXPECT_EQ(CleanPlaceName(u"St. John's (N. B.)"), u"St. John's (N. B.)");
    EXPECT_EQ(CleanPlaceName(u"New York: NY", Spaces::Underscore), u"New_York_NY");
}

TEST(PlaceName, FormsFoldersInsideTheTreeOnly) {
    WideString path;
    ASSERT_TRUE(FormPhotoFolder(kRoot, u"France", u"", path));
    EXPECT_EQ(path, u"C:\\Data\\France\\");
    ASSERT_TRUE(FormPhotoPath(kRoot, u"France", u"Aix/en", 12, path));
    EXPECT_EQ(path, u"C:\\Data\\France\\Aixen\\12.jpg");
    // Windows drops dots and blanks from the end of a name.
    const WideView cases[][3] = {
        {u"", u"France", u"Paris"}, {kRoot, u"", u"Paris"},       {kRoot, u"..", u"Paris"},
        {kRoot, u"..\\..", u""},    {kRoot, u"France", u" . . "}, {kRoot, u"France", u"\\:/"},
    };
    for (const auto& [root, country, city] : cases) {
        path = u"left over";
        EXPECT_FALSE(FormPhotoFolder(root, country, city, path)) << &country - &cases[0][1];
        EXPECT_TRUE(path.empty());
    }
    // Of 260 characters, none: root, name and backslash; then "7.jpg".
    const std::size_t longest = 259 - kRoot.size() - 1;
    EXPECT_TRUE(FormPhotoFolder(kRoot, WideString(longest, u'x'), u"", path));
    EXPECT_FALSE(FormPhotoFolder(kRoot, WideString(longest + 1, u'x'), u"", path));
    EXPECT_TRUE(FormPhotoPath(kRoot, WideString(longest - 5, u'x'), u"", 7, path));
    EXPECT_FALSE(FormPhotoPath(kRoot, WideString(longest - 4, u'x'), u"", 7, path));
    EXPECT_TRUE(path.empty());
}

CityRecord CityAt(double distance, unsigned char nearest = 0) {
    CityRecord city = {};
    city.latitude = city.longitude = 10.0;
    city.distanceSq = distance;
    city.nearest = nearest;
    return city;
}

TEST(PhotoOrder, PutsNearCitiesAndNewPhotosFirst) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    CityRecord unplaced = CityAt(0.0);
    unplaced.latitude = 0.0;
    // Each key stands before all that follow it.
    const PhotoOrderKey ordered[] = {
        MakePhotoOrderKey(CityAt(0.5), 9, 3),    MakePhotoOrderKey(CityAt(0.5), 9, 2),
        MakePhotoOrderKey(CityAt(1.0, 1), 8, 1), MakePhotoOrderKey(CityAt(1.0), 2, 1),
        MakePhotoOrderKey(CityAt(1.0), 3, 7),    MakePhotoOrderKey(CityAt(kNan, 1), 7, 1),
        MakePhotoOrderKey(unplaced, 1, 5),       MakePhotoOrderKey(CityAt(kNan), 4, 2),
    };
    for (std::size_t i = 0; i < std::size(ordered); ++i) {
        for (std::size_t j = 0; j < std::size(ordered); ++j) {
            EXPECT_EQ(IsShownBefore(ordered[i], ordered[j]), i < j) << i << " and " << j;
        }
    }
}

TEST(PhotoPaging, GoesForwardToPhotosThatAreThereAndBackAsFarAsThereIsRoom) {
    for (const Row& row : Table("next_photos")) {
        const PhotoPage page{row.Int(0), row.Int(1), row.Int(2)};
        EXPECT_EQ(NextFirstShown(page), row.Int(3)) << row.why;
    }
    EXPECT_FALSE(HasNextPhotos({16, 5, 40, 32})) << "none of the next page can be loaded";
    EXPECT_EQ(NextFirstShown({8, 5, 40, 32}), 24) << "some of it may be";
    for (const Row& row : Table("previous_photos")) {
        std::istringstream words(row.Text(3));
        std::vector<std::int32_t> rooms;
        for (std::int32_t room = 0; words >> room;) rooms.push_back(room);
        EXPECT_EQ(PreviousFirstShown(row.Int(0), rooms, row.Int(1)), row.Int(2)) << row.why;
    }
    EXPECT_FALSE(HasPreviousPhotos({0, 16, 20}));
    EXPECT_TRUE(HasPreviousPhotos({4, 16, 20}));
    EXPECT_FALSE(HasPreviousPhotos({4, 0, 0}));
}

TEST(PhotoStack, EndsWithTheFirstPhotoThatHasNoRoom) {
    // 600 pixels without titles of two lines of 13 and without the buttons: 407 for photos.
    const std::pair<std::vector<std::int32_t>, std::vector<std::int32_t>> cases[] = {
        {{250, 200, 10}, {157, 600, 600}},  // a small one never slips in out of order
        {{200, 203}, {207, 0}},             // down to the last pixel
        {{200, 204}, {207, 600}},
    };
    for (const auto& [heights, places] : cases) {
        PhotoStack stack({800, 600, 13});
        std::vector<std::int32_t> placed;
        for (const std::int32_t height : heights) placed.push_back(stack.Place(height));
        EXPECT_EQ(placed, places);
        EXPECT_EQ(stack.GetShownCount(), std::count_if(places.begin(), places.end(),
                                                       [](std::int32_t y) { return y < 600; }));
    }
}

TEST(PhotoLink, NeverLeavesTheSiteAndIsCutAt511Characters) {
    for (const Row& row : Table("photo_link")) {
        EXPECT_EQ(PhotoPageLink(WidenAscii(row.Text(0))), kPhotoSite + WidenAscii(row.Text(1)))
            << row.why;
    }
    EXPECT_EQ(PhotoPageLink(u""), u"") << "a photo without a page opens nothing";
    EXPECT_EQ(AddPhotoLink(), kPhotoSite + WideString(u"/add_photo.htm"));
    EXPECT_EQ(PhotoPageLink(u"/" + WideString(4000, u'p')).size(), 511U);
}

}  // namespace
