// From cities to the photos in the panel: names of folders, index files, order, pages, thumbnails,
// places in the panel, links.
#include <gmock/gmock.h>

#include <limits>
#include <map>
#include <sstream>

#include "photos/panel_layout.h"
#include "photos/photo_files.h"
#include "photos/photo_index.h"
#include "photos/photo_link.h"
#include "photos/photo_panel.h"
#include "photos/place_name.h"
#include "support/gl_fake.h"
#include "support/memory_picture.h"
#include "support/table.h"

namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;

constexpr WideView kRoot = u"C:\\Data\\";

std::vector<PhotoIndexEntry> Read(const std::string& bytes,
                                  PhotoIndexKind kind = PhotoIndexKind::City) {
    // An exact copy on the heap, so that the sanitizer sees a step over the end.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    PhotoIndexReader reader({exact.data(), exact.size()}, kind);
    std::vector<PhotoIndexEntry> entries;
    for (PhotoIndexEntry entry; reader.Next(entry);) entries.push_back(entry);
    return entries;
}

std::vector<std::int32_t> Numbers(const std::string& bytes) {
    std::vector<std::int32_t> numbers;
    for (const PhotoIndexEntry& entry : Read(bytes)) numbers.push_back(entry.photoNumber);
    return numbers;
}

TEST(PhotoIndex, FindsTheColumnsOfBothKinds) {
    const std::pair<PhotoIndexEntry, WideView> cases[] = {
        {Read("12\tx\ty\tOld harbour\t/12.htm\tmore\n").at(0), u""},
        {Read("12\tLyon\tx\ty\tOld harbour\t/12.htm\t-\r\n", PhotoIndexKind::Country).at(0),
         u"Lyon"}};
    for (const auto& [entry, city] : cases) {
        EXPECT_TRUE(entry.photoNumber == 12 && entry.city == city);
        EXPECT_TRUE(entry.caption == u"Old harbour" && entry.pagePath == u"/12.htm");
    }
}

TEST(PhotoIndex, EndsLinesSkipsCommentsAndReadsNumbersOfHostileLength) {
    EXPECT_THAT(Numbers("# 1\n;2\n\n\r\n3\n4"), ElementsAre(3, 4)) << "the last needs no end";
    const auto entries = Read("5\ta\tb\tcaption\rjunk\tpath\n6\ta\tb\tlast\0junk"s);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].caption, u"caption") << "CR ends a line's text";
    EXPECT_EQ(entries[0].pagePath, u"");
    EXPECT_EQ(entries[1].caption, u"last") << "so does a NUL";
    EXPECT_THAT(Numbers("1\n" + std::string(5000, 'x') + "\x1A\n3\n"), ElementsAre(1))
        << "Ctrl-Z ends the file, also in the part of a line that is thrown away";
    for (const Row& row : Table("photo_numbers")) {
        auto numbers = Numbers(row.Text(0) + "\ta\tb\tc\td\n1\n");
        if (numbers.size() == 1) numbers.insert(numbers.begin(), -1);
        EXPECT_THAT(numbers, ElementsAre(row.Int(1), 1)) << row.why;
    }
}

TEST(PhotoIndex, ThrowsAwayTheRestOfALongLineBetweenItsCharacters) {
    const std::string start = "1\ta\tb\t";
    const std::string fits(4095 - start.size(), 'c');
    // The 4096th byte begins what could pose as a line of its own.
    const auto entries = Read(start + fits + "99\tx\ty\tforged\t/evil\n2\n");
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].caption, WidenAscii(fits));
    EXPECT_EQ(entries[0].pagePath, u"");
    EXPECT_EQ(entries[1].photoNumber, 2);
    for (std::size_t halves = 0; halves < 3; ++halves) {
        // Euro signs of three bytes; the cut falls on each of the three.
        std::string text = start + std::string(halves, 'x');
        while (text.size() < 4200) text += "\xE2\x82\xAC";
        const WideString caption = Read(text).at(0).caption;
        EXPECT_EQ(caption.back(), u'\u20AC') << halves;
        EXPECT_EQ(caption.size(), halves + (4095 - start.size() - halves) / 3) << halves;
    }
    // Not UTF-8 at all: every byte up to the limit stays.
    EXPECT_EQ(Read(start + std::string(5000, '\x84')).at(0).caption.size(), fits.size());
}

TEST(PhotoIndex, TellsUtf8FromAnsiLineByLine) {
    const std::string mark = "\xEF\xBB\xBF";
    const auto entries =
        Read(mark + "1\t\t\tCaf\xC3\xA9\n2\t\t\tCaf\xE9\n" + mark + "3\t\t\tsecond mark\n");
    ASSERT_EQ(entries.size(), 2U) << "a mark is one only at the start of the file";
    EXPECT_EQ(entries[0].caption, u"Caf\u00E9");
    EXPECT_EQ(entries[1].caption, u"Caf\u00E9") << "in the system's code page";
}

TEST(PlaceName, DropsWhatCouldLeadAwayAndKeepsSpaces) {
    const WideView cases[][2] = {{u"a*b/c:d;e?f\\g\tb\r\n\u001Fc\u007Fd", u"abcdefgbcd"},
                                 {u"S\u00E3o \u042F\u262F", u"S\u00E3o \u042F\u262F"},
                                 {u"St. John's (N. B.)", u"St. John's (N. B.)"}};
    for (const auto& [name, cleaned] : cases) EXPECT_EQ(CleanPlaceName(name), cleaned);
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
    EXPECT_FALSE(HasPreviousPhotos({0, 16, 20}) || HasPreviousPhotos({4, 0, 0}));
    EXPECT_TRUE(HasPreviousPhotos({4, 16, 20}));
}

TEST(PhotoStack, EndsWithTheFirstPhotoThatHasNoRoom) {
    // 600 pixels without titles of two lines of 13 and without the buttons: 407 for photos.
    PhotoStack full({800, 600, 13});
    EXPECT_EQ(full.Place(200), 207);
    EXPECT_EQ(full.Place(203), 0) << "down to the last pixel";
    PhotoStack stack({800, 600, 13});
    EXPECT_EQ(stack.Place(200), 207);
    EXPECT_EQ(stack.Place(204), 600) << "above the window";
    EXPECT_EQ(stack.Place(10), 600) << "a small one never slips in out of order";
    EXPECT_TRUE(full.GetShownCount() == 2 && stack.GetShownCount() == 1);
    EXPECT_EQ(CaptionX(100, 97), 0) << "OpenGL draws nothing of a line that begins left of 0";
    EXPECT_EQ(TitleX(700, 120), 704) << "a title wider than the panel";
}

TEST(PhotoLink, NeverLeavesTheSiteAndIsCutAt511Characters) {
    const WideView cases[][2] = {{u"photo/12.htm", u"/photo/12.htm"},
                                 {u"@other.example/x", u"/@other.example/x"},
                                 {u"https://other.example", u"/https://other.example"},
                                 {u"/a\" --run=\"b", u"/a%22 --run=%22b"}};
    for (const auto& [path, link] : cases) {
        EXPECT_EQ(PhotoPageLink(path), WideString(kPhotoSite).append(link));
    }
    EXPECT_EQ(PhotoPageLink(u""), u"") << "a photo without a page opens nothing";
    EXPECT_EQ(AddPhotoLink(), kPhotoSite + WideString(u"/add_photo.htm"));
    EXPECT_EQ(PhotoPageLink(u"/" + WideString(4000, u'p')).size(), 511U);
}

/// Index files by path; the photos are those of PictureFiles().
std::map<WideString, std::string> indexFiles;

/// Two cities of one country with photos of 20 x 40 pixels: Near with 1 to 17, Far with 18.
class PhotoPanelTest : public GlTest {
protected:
    PhotoPanelTest() {
        PictureFiles().clear();
        indexFiles.clear();
        for (const WideView name : {u"Near", u"Far"}) {
            name.copy(cities_.emplace_back(CityAt(name == u"Near" ? 1.0 : 2.0)).cityName, 64);
            WideView(u"Land").copy(cities_.back().countryName, 64);
        }
        for (int i = 1; i <= 17; ++i) AddPhoto("Near", i);
        AddPhoto("Far", 18);
        panel_.Resize({400, 600, 13});
    }
    void AddPhoto(const std::string& city, int number) {
        const std::string file = city + "\\" + std::to_string(number) + ".jpg";
        PictureFiles()[L"C:\\Data\\Land\\" + std::wstring(file.begin(), file.end())] =
            NoiseImage(20, 40);
        indexFiles[u"C:\\Data\\Land\\index.tsv"] +=
            std::to_string(number) + '\t' + city + "\t\t\t" + std::string(200, 'c') + "\tp\n";
    }
    CityTable Cities() { return {cities_.data(), 2}; }
    std::int32_t NumberAtTop() const { return panel_.HitTestPhoto(346, 514); }

    std::vector<CityRecord> cities_;
    PhotoPanel panel_;
};

TEST_F(PhotoPanelTest, TurnsPagesOfPhotosFromNearAndNewToFarAndOld) {
    panel_.ShowPlace(Cities(), u"Land", u"");
    EXPECT_EQ(panel_.GetPage().count, 18);
    EXPECT_EQ(panel_.GetPage().shown, 9) << "those of 407 pixels with their gaps";
    EXPECT_EQ(NumberAtTop(), 17);
    EXPECT_EQ(panel_.FindPhotoAt(346, 514)->caption.size(), 99U);
    // The topmost pixel of the first photo, the one above it, and both sides.
    EXPECT_EQ(panel_.HitTestPhoto(336, 514), 17);
    EXPECT_EQ(panel_.HitTestPhoto(346, 515), -1);
    EXPECT_EQ(panel_.HitTestPhoto(335, 514), -1);
    EXPECT_EQ(panel_.HitTestPhoto(356, 514), -1);
    EXPECT_TRUE(panel_.IsWheelOverPanel(293) && !panel_.IsWheelOverPanel(292));
    EXPECT_TRUE(panel_.IsHoverOverPanel(292) && !panel_.IsClickOnPanel(292));
    cities_[1].distanceSq = 0.5;  // the pointer moves: the order stays while pages are turned
    ASSERT_TRUE(panel_.PageForward());
    panel_.BuildPhotoPanel(Cities(), PhotoSource::Disk);
    EXPECT_EQ(NumberAtTop(), 1);
    EXPECT_EQ(panel_.HitTestPhoto(346, 470), 18) << "of the far city";
    ASSERT_TRUE(panel_.PageBack(Cities()));
    EXPECT_EQ(panel_.GetPage().firstShown, 7) << "nine of the same height fit";
    panel_.ShowPlace(Cities(), u"Land", u"Far");
    EXPECT_EQ(panel_.GetPage().firstShown, 0) << "another place begins at its first photo";
}

TEST_F(PhotoPanelTest, LeavesOutWhatIsNoPhotoTooLargeOrOfNoCity) {
    PictureFiles()[L"C:\\Data\\Land\\Near\\17.jpg"] = NoiseImage(129, 8);
    PictureFiles()[L"C:\\Data\\Land\\Near\\16.jpg"].readable = false;
    for (const wchar_t* gone : {L"15.jpg", L"14.jpg"}) {
        PictureFiles().erase(std::wstring(L"C:\\Data\\Land\\Near\\") + gone);
    }
    AddPhoto("Nowhere", 19);
    panel_.ShowPlace(Cities(), u"Land", u"");
    EXPECT_EQ(NumberAtTop(), 13);
    EXPECT_EQ(panel_.GetPage().count, 16);
    EXPECT_FALSE(panel_.IsWheelOverPanel(399)) << "a single page";
    panel_.UploadPhotos();
    panel_.UploadPhotos();
    EXPECT_EQ(Gl().uploads, 14) << "each once";
    panel_.DeleteTextures();
    EXPECT_TRUE(Gl().textures.empty());
    panel_.ShowPlace(Cities(), u"..", u"");
    EXPECT_FALSE(panel_.HasThumbnails()) << "no folder";
}

}  // namespace

// Fakes of the photo tree on disk.
WideString PhotoRoot() { return WideString(kRoot); }
bool PhotoFileExists(const WideString& path) noexcept {
    return PictureFiles().contains(ToWstring(path));
}
bool ReadPhotoIndex(const WideString& path, std::string& bytes) {
    bytes = indexFiles[path];
    return !bytes.empty();
}
bool ReadPhotoSize(const WideString& path, std::int32_t& width, std::int32_t& height) noexcept {
    const MemoryImage& image = PictureFiles()[ToWstring(path)];
    if (!image.readable) return false;
    width = image.width;
    height = image.height;
    return true;
}
