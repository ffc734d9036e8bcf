#include "photos/photo_set.h"

#include <gmock/gmock.h>

#include "photos/photo_files.h"
#include "photos/photo_link.h"
#include "support/memory_picture.h"
#include "support/photo_tree.h"
#include "support/table.h"

namespace {

using testing::ElementsAre;

class PhotoSetTest : public testing::Test {
protected:
    PhotoSetTest() {
        Tree().Reset();
        records_[0].distanceSq = 2.0;
        records_[1].distanceSq = 1.0;
    }
    CityTable Cities() { return {records_, 3}; }
    std::int32_t Load(WideView country, WideView city) {
        return LoadPhotoSet(set_, Cities(), country, city);
    }
    /// Photos 1 to `count` of Paris, 100 x 75.
    void FillParis(int count) {
        std::string index;
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(i);
            Tree().AddPhoto(WidenAscii("France\\Paris\\" + number + ".jpg"), 100, 75);
            index += number + "\t\t\t" + std::string(200, 'c') + "\t/" + number + ".htm\n";
        }
        Tree().AddIndex(u"France\\Paris\\index.tsv", index);
    }
    std::vector<std::int32_t> Shown() const {
        std::vector<std::int32_t> numbers;
        for (const PhotoRecord* record : set_.loaded) numbers.push_back(record->photoNumber);
        return numbers;
    }

    CityRecord records_[3] = {MakeCity(u"Lyon", u"France"), MakeCity(u"Paris", u"France"),
                              MakeCity(u"Oslo", u"Norway")};
    PhotoSet set_;
};

TEST_F(PhotoSetTest, LoadsTheNewestPhotosAndFreesThemWhenThePageTurns) {
    FillParis(20);
    EXPECT_EQ(Load(u"France", u"Paris"), 16);
    ASSERT_EQ(set_.photos.size(), 20U);
    EXPECT_EQ(Shown().front(), 20);
    EXPECT_EQ(Shown().back(), 5);
    const PhotoRecord& newest = *set_.photos.front();
    EXPECT_EQ(newest.cityIndex, 1);
    EXPECT_EQ(newest.caption, WideString(99, u'c')) << "cut";
    EXPECT_EQ(newest.link, kPhotoSite + WideString(u"/20.htm"));
    EXPECT_EQ(newest.thumbnail.GetBufferWidth(), 128);
    EXPECT_EQ(newest.thumbnail.GetPixels()[3], 255) << "opaque";
    EXPECT_FALSE(set_.photos.back()->HasThumbnail());
    set_.firstShown = 16;
    EXPECT_EQ(LoadThumbnails(set_, Cities()), 4);
    EXPECT_THAT(Shown(), ElementsAre(4, 3, 2, 1));
    EXPECT_FALSE(newest.HasThumbnail());
    EXPECT_EQ(newest.thumbnail.GetHeight(), 75) << "paging back counts heights";
    EXPECT_FALSE(set_.byNumber.contains(20)) << "it is not loaded any more";
    EXPECT_TRUE(set_.byNumber.contains(4));
    EXPECT_EQ(MemoryPicture::LiveCount(), 0);
}

TEST_F(PhotoSetTest, KeepsItsPositionOnlyForTheSamePlace) {
    FillParis(40);
    EXPECT_EQ(Load(u"France", u"Paris"), 16);
    for (const Row& row : Table("photo_visits")) {
        set_.firstShown = 30;
        Load(WidenAscii(row.Text(0)), WidenAscii(row.Text(1)));
        EXPECT_EQ(set_.firstShown, row.Int(2)) << row.why;
    }
    Load(u"France", u"Paris");
    for (const auto& [first, loaded] : {std::pair{30, 10}, {40, 0}, {2147483647, 0}, {-3, 16}}) {
        set_.firstShown = first;
        EXPECT_EQ(LoadThumbnails(set_, Cities()), loaded) << first;
    }
    Load(WideString(100, u'n'), u"");
    EXPECT_EQ(set_.country, WideString(63, u'n'));
    set_.firstShown = 5;
    Load(WideString(100, u'n'), u"");
    EXPECT_EQ(set_.firstShown, 5) << "a name that was cut is known again";
}

TEST_F(PhotoSetTest, PassesOverWhatCannotBeShown) {
    const std::int32_t sizes[][2] = {{128, 256}, {129, 20}, {20, 257}, {16, 16}, {1, 1}};
    for (char16_t number = u'1'; const auto& size : sizes) {
        Tree().AddPhoto(WideString(u"France\\Paris\\") + number++ + u".jpg", size[0], size[1]);
    }
    Files().pictures[ToWstring(Tree().root + u"France\\Paris\\4.jpg")].readable = false;
    Tree().AddIndex(u"France\\Paris\\index.tsv", "1\n2\n3\n4\n5\n6\n");
    EXPECT_EQ(Load(u"France", u"Paris"), 2);
    EXPECT_EQ(set_.photos.size(), 5U) << "all that lie on disk, also those that fail to load";
    EXPECT_THAT(Shown(), ElementsAre(5, 1));
    EXPECT_EQ(Load(u"France", u"Lyon"), 0) << "no index";
    EXPECT_TRUE(set_.photos.empty() && set_.byNumber.empty());
    Tree().AddPhoto(u"France\\Nantes\\1.jpg", 10, 10);
    Tree().AddIndex(u"France\\Nantes\\index.tsv", "1\n");
    EXPECT_EQ(Load(u"France", u"Nantes"), 0) << "a city that is not in the table";
    Tree().root.clear();
    EXPECT_EQ(Load(u"France", u"Paris"), -1) << "no folder for common data";
    EXPECT_EQ(set_.country, u"");
}

}  // namespace
