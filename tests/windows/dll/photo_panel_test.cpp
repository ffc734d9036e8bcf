// The photo panel over real folders: what it shows, how it pages, what it opens.
#include <gmock/gmock.h>

#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"
#include "support/import_table_win.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr SeenColour kPanelColour = {0.0, 0.0, 0.0, 0.33};

class PhotoPanelTest : public DrivenMapTest {
protected:
    PhotoPanelTest() {
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Lyon", L"France", 38.0, -3.0);
        AddCity(L"Rome", L"Italy", 36.0, 6.0);
        consent = 1;
    }
    void Show(std::size_t city) {
        ShowCity(cities[city]);
        Home();
    }
    void ShowCountry(double latitude = 42.0, double longitude = 5.0) {
        Click(PixelOf(latitude, longitude));
        Home();
    }
    /// The photos of the picture, from the top.
    std::vector<SeenImage> Photos() {
        std::vector<SeenImage> images = Look().images;
        // A photo that does not fit stands above the window.
        std::erase_if(images, [](const SeenImage& image) { return image.y >= kOpenHeight; });
        return images;
    }
    /// The number in the page that a click opens, -1 when it opens none.
    int NumberAt(POINT at) {
        opened.clear();
        Click(at);
        return opened.size() == 1 ? std::stoi(opened[0].substr(opened[0].rfind(L'/') + 1)) : -1;
    }
    std::vector<int> Numbers() {
        std::vector<int> numbers;
        for (const SeenImage& photo : Photos()) numbers.push_back(NumberAt(MiddleOf(photo)));
        return numbers;
    }
    static POINT Client(double x, double y) {
        return {static_cast<LONG>(x), kOpenHeight - 1 - static_cast<LONG>(y)};
    }
    static POINT MiddleOf(const SeenImage& photo) {
        return Client(photo.x + photo.width / 2, photo.y + photo.height / 2);
    }
    /// The numbers from `first` down to `last`.
    static std::vector<int> Down(int first, int last) {
        std::vector<int> numbers;
        for (int i = first; i >= last; --i) numbers.push_back(i);
        return numbers;
    }
};

TEST_F(PhotoPanelTest, PhotosStackBelowTheTitlesNewestFirst) {
    photos.PutCity(L"France\\Paris", 4);
    for (int i = 1; i <= 4; ++i) photos.PutPhoto(L"France\\Paris", i, 80 + i, 50 + 10 * i);
    Open();
    Show(0);
    const int line = LineHeight();
    SeenOverlay seen = Look();
    EXPECT_EQ(seen.BoxOf(kPanelColour), (SeenRect{kPanelX, 0, 108, kOpenHeight}));
    EXPECT_THAT(seen.Words(kPanelX), ElementsAre("Paris", "France"));
    double y = kOpenHeight;
    for (const char* title : {"Paris", "France"}) {
        const double x = kPanelX + (108 - WidthOf(title)) / 2;
        EXPECT_EQ(seen.PlaceOf(title), SeenPlace(x, y -= line)) << title;
    }
    const std::vector<SeenImage> stack = Photos();
    ASSERT_EQ(stack.size(), 4U);
    y -= 59;
    for (int number = 4; number >= 1; --number, y -= 4) {
        const SeenRect& photo = stack[static_cast<std::size_t>(4 - number)];
        const double x = kPanelX + (108 - (80 + number)) / 2;
        const double height = 50.0 + 10 * number;
        y -= height;
        EXPECT_EQ(photo, (SeenRect{x, y, 80.0 + number, height})) << number;
    }

    Show(2);  // has no photos: a strip for the titles
    seen = Look();
    const double strip = 2 * line + 59;
    EXPECT_EQ(seen.BoxOf(kPanelColour), (SeenRect{kPanelX, kOpenHeight - strip, 108, strip}));
    EXPECT_THAT(seen.Words(kPanelX), ElementsAre("Rome", "Italy"));
    consent = 0;
    ZoomIn();
    Hover({kPanelX + 50, 300});
    EXPECT_TRUE(Runs(kHoverTimer)) << "the empty panel covers no globe";
}

TEST_F(PhotoPanelTest, PagingShowsAllPhotosAndComesBack) {
    photos.PutCity(L"France\\Paris", 40, 64, 32);
    Open();
    Show(0);
    const int room = kOpenHeight - (2 * LineHeight() + 59) - 108;
    const int fit = (room + 4) / 36;
    const int back = 8 + room / 36;
    const struct {
        const char* why;
        int key;
        int first, last;
    } steps[] = {
        {"nothing before the first", VK_PRIOR, 40, 41 - fit},
        {"a page forward passes the 16 that are loaded", VK_NEXT, 24, 25 - fit},
        {"the rest", VK_NEXT, 8, 1},
        {"all are shown", VK_NEXT, 8, 1},
        {"back by as many as fit, each with its gap", VK_PRIOR, back, back - fit + 1},
    };
    for (const auto& step : steps) {
        Key(window, step.key);
        EXPECT_EQ(Numbers(), Down(step.first, step.last)) << step.why;
    }
    for (int i = 0; i < 10; ++i) Key(window, VK_PRIOR);
    EXPECT_EQ(Numbers().front(), 40);
    Key(window, VK_NEXT);
    Show(0);
    EXPECT_EQ(Numbers().front(), 24) << "the same place keeps its page";
    Show(2);
    Show(0);
    EXPECT_EQ(Numbers().front(), 40) << "another place starts at its first";
    DestroyWindow(window);
    window = CreateMap(kOpenWidth, kOpenHeight);
    Paint(window);
    EXPECT_EQ(Numbers(), Down(40, 41 - fit)) << "a window made anew shows the same";
    EXPECT_THAT(Titles(), ElementsAre("Paris", "France"));
}

TEST_F(PhotoPanelTest, WithoutAContextThePanelChangesAndItsPicturesFollow) {
    photos.PutCity(L"France\\Paris", 40, 64, 32);
    photos.PutCity(L"Italy\\Rome", 17, 64, 32);
    Open();
    Show(0);
    Look();
    wglMakeCurrent(nullptr, nullptr);
    {
        const FakedImport<"wglMakeCurrent", decltype(wglMakeCurrent)> lost(
            library.module, [](HDC, HGLRC) { return FALSE; });
        Show(2);
        Key(window, VK_NEXT);
        Paint(window);
    }
    SpiedGl().uploads.clear();
    EXPECT_THAT(Titles(), ElementsAre("Rome", "Italy"));
    EXPECT_EQ(SpiedGl().uploads.size(), 1U) << "the one photo of the second page";
    EXPECT_EQ(Numbers(), Down(1, 1));
    EXPECT_EQ(SpiedGl().uploads.size(), 1U) << "once";
}

TEST_F(PhotoPanelTest, PagesTurnAfterACountrysPhotosFoundNoMemory) {
    for (const wchar_t* city : {L"France\\Paris", L"France\\Lyon"}) photos.PutCity(city, 1, 64, 64);
    photos.PutIndex(L"France", "1\tParis\t\t\tp\t/p/1\n1\tLyon\t\t\tl\t/l/1\n");
    Open(kOpenWidth, 280);  // room for one photo
    const POINT country = PixelOf(42.0, 5.0);
    FailingImports memory(library.module, kMemoryCalls);
    for (int number = 1; number == 1 || memory.Failed() != nullptr; ++number) {
        ShowCountry();
        Key(window, VK_NEXT);
        memory.FailFrom(number, kAllThatFollow);
        Click(country);
        memory.Stop();
        Home();
        Key(window, VK_PRIOR);
    }
    ShowCountry();
    EXPECT_EQ(Look().images.size(), 2U);
}

TEST_F(PhotoPanelTest, WheelOverTheListPages) {
    photos.PutCity(L"France\\Paris", 17, 64, 32);
    photos.PutCity(L"France\\Lyon", 16, 64, 32);
    Open();
    Show(0);
    Hover({kPanelX + 1, 300});
    const std::pair<int, bool> turns[] = {{-120, true}, {-60, true}, {120, false}};
    for (const auto& [delta, onLastPage] : turns) {
        Wheel(delta);
        EXPECT_EQ(Numbers() == Down(1, 1), onLastPage) << delta;
        Hover({kPanelX + 1, 300});
    }
    ExpectView({-12.2, 40.0, 0.0}, "the globe stands");
    Hover({kPanelX, 300});
    Wheel(-120);
    ExpectView({-12.1, 40.0, 0.0}, "the edge itself is the globe's");
    Show(1);
    Hover({kPanelX + 50, 300});
    Wheel(-120);
    ExpectView({-12.1, 40.0, 0.0}, "so is a list of one page");
}

TEST_F(PhotoPanelTest, PointedPhotoHasItsCaptionBesideThePanel) {
    photos.PutCity(L"France\\Paris", 2);
    photos.PutCity(L"France\\Lyon", 1);
    photos.PutIndex(L"France", "2\tParis\t\t\tTower\t/2\n1\tLyon\t\t\t\t/1\n");
    Open();
    Show(0);
    const int line = LineHeight();
    const std::vector<SeenImage> stack = Photos();
    ASSERT_EQ(stack.size(), 2U);
    const auto at = [&](const char* text, double y) {
        return SeenPlace(kPanelX - 4 - WidthOf(text), y);
    };
    const double bottom = stack[0].y;
    const double middle = bottom + 30;
    const char* const invitation = "Click to enlarge";
    Hover(Client(kPanelX + 1, middle));  // beside the photo, yet right of the edge
    SeenOverlay seen = Look();
    EXPECT_EQ(seen.PlaceOf("photo 2"), at("photo 2", middle));
    EXPECT_EQ(seen.PlaceOf(invitation), at(invitation, middle - line));
    EXPECT_FALSE(seen.Has("Paris, France")) << "the city stands above";
    EXPECT_FALSE(seen.Has("photo 1"));
    const struct {
        const char* why;
        double x, y;
        bool shown;
    } edges[] = {
        {"the panel's edge", kPanelX, middle, false},
        {"the lowest row", kPanelX + 50, bottom, false},
        {"above it", kPanelX + 50, bottom + 1, true},
        {"above the photo", kPanelX + 50, bottom + 64, false},
        {"the highest row", kPanelX + 50, bottom + 63, true},
    };
    for (const auto& e : edges) {
        Hover(Client(e.x, e.y));
        EXPECT_EQ(Look().Has(invitation), e.shown) << e.why;
    }
    SendMessageW(window, WM_MOUSELEAVE, 0, 0);
    EXPECT_FALSE(Look().Has(invitation)) << "the pointer has left";

    ShowCountry();
    Hover(Client(kPanelX + 50, middle));
    seen = Look();
    double y = middle + line / 2;
    for (const char* text : {"Paris, France", "Tower", invitation}) {
        EXPECT_EQ(seen.PlaceOf(text), at(text, y)) << text;
        y -= line;
    }
    const double lower = stack[1].y + 30;
    Hover(Client(kPanelX + 50, lower));
    seen = Look();
    EXPECT_EQ(seen.PlaceOf("Lyon, France"), at("Lyon, France", lower + line / 2));
    EXPECT_EQ(seen.PlaceOf(invitation), at(invitation, lower + line / 2 - line))
        << "an empty caption takes no line";
}

TEST_F(PhotoPanelTest, ClickOpensThePageOfThePhotoUnderIt) {
    photos.PutCity(L"France\\Paris", 2);
    photos.PutCity(L"France\\Lyon", 1);
    photos.PutIndex(L"France\\Lyon", "1\t\t\tno page\n");
    Open();
    Show(0);
    const std::vector<SeenImage> stack = Photos();
    ASSERT_EQ(stack.size(), 2U);
    const SeenImage& p = stack[0];
    const struct {
        const char* why;
        double x, y;
        int number;
    } cases[] = {
        {"lower left", p.x, p.y, 2},
        {"left of it", p.x - 1, p.y, -1},
        {"upper right", p.x + p.width - 1, p.y + p.height - 1, 2},
        {"right of it", p.x + p.width, p.y, -1},
        {"above it", p.x, p.y + p.height, -1},
        {"the gap", p.x, p.y - 1, -1},
        {"the next one's highest row", p.x, p.y - 5, 1},
    };
    for (const auto& c : cases) EXPECT_EQ(NumberAt(Client(c.x, c.y)), c.number) << c.why;
    EXPECT_FALSE(Runs(kFlightTimer)) << "the panel covers the globe";

    const POINT upper = MiddleOf(stack[0]);
    const POINT lower = MiddleOf(stack[1]);
    const struct {
        const char* why;
        POINT from, to;
        std::size_t pages;
    } drags[] = {
        {"a drag of the globe", {400, 300}, upper, 0},
        {"from another photo", lower, upper, 0},
        {"a trembling hand", upper, {upper.x + 3, upper.y + 2}, 1},
    };
    for (const auto& drag : drags) {
        opened.clear();
        Press(drag.from);
        Drag(drag.to);
        Release(drag.to);
        EXPECT_EQ(opened.size(), drag.pages) << drag.why;
    }
    Show(1);
    EXPECT_EQ(NumberAt(upper), -1) << "a photo without a page";
}

TEST_F(PhotoPanelTest, CountryShowsItsCitiesFromThePlaceThatWasClicked) {
    photos.PutCity(L"France\\Paris", 3);
    photos.PutCity(L"France\\Lyon", 2);
    photos.PutIndex(L"France",
                    "1\tLyon\t\t\tl\t/11\n2\tLYON\t\t\tl\t/12\n1\tParis\t\t\tp\t/21\n"
                    "3\tParis\t\t\tp\t/23\n9\tParis\t\t\tmissing\t/29\n1\tRome\t\t\tabroad\t/1\n");
    Open();
    ShowCountry(42.0, 5.0);
    EXPECT_THAT(Numbers(), ElementsAre(23, 21, 12, 11)) << "beside Paris";
    ShowCountry(38.0, -5.0);
    EXPECT_THAT(Numbers(), ElementsAre(12, 11, 23, 21)) << "beside Lyon";
    Hover(PixelOf(42.0, 3.0));
    SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, static_cast<WPARAM>(-1), 1);
    EXPECT_THAT(Numbers(), ElementsAre(12, 11, 23, 21)) << "the pointer's way changes no order";
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
    const Create files(library.module, [](const wchar_t* path, DWORD access, DWORD share,
                                          SECURITY_ATTRIBUTES* security, DWORD disposition,
                                          DWORD flags, HANDLE like) {
        EXPECT_EQ(std::wstring(path).find(L"\\..\\"), std::wstring::npos);
        EXPECT_EQ(access & (GENERIC_WRITE | DELETE), 0U) << "the tree is only read";
        return Create::Real(path, access, share, security, disposition, flags, like);
    });
    for (std::size_t tricky = 3; tricky < cities.size(); ++tricky) {
        Show(tricky);
        EXPECT_THAT(Photos(), IsEmpty()) << tricky;
    }
    ShowCountry();
    EXPECT_THAT(Numbers(), ElementsAre(1));
}

TEST_F(PhotoPanelTest, BrokenFilesAreLeftOut) {
    photos.PutCity(L"France\\Paris", 6);
    photos.PutPhoto(L"France\\Paris", 2, 129, 64);
    photos.PutPhoto(L"France\\Paris", 3, 64, 257);
    photos.PutPhoto(L"France\\Paris", 4, 128, 200);
    const auto folder = PhotoDisk::Root() / L"France\\Paris";
    std::filesystem::resize_file(folder / L"5.jpg", 0);
    std::filesystem::remove(folder / L"6.jpg");
    std::filesystem::create_directory(folder / L"6.jpg");
    Open();
    Show(0);
    EXPECT_THAT(Numbers(), ElementsAre(4, 1));

    photos.PutCity(L"France\\Lyon", 2);
    std::string lines = "# no photo\nno number\n";
    for (int i = 1; i < 20000; ++i) lines += "7\tis\tnot\tthere\n";
    photos.PutIndex(L"France\\Lyon", lines + "2\t\t\t\t/2\n1\t\t\t\t/1\n");
    Show(1);
    EXPECT_THAT(Numbers(), ElementsAre(2)) << "one line too many";
}

}  // namespace
