#include "photos/photo_paging.h"

#include <gtest/gtest.h>

#include <sstream>

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

}  // namespace
