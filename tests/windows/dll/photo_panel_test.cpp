// The photo panel over real folders: what it shows, how it pages, what it opens, what it touches.
#include <gmock/gmock.h>

#include <algorithm>
#include <cwctype>

#include "image/gdiplus_win.h"
#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

namespace {

using testing::ElementsAre;

constexpr int kWidth = 800;
constexpr int kHeight = 600;
constexpr int kPanelX = kWidth - 108;
constexpr SeenColour kPanelColour = {0.0, 0.0, 0.0, 0.33};

class PhotoPanelTest : public DrivenMapTest {
protected:
    PhotoPanelTest() {
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Lyon", L"France", 38.0, -3.0);
        AddCity(L"Rome", L"Italy", 36.0, 6.0);
        consent = 1;
    }
    /// Opens a window and lets it show a place: a city, or the country of the one nearest to it.
    void Show(int index) {
        SendMessageW(window, HORIVO_MSG_CITY, 0,
                     reinterpret_cast<LPARAM>(&cities[static_cast<std::size_t>(index)]));
        Key(window, VK_HOME);
    }
    void ShowCountry() {
        Click(PixelOf(42.0, 5.0));  // beside Paris
        Key(window, VK_HOME);
    }
    /// The photos of the picture, from the top.
    std::vector<SeenImage> Photos() {
        std::vector<SeenImage> images = Look().images;
        // The sheet's buttons show parts of their texture, a photo begins at its corner. One that
        // does not fit stands above the window.
        std::erase_if(images, [](const SeenImage& image) {
            return image.s != 0.0 || image.t != 0.0 || image.width == 32 || image.y >= kHeight;
        });
        return images;
    }
    /// The photos' numbers, read from what clicks on them open.
    std::vector<int> Numbers() {
        std::vector<int> numbers;
        for (const SeenImage& photo : Photos()) numbers.push_back(NumberAt(MiddleOf(photo)));
        return numbers;
    }
    int NumberAt(POINT at) {
        opened.clear();
        Click(at);
        if (opened.size() != 1) return -1;
        const std::wstring& page = opened[0].page;
        return std::stoi(page.substr(page.rfind(L'/') + 1));
    }
    static POINT Client(double x, double y) {
        return {static_cast<LONG>(x), kHeight - 1 - static_cast<LONG>(y)};
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
    for (int i = 1; i <= 4; ++i) photos.PutPhoto(L"France\\Paris", i, 80 + i, 50 + 10 * i);
    photos.PutIndex(L"France\\Paris", "1\t\t\ta\t/1\n2\t\t\tb\t/2\n3\t\t\tc\t/3\n4\t\t\td\t/4\n");
    Open();
    Show(0);
    const int line = LineHeight();
    const SeenOverlay seen = Look();
    const SeenBox* ground = seen.Find(kPanelColour);
    ASSERT_NE(ground, nullptr);
    EXPECT_EQ(ground->x, kPanelX);
    EXPECT_EQ(ground->y, 0);
    EXPECT_EQ(ground->width, 108);
    EXPECT_EQ(ground->height, kHeight);
    std::vector<SeenText> titles = seen.texts;
    std::erase_if(titles, [](const SeenText& text) { return text.x < kPanelX; });
    ASSERT_EQ(titles.size(), 2U);
    const SeenText* city = &titles[0];
    const SeenText* country = &titles[1];
    EXPECT_EQ(city->text, "Paris");
    EXPECT_EQ(country->text, "France");
    EXPECT_EQ(city->y, kHeight - line);
    EXPECT_EQ(country->y, kHeight - 2 * line);
    EXPECT_EQ(city->x, kPanelX + (108 - WidthOf("Paris")) / 2);
    EXPECT_EQ(country->x, kPanelX + (108 - WidthOf("France")) / 2);

    const std::vector<SeenImage> stack = Photos();
    ASSERT_EQ(stack.size(), 4U);
    double top = kHeight - (2 * line + 59);
    for (int i = 0; i < 4; ++i) {
        const SeenImage& photo = stack[static_cast<std::size_t>(i)];
        const int number = 4 - i;
        EXPECT_EQ(photo.width, 80 + number);
        EXPECT_EQ(photo.height, 50 + 10 * number);
        EXPECT_EQ(photo.x, kPanelX + (108 - (80 + number)) / 2);
        EXPECT_EQ(photo.y, top - photo.height) << number;
        top = photo.y - 4;
    }
}

TEST_F(PhotoPanelTest, PlaceWithoutPhotosHasItsTitlesOnAStrip) {
    Open();
    Show(2);
    const SeenOverlay seen = Look();
    const int strip = 2 * LineHeight() + 59;
    const SeenBox* ground = seen.Find(kPanelColour);
    ASSERT_NE(ground, nullptr);
    EXPECT_EQ(ground->y, kHeight - strip);
    EXPECT_EQ(ground->height, strip);
    EXPECT_NE(seen.Find("Rome"), nullptr);
    EXPECT_NE(seen.Find("Italy"), nullptr);
    // The empty panel covers no globe: a hover goes on below it.
    consent = 0;
    ZoomIn();
    Hover({kPanelX + 50, 300});
    EXPECT_TRUE(Runs(kHoverTimer));
}

TEST_F(PhotoPanelTest, PagingShowsAllPhotosAndComesBack) {
    photos.PutCity(L"France\\Paris", 40, 64, 32);
    Open();
    Show(0);
    // 9 or so fit, though 16 are loaded; a page forward still passes 16.
    const std::vector<int> first = Numbers();
    const int fit = static_cast<int>(first.size());
    const int free = kHeight - (2 * LineHeight() + 59) - 108;
    ASSERT_EQ(fit, (free + 4) / 36);
    EXPECT_EQ(first, Down(40, 41 - fit));
    Key(window, VK_PRIOR);
    EXPECT_EQ(Numbers(), first) << "nothing before the first";
    Key(window, VK_NEXT);
    EXPECT_EQ(Numbers(), Down(24, 25 - fit));
    Key(window, VK_NEXT);
    EXPECT_EQ(Numbers(), Down(8, 1)) << "the rest";
    Key(window, VK_NEXT);
    EXPECT_EQ(Numbers(), Down(8, 1)) << "all are shown";
    // Back by as many as fit, each with its gap.
    const int back = free / 36;
    Key(window, VK_PRIOR);
    EXPECT_EQ(Numbers().front(), 8 + back);
    for (int i = 0; i < 10; ++i) Key(window, VK_PRIOR);
    EXPECT_EQ(Numbers(), first);
    // The same place again keeps its page, another place starts at its first.
    Key(window, VK_NEXT);
    Show(0);
    EXPECT_EQ(Numbers().front(), 24);
    Show(2);
    Show(0);
    EXPECT_EQ(Numbers(), first);
}

TEST_F(PhotoPanelTest, WheelOverTheListPages) {
    photos.PutCity(L"France\\Paris", 17, 64, 32);
    Open();
    Show(0);
    const double distance = LookAtView().distance;
    Hover({kPanelX + 1, 300});
    Wheel(-120);
    EXPECT_EQ(Numbers(), Down(1, 1));
    Wheel(-60);
    EXPECT_EQ(Numbers(), Down(1, 1));
    Hover({kPanelX + 1, 300});
    Wheel(120);
    EXPECT_GT(Numbers().front(), 1);
    EXPECT_EQ(LookAtView().distance, distance);
    Hover({kPanelX, 300});  // the edge itself is the globe's
    Wheel(-120);
    EXPECT_NE(LookAtView().distance, distance);
    // So is a list of one page.
    photos.PutCity(L"France\\Lyon", 16, 64, 32);
    Show(1);
    Hover({kPanelX + 50, 300});
    Wheel(-120);
    EXPECT_NE(LookAtView().distance, distance);
}

TEST_F(PhotoPanelTest, PointedPhotoHasItsCaptionBesideThePanel) {
    photos.PutCity(L"France\\Paris", 2);
    photos.PutCity(L"France\\Lyon", 1);
    photos.PutIndex(L"France", "2\tParis\t\t\tTower\t/2\n1\tLyon\t\t\t\t/1\n");
    Open();
    Show(0);
    const int line = LineHeight();
    std::vector<SeenImage> stack = Photos();
    ASSERT_EQ(stack.size(), 2U);
    const auto ends = [&](const SeenOverlay& seen, const char* text, double y) {
        const SeenText* found = seen.Find(text);
        ASSERT_NE(found, nullptr) << text;
        EXPECT_EQ(found->x + WidthOf(text), kPanelX - 4) << text;
        EXPECT_EQ(found->y, y) << text;
    };
    const double middle = stack[0].y + 30;
    Hover(Client(kPanelX + 1, middle));  // beside the photo, yet right of the edge
    SeenOverlay seen = Look();
    ends(seen, "photo 2", middle);
    ends(seen, "Click to enlarge", middle - line);
    EXPECT_EQ(seen.Find("Paris, France"), nullptr) << "the city stands above";
    EXPECT_EQ(seen.Find("photo 1"), nullptr);
    const struct {
        const char* why;
        double x, y;
        bool shown;
    } edges[] = {
        {"the panel's edge", kPanelX, middle, false},
        {"the photo's lowest row", kPanelX + 50, stack[0].y, false},
        {"above it", kPanelX + 50, stack[0].y + 1, true},
        {"the highest row", kPanelX + 50, stack[0].y + 63, true},
        {"above the photo", kPanelX + 50, stack[0].y + 64, false},
        {"the gap", kPanelX + 50, stack[0].y - 2, false},
    };
    for (const auto& e : edges) {
        Hover(Client(e.x, e.y));
        EXPECT_EQ(Look().Find("Click to enlarge") != nullptr, e.shown) << e.why;
    }
    Hover(Client(kPanelX + 50, middle));
    SendMessageW(window, WM_MOUSELEAVE, 0, 0);
    EXPECT_EQ(Look().Find("Click to enlarge"), nullptr) << "the pointer has left";

    ShowCountry();
    stack = Photos();
    ASSERT_EQ(stack.size(), 2U);
    Hover(Client(kPanelX + 50, middle));
    seen = Look();
    ends(seen, "Paris, France", middle + line / 2);
    ends(seen, "Tower", middle + line / 2 - line);
    ends(seen, "Click to enlarge", middle + line / 2 - 2 * line);
    // An empty caption takes no line.
    const double lower = stack[1].y + 30;
    Hover(Client(kPanelX + 50, lower));
    seen = Look();
    ends(seen, "Lyon, France", lower + line / 2);
    ends(seen, "Click to enlarge", lower + line / 2 - line);
}

TEST_F(PhotoPanelTest, ClickOpensThePageOfThePhotoUnderIt) {
    photos.PutCity(L"France\\Paris", 2);
    Open();
    Show(0);
    const std::vector<SeenImage> stack = Photos();
    ASSERT_EQ(stack.size(), 2U);
    Click(MiddleOf(stack[0]));
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(opened[0].verb, L"open");
    EXPECT_TRUE(opened[0].page.starts_with(L"https://") && opened[0].page.ends_with(L"/2.htm"));
    EXPECT_EQ(opened[0].parameters, L"");
    EXPECT_EQ(opened[0].folder, L".\\");
    EXPECT_EQ(opened[0].show, SW_SHOWNORMAL);
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
        {"the gap, from above", p.x, p.y - 1, -1},
        {"the gap, from below", p.x, p.y - 4, -1},
        {"the next one's highest row", p.x, p.y - 5, 1},
    };
    for (const auto& c : cases) EXPECT_EQ(NumberAt(Client(c.x, c.y)), c.number) << c.why;
    EXPECT_FALSE(Runs(kFlightTimer)) << "the panel covers the globe";
}

TEST_F(PhotoPanelTest, OnlyAPressOnTheSamePhotoOpensIt) {
    photos.PutCity(L"France\\Paris", 2);
    Open();
    Show(0);
    const std::vector<SeenImage> stack = Photos();
    ASSERT_EQ(stack.size(), 2U);
    const POINT upper = MiddleOf(stack[0]);
    const POINT lower = MiddleOf(stack[1]);
    const struct {
        const char* why;
        POINT from, to;
        std::size_t pages;
    } cases[] = {
        {"a drag of the globe", {400, 300}, upper, 0},
        {"from another photo", lower, upper, 0},
        {"off the photo", upper, {400, 300}, 0},
        {"a trembling hand", upper, {upper.x + 3, upper.y + 2}, 1},
    };
    for (const auto& c : cases) {
        opened.clear();
        Press(c.from);
        Drag(c.to);
        Release(c.to);
        EXPECT_EQ(opened.size(), c.pages) << c.why;
    }
}

TEST_F(PhotoPanelTest, CountryShowsItsCitiesFromThePlaceThatWasClicked) {
    photos.PutCity(L"France\\Paris", 3);
    photos.PutCity(L"France\\Lyon", 2);
    photos.PutIndex(
        L"France",
        "1\tLyon\t\t\tl\t/l/1\n2\tLYON\t\t\tl\t/l/2\n1\tParis\t\t\tp\t/p/1\n"
        "3\tParis\t\t\tp\t/p/3\n9\tParis\t\t\tmissing\t/9\n1\tRome\t\t\tabroad\t/r/1\n");
    Open();
    const auto pages = [&] {
        std::vector<std::wstring> seen;
        for (const SeenImage& photo : Photos()) {
            opened.clear();
            Click(MiddleOf(photo));
            if (opened.empty()) continue;
            const std::wstring& page = opened[0].page;
            seen.push_back(page.substr(page.find(L'/', 8)));
        }
        return seen;
    };
    ShowCountry();  // beside Paris
    EXPECT_THAT(pages(), ElementsAre(L"/p/3", L"/p/1", L"/l/2", L"/l/1"));
    Click(PixelOf(38.0, -5.0));  // beside Lyon
    Key(window, VK_HOME);
    EXPECT_THAT(pages(), ElementsAre(L"/l/2", L"/l/1", L"/p/3", L"/p/1"));
}

TEST_F(PhotoPanelTest, WindowMadeAnewShowsThePanelThatTheLastOneShowed) {
    photos.PutCity(L"France\\Paris", 3);
    Open();
    Show(0);
    const std::vector<int> before = Numbers();
    ASSERT_EQ(before, Down(3, 1));
    DestroyWindow(window);
    window = CreateMap(kWidth, kHeight);
    Paint(window);
    EXPECT_EQ(Numbers(), before);
    EXPECT_NE(Look().Find("Paris"), nullptr);
}

/// Remembers every file that the library reaches for.
class TouchedFiles {
public:
    explicit TouchedFiles(HMODULE module)
        : create_(
              module,
              [this](const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                     DWORD disposition, DWORD flags, HANDLE like) {
                  Note(path);
                  EXPECT_EQ(access & (GENERIC_WRITE | DELETE), 0U);
                  return decltype(create_)::Real(path, access, share, security, disposition, flags,
                                                 like);
              }),
          attributes_(module,
                      [this](const wchar_t* path) {
                          Note(path);
                          return decltype(attributes_)::Real(path);
                      }),
          bitmap_(module, [this](const WCHAR* path, Gdiplus::GpBitmap** bitmap) {
              Note(path);
              return decltype(bitmap_)::Real(path, bitmap);
          }) {}

    std::vector<std::wstring> paths;  ///< absolute, as Windows resolves them

private:
    void Note(const wchar_t* path) {
        wchar_t full[1024] = {};
        GetFullPathNameW(path, 1024, full, nullptr);
        paths.emplace_back(full);
    }
    FakedImport<"CreateFileW", decltype(CreateFileW)> create_;
    FakedImport<"GetFileAttributesW", decltype(GetFileAttributesW)> attributes_;
    FakedImport<"GdipCreateBitmapFromFile", decltype(Gdiplus::DllExports::GdipCreateBitmapFromFile)>
        bitmap_;
};

TEST_F(PhotoPanelTest, HostileIndexReachesNothingOutsideTheTree) {
    // Traps: pictures where the tricks lead.
    photos.PutCity(L"..", 1);
    photos.PutPhoto(L"France", 1);
    photos.PutPhoto(L".", 1);
    photos.PutCity(L"France\\Paris", 3);
    const std::string tab = "\t";
    const std::string endless(4096, 'x');
    std::string lines = "\xEF\xBB\xBF# a mark\n;a comment\n\n\t\t\t\t\t\n";
    for (const char* city :
         {"..\\..", "..", ".", ". .", "../../x", "C:\\Windows", "\\\\server\\share",
          "Paris\\..\\..\\..", "con", "Paris:stream", "*", "?", ".. ", "Rome"}) {
        lines += "1" + tab + city + tab + tab + tab + "trap" + tab + "/trap\n";
    }
    lines += "..\\1\tParis\t\t\ttrap\t/trap\n-1\tParis\t\t\ttrap\t/trap\n";
    lines += std::string(30, '9') + "\tParis\t\t\ttrap\t/trap\n";
    lines += endless + "1\tParis\t\t\ttrap\t/trap\n";
    lines += std::string("1\tPa\0ris\t\t\ttrap\t/trap\n", 21);
    lines += "1\n1\tParis\n";
    lines += "2\tParis\t\t\tcaf\xC3\xA9\t@other.example/2\r\n";
    lines += "3\tParis\t\t\tcaf\xE9 " + endless.substr(0, 500) + "\t/3";  // no newline at the end
    photos.PutIndex(L"France", lines);
    // A host may take its names from anywhere too.
    AddCity(L"..", L"France", 43.0, 3.0);
    AddCity(L"Up", L"..", 44.0, 3.0);
    AddCity(L"..", L".. ", 45.0, 3.0);
    Open();
    const TouchedFiles touched(library.module);
    for (int tricky = 3; tricky < 6; ++tricky) {
        Show(tricky);
        EXPECT_TRUE(Photos().empty()) << tricky;
    }
    ShowCountry();
    const std::vector<SeenImage> stack = Photos();
    // Number 1 once: the line that ends behind the city's name is a good one, without caption.
    ASSERT_EQ(stack.size(), 3U);
    Hover(MiddleOf(stack[1]));
    EXPECT_NE(Look().Find("caf\xE9"), nullptr);
    opened.clear();
    Click(MiddleOf(stack[1]));
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_TRUE(opened[0].page.ends_with(L"/@other.example/2")) << "never another site";
    opened.clear();
    Click(MiddleOf(stack[2]));
    EXPECT_TRUE(opened.empty()) << "a photo without a page";

    std::wstring root = PhotoDisk::Root().wstring() + L"\\";
    std::transform(root.begin(), root.end(), root.begin(), std::towlower);
    EXPECT_FALSE(touched.paths.empty());
    std::filesystem::remove(PhotoDisk::Root() / L"..\\1.jpg");
    std::filesystem::remove(PhotoDisk::Root() / L"..\\index.tsv");
    for (std::wstring path : touched.paths) {
        std::transform(path.begin(), path.end(), path.begin(), std::towlower);
        EXPECT_TRUE(path.starts_with(root)) << testing::PrintToString(path);
    }
}

TEST_F(PhotoPanelTest, BrokenFilesAreLeftOut) {
    photos.PutCity(L"France\\Paris", 6);
    photos.PutPhoto(L"France\\Paris", 2, 129, 64);
    photos.PutPhoto(L"France\\Paris", 3, 64, 257);
    photos.PutPhoto(L"France\\Paris", 4, 128, 200);
    std::filesystem::resize_file(PhotoDisk::Root() / L"France\\Paris\\5.jpg", 0);
    std::filesystem::remove(PhotoDisk::Root() / L"France\\Paris\\6.jpg");
    std::filesystem::create_directory(PhotoDisk::Root() / L"France\\Paris\\6.jpg");
    Open();
    Show(0);
    EXPECT_EQ(Numbers(), (std::vector<int>{4, 1}));
}

}  // namespace
