// What lies flat over the globe at its right: the photo panel over real folders, what it shows, how
// it pages, what it opens; the buttons, which sheets serve, how a button looks, when it acts.
#include <array>

#include "support/frame_compare_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/map_play_win.h"

namespace {

namespace fs = std::filesystem;

class OverlayTest : public MapPlay {
protected:
    OverlayTest() {
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Lyon", L"France", 38.0, -3.0);
        AddCity(L"Rome", L"Italy", 36.0, 6.0);
        consent = 1;
    }
};

TEST_F(OverlayTest, PhotosStackNewestFirstEachWithItsOwnPictureTheRightWayUp) {
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
    for (std::size_t i = 0; i < 4; ++i) {
        const SeenImage& image = seen.images[i];
        EXPECT_EQ(image.x + image.width / 2, kPanelX + 54) << "also wider than the panel";
        EXPECT_EQ(filled[i].numbers, drawn[drawn.size() - 4 + i].numbers) << "another's picture";
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

TEST_F(OverlayTest, PagingShowsAllPhotosAndComesBack) {
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

TEST_F(OverlayTest, PointedPhotoHasItsCaptionAndOpensItsPage) {
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
         {"its corners",
          "click photo1+0,0; opened /2.htm; click photo1+-1,0; opened none;"
          "click photo1+95,63; opened /2.htm; click photo1+96,63; opened none; stops flight"},
         {"from elsewhere", "press photo2; drag photo1; release photo1; opened none"},
         {"a trembling hand",
          "press photo1; drag photo1+51,34; release photo1+51,34; opened /2.htm"},
         {"a country's photos name their cities",
          "home; click 42:5; home; move photo1;"
          "says Paris, France | Tower | Click to enlarge; move photo2;"
          "says Lyon, France | Click to enlarge; says not Tower"},
         {"a photo without a page", "city Lyon; home; click photo1; opened none"}});
}

TEST_F(OverlayTest, CountryShowsItsCitiesFromThePlaceThatWasClickedInAnyTable) {
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
              {"far left of it", "use c; paint; use b; click 300,300; runs flight"}});
}

TEST_F(OverlayTest, HostileNamesAndBrokenFilesShowNothing) {
    for (const wchar_t* trap : {L".", L"France", L"Spain\\Nice"}) photos.PutCity(trap, 1);
    photos.PutCity(L"France\\Paris", 3);
    const auto folder = PhotoDisk::Root() / L"France\\Paris";
    fs::resize_file(folder / L"3.jpg", 0);
    SavePattern(folder / L"2.png", 96, 64, PixelFormat32bppARGB);
    fs::rename(folder / L"2.png", folder / L"2.jpg");
    std::string lines = "1\tParis\t\t\tgood\t/1\n";
    for (const char* city : {"..", ".", ". .", "Paris\\..", "..\\Spain\\Nice"})
        lines += std::string("1\t") + city + "\t\t\ttrap\t/3\n";
    photos.PutIndex(L"France", lines);
    // A host may take its names from anywhere too.
    AddCity(L"..", L"France", 43.0, 3.0);
    Open();
    // A photo that has to be converted is shown also where its quality cannot be chosen.
    const auto fails = [](auto...) { return 1; };
    const FakedImport<"GdipSetSmoothingMode", int(void*, int)> smooth(library.module, fails);
    const FakedImport<"GdipSetPixelOffsetMode", int(void*, int)> offset(library.module, fails);
    PlayRows("", {{"broken", "city Paris; home; photos 2 1"},
                  {"a country", "click 42:5; home; photos 1"},
                  {"a city of the host's", "city ../France; home; stack 0"}});
}

/// A window whose host's program stands in a folder of the test's own.
class ButtonsTest : public OverlayTest {
protected:
    const fs::path folder = fs::temp_directory_path() / L"horivo-\x0416-\x00E9";
    const fs::path sheet = folder / "buttons.png";
    std::wstring commandLine = L"\"" + (folder / L"host.exe").wstring() + L"\" -x";
    std::wstring program;  ///< where it looks second

    ButtonsTest() {
        fs::create_directories(folder);
        SavePattern(sheet, 128, 256, PixelFormat32bppARGB);
        consent = 0;
    }
    ~ButtonsTest() override { fs::remove_all(folder); }

private:
    FakedImport<"GetCommandLineW", decltype(GetCommandLineW)> getCommandLine_{
        library.module, [this] { return commandLine.data(); }};
    FakedImport<"GetModuleFileNameW", decltype(GetModuleFileNameW)> getModuleFileName_{
        library.module, [this](HMODULE, wchar_t* path, DWORD size) -> DWORD {
            return static_cast<DWORD>(program.copy(path, size));
        }};
};

TEST_F(ButtonsTest, OnlyAFittingSheetBesideTheProgramMakesButtons) {
    const fs::path before = fs::current_path();
    fs::current_path(folder);
    const std::wstring named = commandLine;
    const std::wstring beside = (folder / L"host.exe").wstring();
    using Case = std::tuple<int, int, int, std::wstring, std::wstring, bool>;
    SpiedGl().keepPixels = true;
    for (const auto& [width, height, format, line, path, found] : {
             Case{128, 256, PixelFormat24bppRGB, named, L"", false},
             {256, 256, PixelFormat32bppARGB, named, L"", false},
             {128, 255, PixelFormat32bppARGB, named, L"", false},
             {128, 256, PixelFormat32bppARGB, named, L"", true},
             {128, 256, PixelFormat32bppARGB, L"host.exe", beside, true},
             {128, 256, PixelFormat32bppARGB, L".\\host.exe", L"host.exe", false},
         }) {
        SavePattern(sheet, width, height, format);
        commandLine = line;
        program = path;
        Play(found ? "open; dark p50,20; press p50,20; runs repeat; release p50,20; close"
                   : "open; bare p50,20; press p50,20; stops repeat; release p50,20; close");
        const SpiedUpload& upload = SpiedGl().uploads.back();
        EXPECT_EQ(found, ShowsPattern(upload, 0.0, 0.0, 1.0, 1.0) && upload.internalFormat == 4);
    }
    fs::current_path(before);
}

TEST_F(ButtonsTest, EachLightsUpAndActsOnceAndAgainWhileItIsHeld) {
    Open();
    // Its lower left pixel, the view after it acted once, and three times.
    const std::array<std::string, 3> buttons[] = {
        {"p38,6", "39 0", "37 0"},      {"p6,38", "40 1", "40 3"},
        {"p70,38", "40 359", "40 357"}, {"p6,70", "40 0 -12.1", "40 0 -11.9"},
        {"p38,70", "41 0", "43 0"},     {"p70,70", "40 0 -12.3", "40 0 -12.5"}};
    for (const auto& [place, once, thrice] : buttons) {
        points["b"] = At(place);
        Play("home; dark b; move b; lit b; unpainted; leave; repaint; dark b", place);
        Play("press b; lit b; runs repeat 30; view " + once, place);
        Play("tick repeat; drag 300,300; tick repeat; view " + thrice, place);
        Play("release 300,300; stops repeat; stops flight; tick repeat; view " + thrice, place);
    }
    Play("home; key up; press p50,50; view 41 0; release p69,69; view 40 0", "home, on release");
}

TEST_F(ButtonsTest, ARepeatBeginsAndGoesOnOnlyWithTheCapture) {
    Open();
    PlayRows("home", {{"a message box comes up",
                       "press p50,20; runs repeat; mark; lose capture;"
                       "tick repeat; stops repeat; at mark; move 400,300"},
                      {"the next click is a click again", "click 400,200; runs flight"},
                      {"the key comes first",
                       "when key stops repeat; press p50,20; when key; runs repeat;"
                       "release p50,20"},
                      {"somebody takes the capture",
                       "when key take capture; press p50,20; stops repeat; release p50,20"},
                      {"another window comes and goes",
                       "when key passing window; press p50,20; runs repeat; release p50,20"},
                      {"the window goes", "when key close; press p50,20; stops repeat"}});
}

TEST_F(ButtonsTest, AddPhotoShowsWhileTheHostAcceptsAndOpensItsPage) {
    const std::string said(400, 'w');
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, std::wstring(400, L'w').c_str());
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, nullptr);  // changes nothing
    Open();
    points["add"] = {kPanelX + 50, 2 * LineHeight() + 12};
    PlayRows("", {{"nobody asked the host yet", "bare add; click add; opened none"},
                  {"the host agrees", "home; answer 1; city Paris; home; dark add; says not " +
                                          said + "; move add; lit add; says " + said},
                  {"on release only", "press add; opened none; release add; opened /add_photo.htm"},
                  {"the host refuses",
                   "answer 0; city Paris; home; move add; bare add; says not " + said},
                  {"the window goes while a page opens",
                   "answer 1; city Paris; home; paint; move add; when opening close; click add;"
                   "opened /add_photo.htm; gone; no timers"}});
}

TEST_F(ButtonsTest, PagingButtonsShowWhereTheyLeadSomewhere) {
    photos.PutCity(L"France\\Paris", 17, 64, 32);
    photos.PutCity(L"France\\Lyon", 4, 64, 32);
    consent = 1;
    Open();
    const LONG y = 2 * LineHeight() + 50;
    points = {{"back", {kPanelX + 44, y}}, {"on", {kPanelX + 63, y}}};
    acts["break last"] = [] { fs::resize_file(PhotoDisk::Root() / L"France\\Paris\\1.jpg", 0); };
    PlayRows("", {{"all fit", "city Lyon; home; bare back; bare on"},
                  {"more than fit", "city Paris; home; bare back; dark on"},
                  {"forward to the last", "click on; dark back; bare on"},
                  {"back", "click back; dark back; dark on"},
                  {"what follows cannot be loaded",
                   "do break last; city Lyon; city Paris; home; bare back; dark on"},
                  {"a page of nothing is taken back", "click on; bare back; bare on"},
                  {"the host has new photos", "photos changed 0; bare back; dark on"},
                  {"another place and back",
                   "key next; bare on; city Lyon; city Paris; home; bare back; dark on"}});
}

}  // namespace
