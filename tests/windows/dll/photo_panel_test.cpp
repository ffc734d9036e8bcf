// The photo panel over real folders: what it shows, how it pages, what it opens; also when the host
// hands over another table meanwhile.
#include <filesystem>

#include "image/gdiplus_win.h"
#include "support/frame_compare_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/map_play_win.h"

namespace {

class PhotoPanelTest : public MapPlay {
protected:
    PhotoPanelTest() {
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Lyon", L"France", 38.0, -3.0);
        AddCity(L"Rome", L"Italy", 36.0, 6.0);
        consent = 1;
    }
};

TEST_F(PhotoPanelTest, PhotosStackNewestFirstEachWithItsOwnPictureTheRightWayUp) {
    photos.PutCity(L"France\\Paris", 4);
    for (int i = 1; i <= 4; ++i) photos.PutPhoto(L"France\\Paris", i, 64 + 16 * i, 48 + 8 * i);
    Open();
    SpiedGl().calls.clear();
    SpiedGl().uploads.clear();
    SpiedGl().keepPixels = SpiedGl().keepCalls = true;
    ShowCity(cities[0]);
    const auto filled = SpiedCalls("glBindTexture");
    Play("home; titles Paris | France; photos 4 3 2 1");
    const SeenOverlay seen = Look();
    const auto drawn = SpiedCalls("glBindTexture");
    const SeenItem panel = seen.BoxOf(0.33);
    EXPECT_EQ(std::tuple(panel.x, panel.y, panel.width, panel.height),
              std::tuple(kPanelX, 0, 108, kOpenHeight));
    double ceiling = seen.PlaceOf("France").y;
    EXPECT_GT(seen.PlaceOf("Paris").y, ceiling);
    ASSERT_TRUE(seen.images.size() == 4 && filled.size() == 4 && drawn.size() >= 4);
    EXPECT_TRUE(std::equal(filled.begin(), filled.end(), drawn.end() - 4)) << "another's picture";
    for (std::size_t i = 0; i < 4; ++i) {
        const SeenImage& image = seen.images[i];
        EXPECT_EQ(image.x + image.width / 2, kPanelX + 54) << "also wider than the panel";
        EXPECT_EQ(image.width, 128 - 16 * static_cast<int>(i));
        EXPECT_EQ(image.height, 80 - 8 * static_cast<int>(i));
        EXPECT_LT(image.y + image.height, ceiling) << "a gap";
        ceiling = image.y;
        const SpiedUpload& upload = SpiedGl().uploads[i];
        EXPECT_TRUE(ShowsPattern(upload, 0.0, 0.0, upload.width / image.width,
                                 upload.height / image.height))
            << i;
    }
    Play("city Rome; home; titles Rome | Italy; stack 0; answer 0; zoom; move p50,299; runs hover",
         "a strip for the titles: the empty panel covers no globe");
    EXPECT_LT(Look().BoxOf(0.33).height, 150);
}

TEST_F(PhotoPanelTest, PagingShowsAllPhotosAndComesBack) {
    photos.PutCity(L"France\\Paris", 40, 64, 32);
    photos.PutCity(L"Italy\\Rome", 17, 64, 32);
    Open();
    PlayRows(
        "",
        {{"nothing before the first", "city Paris; home; key prior; click photo1; opened /40.htm"},
         {"a page passes the 16 that are loaded", "key next; click photo1; opened /24.htm"},
         {"the rest", "key next; photos 8 7 6 5 4 3 2 1; key next; photos 8 7 6 5 4 3 2 1"},
         {"back", "key prior 10; click photo1; opened /40.htm"},
         {"the same place keeps its page",
          "key next; city Paris; home; click photo1; opened /24.htm"},
         {"another place starts at its first",
          "city Rome; city Paris; home; click photo1; opened /40.htm"},
         {"the wheel over the list",
          "home; move p1,300; wheel -120; click photo1; opened /24.htm; wheel 120; home;"
          "view 40 0; move p0,300; wheel -120; view 40 0 -12.1; home"},
         {"a window made anew shows the same",
          "key prior 10; close; create b 800 600; titles Paris | France; click photo1; opened "
          "/40.htm"},
         {"without a context the panel changes, and its pictures follow, each once",
          "home; context lost; city Rome; home; key next; paint; context back"}});
    SpiedGl().uploads.clear();
    Play("titles Rome | Italy; photos 1");
    EXPECT_EQ(SpiedGl().uploads.size(), 1U);
}

TEST_F(PhotoPanelTest, PointedPhotoHasItsCaptionAndOpensItsPage) {
    photos.PutCity(L"France\\Paris", 2);
    photos.PutCity(L"France\\Lyon", 1);
    photos.PutIndex(L"France", "2\tParis\t\t\tTower\t/2\n1\tLyon\t\t\t\t/1\n");
    photos.PutIndex(L"France\\Lyon", "1\t\t\tno page\n");
    Play("open; city Paris; home; move photo1");
    const SeenItem caption = Look().PlaceOf("photo 2");
    EXPECT_NEAR(caption.x + WidthOf("photo 2"), kPanelX, 8) << "it ends left of the panel";
    EXPECT_NEAR(caption.y, kOpenHeight - At("photo1").y, LineHeight()) << "level with the pointer";
    PlayRows(
        "",
        {{"beside the photo, yet right of the edge",
          "move photo1+-5,30; says photo 2 | Click to enlarge; says not photo 1 | Paris, France"},
         {"the lowest row, the one above it, and the pointer leaves",
          "move photo1+44,0; says not Click to enlarge; move photo1+44,1; says Click to enlarge;"
          "leave; says not Click to enlarge"},
         {"lower left", "click photo1+0,0; opened /2.htm; click photo1+-1,0; opened none"},
         {"upper right", "click photo1+95,63; opened /2.htm; click photo1+96,63; opened none"},
         {"the next one's highest row", "click photo1+0,-5; opened /1.htm; stops flight"},
         {"from elsewhere", "press photo2; drag photo1; release photo1; opened none"},
         {"a trembling hand",
          "home; press photo1; drag photo1+51,34; release photo1+51,34; opened /2.htm"},
         {"a country's photos name their cities",
          "home; click 42:5; home; move photo1;"
          "says Paris, France | Tower | Click to enlarge; move photo2;"
          "says Lyon, France | Click to enlarge; says not Tower"},
         {"a photo without a page", "city Lyon; home; click photo1; opened none"}});
}

TEST_F(PhotoPanelTest, CountryShowsItsCitiesFromThePlaceThatWasClickedInAnyTable) {
    photos.PutCity(L"France\\Paris", 3);
    photos.PutCity(L"France\\Lyon", 2);
    photos.PutIndex(L"France",
                    "1\tLyon\t\t\tl\t/11\n2\tLYON\t\t\tl\t/12\n1\tParis\t\t\tp\t/21\n"
                    "3\tParis\t\t\tp\t/23\n9\tParis\t\t\tmissing\t/29\n1\tRome\t\t\tabroad\t/1\n");
    Open();
    acts["another table"] = [&] {
        std::reverse(cities.begin(), cities.end());
        cities.insert(cities.begin(), CityRecord{});
        Init();
    };
    PlayRows("home",
             {{"beside Lyon", "click 38:-5; home; photos 12 11 23 21"},
              {"the pointer's way changes no order",
               "move Paris; photos changed -1; photos 12 11 23 21"},
              {"beside Paris", "click 42:5; home; photos 23 21 12 11"},
              {"another order of cities",
               "do another table; move photo1; says Paris, France; photos 23 21 12 11"},
              {"while no window lives",
               "close; free; do another table; create b 800 600; move photo1; says Paris, France;"
               "photos 23 21 12 11"},
              {"each window's photos are where it shows them",
               "create c 300 260; paint; use b; click photo1; opened /23"},
              {"far left of the panel", "use c; paint; use b; click 300,300; runs flight"}});
}

TEST_F(PhotoPanelTest, NoTableIsAnEmptyOneWhateverItsCount) {
    Open();
    for (const auto& [records, count] : {std::pair<CityRecord*, int>{}, {cities.data(), -3}}) {
        acts["take away"] = [&] { library.InitMap(records, count != 0 ? count : 5); };
        Play(
            "cities; home; zoom; cursor Lyon; move Lyon; runs hover; do take away; tick hover;"
            "asked none; cities; when asked do take away; click Lyon; asked 1; says not Lyon",
            "the city is gone");
    }
}

TEST_F(PhotoPanelTest, HostileNamesAndBrokenFilesShowNothing) {
    // Pictures where the tricks lead.
    for (const wchar_t* trap : {L".", L"France", L"Spain\\Nice"}) photos.PutCity(trap, 1);
    photos.PutCity(L"France\\Paris", 6);
    photos.PutPhoto(L"France\\Paris", 2, 129, 64);
    photos.PutPhoto(L"France\\Paris", 3, 64, 257);
    const auto folder = PhotoDisk::Root() / L"France\\Paris";
    SaveMarkedPng(folder / L"4.jpg", 96, 64, PixelFormat32bppARGB);
    std::filesystem::resize_file(folder / L"5.jpg", 0);
    std::filesystem::remove(folder / L"6.jpg");
    std::filesystem::create_directory(folder / L"6.jpg");
    std::string lines = "1\tParis\t\t\tgood\t/1\n";
    for (const char* city : {"..", ".", ". .", "Paris\\..", "..\\Spain\\Nice"})
        lines += std::string("1\t") + city + "\t\t\ttrap\t/3\n";
    photos.PutIndex(L"France", lines);
    photos.PutCity(L"France\\Lyon", 2);
    lines = "# no photo\nno number\n";
    for (int i = 1; i < 20000; ++i) lines += "7\tis\tnot\tthere\n";
    photos.PutIndex(L"France\\Lyon", lines + "2\t\t\t\t/2\n1\t\t\t\t/1\n");
    // A host may take its names from anywhere too.
    AddCity(L"..", L"France", 43.0, 3.0);
    AddCity(L"..", L".. ", 45.0, 3.0);
    Open();
    using Create = FakedImport<"CreateFileW", decltype(CreateFileW)>;
    const Create files(library.module, [](const wchar_t* path, DWORD access, auto... rest) {
        EXPECT_EQ(std::wstring(path).find(L"\\..\\"), std::wstring::npos);
        EXPECT_EQ(access & (GENERIC_WRITE | DELETE), 0U) << "the tree is only read";
        return Create::Real(path, access, rest...);
    });
    // A photo that has to be converted is shown whatever becomes of the hints.
    const FakedImport<"GdipSetSmoothingMode", int(void*, int)> smoothing(library.module,
                                                                         [](auto...) { return 1; });
    const FakedImport<"GdipSetPixelOffsetMode", int(void*, int)> offset(library.module,
                                                                        [](auto...) { return 1; });
    PlayRows("", {{"left out", "city Paris; home; photos 4 1"},
                  {"one line too many", "city Lyon; home; photos 2"},
                  {"a country", "click 42:5; home; photos 1"},
                  {"a city", "city ../France; home; stack 0"},
                  {"a country of that name", "city ../.. ; home; stack 0"}});
}

}  // namespace
