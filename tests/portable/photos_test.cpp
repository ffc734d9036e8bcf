// From cities to the photos in the panel: names of folders, index files, order, pages, thumbnails,
// places in the panel, links.
#include "photos/panel_layout.h"
#include "photos/photo_files.h"
#include "photos/photo_index.h"
#include "photos/photo_link.h"
#include "photos/photo_panel.h"
#include "photos/place_name.h"
#include "support/gl_fake.h"
#include "support/memory_picture.h"

namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::FieldsAre;

constexpr WideView kRoot = u"C:\\Data\\";

/// Entries as number, city, caption, page.
auto Read(const std::string& bytes, PhotoIndexKind kind = PhotoIndexKind::City) {
    // An exact copy on the heap, so that the sanitizer sees a step over the end.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    PhotoIndexReader reader({exact.data(), exact.size()}, kind);
    std::vector<PhotoIndexEntry> entries;
    for (PhotoIndexEntry entry; reader.Next(entry);) entries.push_back(entry);
    return entries;
}

TEST(PhotoIndex, FindsTheColumnsOfBothKindsAndEndsTextsLinesAndFiles) {
    EXPECT_THAT(Read("12\tx\ty\tOld harbour\t/12.htm\tmore\n"),
                ElementsAre(FieldsAre(12, u"", u"Old harbour", u"/12.htm")));
    EXPECT_THAT(Read("12\tLyon\tx\ty\tport\t/12.htm\r\n", PhotoIndexKind::Country),
                ElementsAre(FieldsAre(12, u"Lyon", u"port", u"/12.htm")));
    EXPECT_THAT(Read("# 1\n;2\n\n\r\n5\ta\tb\tcaption\rjunk\tpath\n6\ta\tb\tlast\0junk\n4"s),
                ElementsAre(FieldsAre(5, u"", u"caption", u""), FieldsAre(6, u"", u"last", u""),
                            FieldsAre(4, u"", u"", u"")));
    EXPECT_EQ(Read("1\n" + std::string(5000, 'x') + "\x1A\n3\n").size(), 1U)
        << "Ctrl-Z ends the file, also in the part of a line that is thrown away";
    // UTF-8 or the system's code page, line by line; a mark is one only at the start of the file.
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_THAT(
        Read(mark + "1\t\t\tCaf\xC3\xA9\n2\t\t\tCaf\xE9\n" + mark + "3\t\t\tsecond mark\n"),
        ElementsAre(FieldsAre(1, u"", u"Caf\u00E9", u""), FieldsAre(2, u"", u"Caf\u00E9", u"")));
    // Numbers have up to ten digits and are not negative.
    const char* const fields[] = {"  42", "+42nd street", "123456789012", "9999999999", "-0"};
    const int numbers[] = {42, 42, 1234567890, 2147483647, 0};
    for (int i = 0; i < 5; ++i) EXPECT_EQ(Read(fields[i]).at(0).photoNumber, numbers[i]);
    for (const char* none : {"-1", "twelve", "          7"}) EXPECT_TRUE(Read(none).empty());
}

TEST(PhotoIndex, ThrowsAwayTheRestOfALongLineBetweenItsCharacters) {
    const std::string start = "1\ta\tb\t";
    const std::string fits(4095 - start.size(), 'c');
    // The 4096th byte begins what could pose as a line of its own.
    EXPECT_THAT(Read(start + fits + "99\tx\ty\tforged\t/evil\n2\n"),
                ElementsAre(FieldsAre(1, u"", WidenAscii(fits), u""), FieldsAre(2, u"", u"", u"")));
    for (std::string text = start; text.size() < start.size() + 3; text += 'x') {
        // Euro signs of three bytes; the cut falls on each of the three.
        std::string line = text;
        while (line.size() < 4200) line += "\xE2\x82\xAC";
        EXPECT_EQ(Read(line).at(0).caption.back(), u'\u20AC');
        EXPECT_EQ(Read(line).at(0).caption.size(), text.size() - 6 + (4095 - text.size()) / 3);
    }
}

TEST(PlaceName, FormsFoldersInsideTheTreeOnly) {
    EXPECT_EQ(CleanPlaceName(u"a*b/c:d;e?f\\g\tb\r\n\u001Fc\u007F \u00E3\u042F"),
              u"abcdefgbc \u00E3\u042F");
    EXPECT_EQ(CleanPlaceName(u"St. York: (NY)", Spaces::Underscore), u"St._York_(NY)");
    WideString path;
    ASSERT_TRUE(FormPhotoPath(kRoot, u"France", u"Aix/en", 12, path));
    EXPECT_EQ(path, u"C:\\Data\\France\\Aixen\\12.jpg");
    // Windows drops dots and blanks from the end of a name.
    const WideView cases[][3] = {{u"", u"France", u"Paris"},   {kRoot, u"", u"Paris"},
                                 {kRoot, u"..", u"Paris"},     {kRoot, u"..\\..", u""},
                                 {kRoot, u"France", u" . . "}, {kRoot, u"France", u"\\:/"}};
    for (const auto& [root, country, city] : cases) {
        path = u"left over";
        EXPECT_TRUE(!FormPhotoFolder(root, country, city, path) && path.empty());
    }
    // Of 260 characters, none: root, name and backslash; then "7.jpg".
    const WideString longest(259 - kRoot.size() - 1, u'x');
    EXPECT_TRUE(FormPhotoFolder(kRoot, longest, u"", path));
    EXPECT_FALSE(FormPhotoFolder(kRoot, longest + u"x", u"", path));
    EXPECT_TRUE(FormPhotoPath(kRoot, longest.substr(5), u"", 7, path));
    EXPECT_FALSE(FormPhotoPath(kRoot, longest.substr(4), u"", 7, path));
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
    for (const auto& a : ordered) {
        for (const auto& b : ordered) EXPECT_EQ(IsShownBefore(a, b), &a < &b) << &a - ordered;
    }
}

TEST(PhotoPaging, GoesForwardToPhotosThatAreThereAndBackAsFarAsThereIsRoom) {
    // First, shown, photos, first of the next page: 16 further, where there is one.
    const int next[][4] = {{0, 5, 40, 16}, {32, 8, 40, 32}, {0, 16, 17, 16},
                           {0, 16, 16, 0}, {0, 0, 3, 2},    {2147483647, 16, 20, 2147483647}};
    for (const auto& [first, shown, count, then] : next)
        EXPECT_EQ(NextFirstShown({first, shown, count}), then) << first << " of " << count;
    EXPECT_FALSE(HasNextPhotos({16, 5, 40, 32})) << "none of the next page can be loaded";
    EXPECT_EQ(NextFirstShown({8, 5, 40, 32}), 24) << "some of it may be";
    EXPECT_EQ(PreviousFirstShown(20, std::vector(4, 80), 240), 17) << "an exact fit still fits";
    EXPECT_EQ(PreviousFirstShown(20, std::vector(4, 80), 239), 18);
    EXPECT_EQ(PreviousFirstShown(30, std::vector(19, 9), 5000), 14) << "a page at most";
    EXPECT_EQ(PreviousFirstShown(40, std::array{80, 0, 0, 80, 90}, 160), 36) << "not shown";
    EXPECT_TRUE(HasPreviousPhotos({4, 16, 20}) && !HasPreviousPhotos({0, 16, 20}));
}

TEST(PhotoStack, EndsWithTheFirstPhotoThatHasNoRoom) {
    // 600 pixels without titles of two lines of 13 and without the buttons: 407 for photos.
    PhotoStack stack({800, 600, 13});
    EXPECT_EQ(stack.Place(200), 207);
    EXPECT_EQ(PhotoStack(stack).Place(203), 0) << "down to the last pixel";
    EXPECT_TRUE(stack.Place(204) == 600 && stack.Place(10) == 600) << "above the window";
    EXPECT_TRUE(CaptionX(100, 97) == 0 && TitleX(700, 120) == 704) << "wide texts";
}

TEST(PhotoLink, NeverLeavesTheSiteAndIsCutAt511Characters) {
    const WideString site = kPhotoSite;
    EXPECT_EQ(PhotoPageLink(u"photo/12.htm"), site + u"/photo/12.htm");
    EXPECT_EQ(PhotoPageLink(u"/a\" --run=\"b"), site + u"/a%22 --run=%22b");
    EXPECT_EQ(PhotoPageLink(u""), u"") << "a photo without a page opens nothing";
    EXPECT_EQ(AddPhotoLink(), site + u"/add_photo.htm");
    EXPECT_EQ(PhotoPageLink(u"/" + WideString(4000, u'p')).size(), 511U);
}

/// Index files by path; the photos are those of PictureFiles().
std::map<WideString, std::string> indexFiles;

/// Two cities of one country with photos of 20 x 40 pixels: Near with 1 to 17, Far with 18.
class PhotoPanelTest : public GlTest {
protected:
    PhotoPanelTest() {
        for (CityRecord& city : cities_) {
            WideView(&city == cities_ ? u"Near" : u"Far").copy(city.cityName, 64);
            WideView(u"Land").copy(city.countryName, 64);
        }
        indexFiles.clear();
        for (int i = 1; i <= 18; ++i) AddPhoto(i == 18 ? "Far" : "Near", i);
        panel_.Resize({400, 600, 13});
    }
    static std::wstring PathOf(int number, const std::string& city = "Near") {
        const std::string path = "C:\\Data\\Land\\" + city + '\\' + std::to_string(number) + ".jpg";
        return {path.begin(), path.end()};
    }
    static void AddPhoto(const std::string& city, int number) {
        PictureFiles()[PathOf(number, city)] = NoiseImage(20, 40);
        indexFiles[u"C:\\Data\\Land\\index.tsv"] +=
            std::to_string(number) + '\t' + city + "\t\t\t" + std::string(200, 'c') + "\tp\n";
    }
    CityTable Cities() { return {cities_, 2}; }
    std::int32_t NumberAtTop() const { return panel_.HitTestPhoto(346, 514); }

    CityRecord cities_[2] = {CityAt(1.0), CityAt(2.0)};
    PhotoPanel panel_;
};

TEST_F(PhotoPanelTest, TurnsPagesOfPhotosFromNearAndNewToFarAndOld) {
    panel_.ShowPlace(Cities(), u"Land", u"");
    EXPECT_TRUE(panel_.GetPage().count == 18 && panel_.GetPage().shown == 9);
    EXPECT_EQ(panel_.FindPhotoAt(346, 514)->caption.size(), 99U);
    // The topmost pixel of the first photo, the one above it, and both sides.
    EXPECT_EQ(panel_.HitTestPhoto(336, 514), 17);
    for (const auto& [x, y] : {std::pair{346, 515}, {335, 514}, {356, 514}})
        EXPECT_EQ(panel_.HitTestPhoto(x, y), -1);
    EXPECT_TRUE(panel_.IsWheelOverPanel(293) && panel_.IsHoverOverPanel(292));
    EXPECT_FALSE(panel_.IsWheelOverPanel(292) || panel_.IsClickOnPanel(292));
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
    PictureFiles()[PathOf(17)] = NoiseImage(129, 8);
    PictureFiles()[PathOf(16)].readable = false;
    PictureFiles().erase(PathOf(15));
    AddPhoto("Nowhere", 19);
    panel_.ShowPlace(Cities(), u"Land", u"");
    EXPECT_EQ(NumberAtTop(), 14);
    panel_.UploadPhotos();
    panel_.UploadPhotos();
    EXPECT_EQ(Gl().uploads, 15) << "each once";
    panel_.DeleteTextures();
    EXPECT_EQ(Gl().textures.size(), 0U);
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
    return !(bytes = indexFiles[path]).empty();
}
bool ReadPhotoSize(const WideString& path, std::int32_t& width, std::int32_t& height) noexcept {
    const MemoryImage& image = PictureFiles()[ToWstring(path)];
    std::tie(width, height) = std::tie(image.width, image.height);
    return image.readable;
}
