// The photo panel over real folders: what it shows, how it pages, what it opens; also when the host
// hands over another table meanwhile.
#include "support/import_table_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/map_play_win.h"

namespace {

constexpr SeenColour kPanelColour = {0.0, 0.0, 0.0, 0.33};

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
    for (int i = 1; i <= 4; ++i) photos.PutPhoto(L"France\\Paris", i, 80 + i, 50 + 10 * i);
    Open();
    SpiedGl().calls.clear();
    SpiedGl().uploads.clear();
    SpiedGl().keepPixels = SpiedGl().keepCalls = true;
    ShowCity(cities[0]);
    const auto filled = SpiedCalls("glBindTexture");
    Play("home; titles Paris | France; photos 4 3 2 1");
    const SeenOverlay seen = Look();
    const auto drawn = SpiedCalls("glBindTexture");
    EXPECT_EQ(seen.BoxOf(kPanelColour), (SeenRect{kPanelX, 0, 108, kOpenHeight}));
    EXPECT_GT(seen.PlaceOf("Paris").second, seen.PlaceOf("France").second);
    EXPECT_GT(seen.PlaceOf("France").second, seen.images.at(0).y + seen.images[0].height);
    for (std::size_t i = 1; i < seen.images.size(); ++i)
        EXPECT_GT(seen.images[i - 1].y, seen.images[i].y + seen.images[i].height) << "a gap";
    ASSERT_TRUE(seen.images.size() == 4 && filled.size() == 4 && drawn.size() >= 4);
    EXPECT_TRUE(std::equal(filled.begin(), filled.end(), drawn.end() - 4)) << "another's picture";
    for (std::size_t place = 0; place < 4; ++place) {
        const auto file = std::to_wstring(4 - place) + L".jpg";
        const RgbPicture picture = DecodePicture(PhotoDisk::Root() / L"France\\Paris" / file);
        const SpiedUpload& upload = SpiedGl().uploads[place];
        EXPECT_EQ(seen.images[place].width, picture.width);
        EXPECT_EQ(seen.images[place].height, picture.height);
        for (const auto& [x, up] : {std::pair(0, 0), {70, 5}, {5, 50}}) {
            const auto at = [x = x](int width, int row, int bytes) {
                return static_cast<std::size_t>((row * width + x) * bytes);
            };
            const auto* rgb = &picture.pixels[at(picture.width, picture.height - 1 - up, 3)];
            const auto* rgba = &upload.pixels[at(upload.width, up, 4)];
            EXPECT_TRUE(std::equal(rgb, rgb + 3, rgba) && rgba[3] == 255) << x << ' ' << up;
        }
    }
    Play("city Rome; home; titles Rome | Italy; stack 0; answer 0; zoom; move p50,299; runs hover",
         "a strip for the titles: the empty panel covers no globe");
    EXPECT_LT(Look().BoxOf(kPanelColour).height, 150);
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
         {"back by as many as fit: the next is the last one there", "key prior"}});
    const std::string last = "photo" + std::to_string(Photos().size());
    Play("click " + last + "; opened /9.htm; key prior 10; click photo1; opened /40.htm");
    PlayRows("", {{"the same place keeps its page",
                   "key next; city Paris; home; click photo1; opened /24.htm"},
                  {"another place starts at its first",
                   "city Rome; city Paris; home; click photo1; opened /40.htm"},
                  {"a window made anew shows the same",
                   "close; create b 800 600; titles Paris | France; click photo1; opened /40.htm"},
                  {"without a context the panel changes, and its pictures follow",
                   "home; context lost; city Rome; home; key next; paint; context back"}});
    SpiedGl().uploads.clear();
    Play("titles Rome | Italy; photos 1");
    EXPECT_EQ(SpiedGl().uploads.size(), 1U) << "the one photo of the second page, once";
}

TEST_F(PhotoPanelTest, PagesTurnAfterACountrysPhotosFoundNoMemory) {
    for (const wchar_t* city : {L"France\\Paris", L"France\\Lyon"}) photos.PutCity(city, 1, 64, 64);
    photos.PutIndex(L"France", "1\tParis\t\t\tp\t/p/1\n1\tLyon\t\t\tl\t/l/1\n");
    Open(kOpenWidth, 280);  // room for one photo
    points["country"] = PixelOf(42.0, 5.0);
    FailingImports memory(library.module, kMemoryCalls);
    for (int number = 1; number == 1 || memory.Failed() != nullptr; ++number) {
        Play("click country; home; key next");
        memory.FailFrom(number, kAllThatFollow);
        Click(points["country"]);
        memory.Stop();
        Play("home; key prior");
    }
    Play("click country; home");
    EXPECT_EQ(Look().images.size(), 2U);
}

TEST_F(PhotoPanelTest, WheelOverTheListPages) {
    photos.PutCity(L"France\\Paris", 17, 64, 32);
    photos.PutCity(L"France\\Lyon", 16, 64, 32);
    Open();
    Play(
        "city Paris; home; move p1,300; wheel -120; stack 1; wheel -60; stack 1; wheel 120;"
        "move photo2; home; view 40 0",
        "the globe stands");
    Play("move p0,300; wheel -120; view 40 0 -12.1; home", "the edge itself is the globe's");
    Play("city Lyon; home; move p50,300; wheel -120; view 40 0 -12.1", "so is a list of one page");
}

TEST_F(PhotoPanelTest, PointedPhotoHasItsCaptionAndOpensItsPage) {
    photos.PutCity(L"France\\Paris", 2);
    photos.PutCity(L"France\\Lyon", 1);
    photos.PutIndex(L"France", "2\tParis\t\t\tTower\t/2\n1\tLyon\t\t\t\t/1\n");
    photos.PutIndex(L"France\\Lyon", "1\t\t\tno page\n");
    Open();
    Play("city Paris; home; move photo1");
    const POINT pointer = At("photo1");
    const SeenPlace caption = Look().PlaceOf("photo 2");
    EXPECT_NEAR(caption.first + WidthOf("photo 2"), kPanelX, 8) << "it ends left of the panel";
    EXPECT_NEAR(caption.second, kOpenHeight - pointer.y, LineHeight()) << "level with the pointer";
    PlayRows(
        "",
        {{"beside the photo, yet right of the edge",
          "move photo1+-5,30; says photo 2 | Click to enlarge; says not photo 1 | Paris, France"},
         {"the panel's edge", "move photo1+-6,30; says not Click to enlarge"},
         {"the lowest row", "move photo1+44,0; says not Click to enlarge"},
         {"above it", "move photo1+44,1; says Click to enlarge"},
         {"above the photo", "move photo1+44,64; says not Click to enlarge"},
         {"the highest row", "move photo1+44,63; says Click to enlarge"},
         {"the pointer has left", "leave; says not Click to enlarge"},
         {"lower left", "click photo1+0,0; opened /2.htm"},
         {"left of it", "click photo1+-1,0; opened none"},
         {"upper right", "click photo1+95,63; opened /2.htm"},
         {"right of it", "click photo1+96,63; opened none"},
         {"above it", "click photo1+0,64; opened none"},
         {"the gap", "click photo1+0,-1; opened none"},
         {"the next one's highest row", "click photo1+0,-5; opened /1.htm; stops flight"},
         {"a drag of the globe", "press 400,300; drag photo1; release photo1; opened none"},
         {"from another photo", "press photo2; drag photo1; release photo1; opened none"},
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
    const auto change = [&] {
        std::reverse(cities.begin(), cities.end());
        cities.insert(cities.begin(), CityRecord{});
    };
    acts["another table"] = [&] {
        change();
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
               "photos 23 21 12 11"}});
    PlayRows("home",
             {{"each window's photos are where it shows them",
               "create c 300 260; paint; use b; click photo1; opened /23"},
              {"far left of the panel", "use c; paint; use b; click 300,300; runs flight"}});
}

TEST_F(PhotoPanelTest, NoTableIsAnEmptyOneWhateverItsCount) {
    Open();
    const std::pair<CityRecord*, std::int32_t> tables[] = {{nullptr, 5}, {cities.data(), -3}};
    for (const auto& table : tables) {
        acts["take away"] = [&] { library.InitMap(table.first, table.second); };
        Play(
            "cities; home; zoom; cursor Lyon; move Lyon; runs hover; do take away; tick hover;"
            "asked none; cities; when asked do take away; click Lyon; asked 1; says not Lyon",
            "the city is gone");
    }
}

TEST_F(PhotoPanelTest, HostileNamesShowNothingFromOutsideTheirFolder) {
    // Pictures where the tricks lead.
    for (const wchar_t* trap : {L".", L"France", L"Spain\\Nice"}) photos.PutCity(trap, 1);
    photos.PutCity(L"France\\Paris", 1);
    std::string lines = "1\tParis\t\t\tgood\t/1\n";
    for (const char* city : {"..", ".", ". .", "Paris\\..", "..\\Spain\\Nice"})
        lines += std::string("1\t") + city + "\t\t\ttrap\t/3\n";
    photos.PutIndex(L"France", lines);
    // A host may take its names from anywhere too.
    AddCity(L"..", L"France", 43.0, 3.0);
    AddCity(L"..", L".. ", 45.0, 3.0);
    AddCity(L"..\\Spain\\Nice", L"France", 46.0, 3.0);
    Open();
    using Create = FakedImport<"CreateFileW", decltype(CreateFileW)>;
    const Create files(library.module, [](const wchar_t* path, DWORD access, auto... rest) {
        EXPECT_EQ(std::wstring(path).find(L"\\..\\"), std::wstring::npos);
        EXPECT_EQ(access & (GENERIC_WRITE | DELETE), 0U) << "the tree is only read";
        return Create::Real(path, access, rest...);
    });
    for (std::size_t tricky = 3; tricky < cities.size(); ++tricky) {
        ShowCity(cities[tricky]);
        Play("home; stack 0", std::to_string(tricky));
    }
    Play("click 42:5; home; photos 1");
}

TEST_F(PhotoPanelTest, BrokenFilesAreLeftOut) {
    photos.PutCity(L"France\\Paris", 6);
    photos.PutPhoto(L"France\\Paris", 2, 129, 64);
    photos.PutPhoto(L"France\\Paris", 3, 64, 257);
    photos.PutPhoto(L"France\\Paris", 4, 128, 200);
    photos.PutCity(L"Italy\\Rome", 3);
    photos.PutPhoto(L"Italy\\Rome", 1, 200, 64);
    const auto folder = PhotoDisk::Root() / L"France\\Paris";
    std::filesystem::resize_file(folder / L"5.jpg", 0);
    std::filesystem::remove(folder / L"6.jpg");
    std::filesystem::create_directory(folder / L"6.jpg");
    photos.PutCity(L"France\\Lyon", 2);
    std::string lines = "# no photo\nno number\n";
    for (int i = 1; i < 20000; ++i) lines += "7\tis\tnot\tthere\n";
    photos.PutIndex(L"France\\Lyon", lines + "2\t\t\t\t/2\n1\t\t\t\t/1\n");
    Open();
    PlayRows("", {{"some", "city Paris; home; photos 4 1"},
                  {"a page of them is not shown", "city Rome; home; stack 2; key next; stack 2"},
                  {"one line too many", "city Lyon; home; photos 2"}});
}

}  // namespace
