// A host that hands over another table, or none, while the map still shows what came from the old.
#include <algorithm>
#include <limits>

#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 600;

class ChangingTableTest : public DrivenMapTest {
protected:
    ChangingTableTest() {
        AddCity(L"Rome", L"Italy", 36.0, 6.0);
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Lyon", L"France", 38.0, -3.0);
        photos.PutCity(L"France\\Paris", 2);
        photos.PutCity(L"France\\Lyon", 2);
        photos.PutIndex(L"France",
                        "1\tParis\t\t\tp\t/p/1\n2\tParis\t\t\tp\t/p/2\n1\tLyon\t\t\tl\t/l/1\n"
                        "2\tLyon\t\t\tl\t/l/2\n");
        consent = 1;
        Open(kWidth, kHeight);
    }
    /// The photos in the panel, from the top.
    std::vector<SeenImage> Photos() {
        std::vector<SeenImage> images = Look().images;
        std::erase_if(images, [](const SeenImage& image) { return image.width != 96.0; });
        return images;
    }
    void ShowFranceFrom(double latitude, double longitude) {
        Click(PixelOf(latitude, longitude));
        Key(window, VK_HOME);
    }
    /// What stands beside the uppermost photo when the pointer is on it.
    std::vector<std::string> CaptionOfFirst() {
        const std::vector<SeenImage> stack = Photos();
        if (stack.empty()) return {};
        Hover(
            {static_cast<LONG>(stack[0].x) + 40, kHeight - 1 - static_cast<LONG>(stack[0].y) - 30});
        return Look().Words();
    }
    static bool Holds(const std::vector<std::string>& words, const char* word) {
        return std::find(words.begin(), words.end(), word) != words.end();
    }
};

TEST_F(ChangingTableTest, NoTableIsAnEmptyOneWhateverItsCount) {
    const std::pair<CityRecord*, std::int32_t> tables[] = {{nullptr, 5}, {cities.data(), -3}};
    for (const auto& table : tables) {
        const auto takeAway = [&] { library.InitMap(table.first, table.second); };
        Init();
        Home();
        ZoomIn();
        Hover(PixelOf(42.0, 3.0));
        ASSERT_TRUE(Runs(kHoverTimer)) << table.second;
        takeAway();
        Tick(kHoverTimer);
        EXPECT_TRUE(asked.empty()) << "the city is gone";
        Init();
        whileAsked = takeAway;
        Click(PixelOf(42.0, 3.0));
        EXPECT_EQ(asked.size(), 1U) << table.second;
        EXPECT_FALSE(Look().Has("Paris")) << table.second;
        asked.clear();
    }
}

TEST_F(ChangingTableTest, PhotosKeepTheirCitiesInATableOfAnotherOrder) {
    ShowFranceFrom(42.0, 5.0);
    ASSERT_TRUE(Holds(CaptionOfFirst(), "Paris, France"));
    std::vector<CityRecord> other(cities.rbegin(), cities.rend());
    other.insert(other.begin(), CityRecord{});
    library.InitMap(other.data(), static_cast<std::int32_t>(other.size()));
    EXPECT_EQ(Photos().size(), 4U);
    EXPECT_TRUE(Holds(CaptionOfFirst(), "Paris, France"));
    // The same while no window lives.
    DestroyWindow(window);
    library.FreeMap();
    library.InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
    window = CreateMap(kWidth, kHeight);
    EXPECT_EQ(Photos().size(), 4U);
    EXPECT_TRUE(Holds(CaptionOfFirst(), "Paris, France"));
}

TEST_F(ChangingTableTest, ThePointersWayDoesNotReorderACountrysPhotos) {
    ShowFranceFrom(42.0, 5.0);
    ASSERT_TRUE(Holds(CaptionOfFirst(), "Paris, France"));
    Hover(PixelOf(38.0, -3.0));  // across Lyon
    SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, static_cast<WPARAM>(-1), 1);
    EXPECT_TRUE(Holds(CaptionOfFirst(), "Paris, France"));
    ShowFranceFrom(38.0, -5.0);
    EXPECT_TRUE(Holds(CaptionOfFirst(), "Lyon, France")) << "chosen anew from there";
}

TEST_F(ChangingTableTest, APageOfBrokenPhotosIsNotShown) {
    photos.PutCity(L"Italy\\Rome", 3);
    photos.PutPhoto(L"Italy\\Rome", 1, 200, 64);
    SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(cities.data()));
    Key(window, VK_HOME);
    ASSERT_EQ(Photos().size(), 2U);
    Key(window, VK_NEXT);
    EXPECT_EQ(Photos().size(), 2U);
}

TEST_F(ChangingTableTest, EachWindowsPhotosAreWhereItShowsThem) {
    ShowFranceFrom(42.0, 5.0);
    const SeenImage photo = Photos().at(0);
    const HWND small = CreateMap(300, 260);
    Paint(small);
    Click({static_cast<LONG>(photo.x) + 40, kHeight - 1 - static_cast<LONG>(photo.y) - 30});
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_TRUE(opened[0].ends_with(L"/p/2")) << "though the other was painted last";
    Paint(small);
    Click({300, 300});
    EXPECT_TRUE(Runs(kFlightTimer)) << "far left of the panel";
}

}  // namespace
