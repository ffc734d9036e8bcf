#include "photos/photo_paging.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "photos/panel_layout.h"
#include "support/table.h"

namespace {

TEST(PhotoPaging, GoesForwardOnlyToPhotosThatAreThere) {
    for (const Row& row : Table("next_photos")) {
        const int first = row.Int(0);
        EXPECT_EQ(NextFirstShown(first, row.Int(1), row.Int(2)), row.Int(3)) << row.why;
        EXPECT_EQ(HasNextPhotos(first, row.Int(1), row.Int(2)), row.Int(3) != first) << row.why;
    }
    EXPECT_FALSE(HasPreviousPhotos(0, 20));
    EXPECT_TRUE(HasPreviousPhotos(4, 20));
    EXPECT_FALSE(HasPreviousPhotos(4, 0));
}

TEST(PhotoPaging, GoesBackAsFarAsThereIsRoom) {
    for (const Row& row : Table("previous_photos")) {
        std::istringstream words(row.Text(3));
        std::vector<std::int32_t> rooms;
        for (std::int32_t room = 0; words >> room;) rooms.push_back(room);
        EXPECT_EQ(PreviousFirstShown(row.Int(0), rooms, row.Int(1)), row.Int(2)) << row.why;
    }
}

TEST(PhotoStack, EndsWithTheFirstPhotoThatHasNoRoom) {
    // 600 pixels without titles of two lines of 13 and without the buttons: 407 for photos.
    const std::pair<std::vector<std::int32_t>, std::vector<std::int32_t>> cases[] = {
        {{100, 200, 80, 60}, {307, 103, 19, 600}},
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

}  // namespace
