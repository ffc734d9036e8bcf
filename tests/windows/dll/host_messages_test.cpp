// What the host hears from the map and what the map does when the host speaks.
#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

namespace {

constexpr double kSamePlace = 0.01;  // degrees

enum : int { kFirst, kParis, kTwin, kOtherTwin, kNowhere, kFar, kLong };

class HostMessagesTest : public DrivenMapTest {
protected:
    HostMessagesTest() {
        AddCity(L"First", L"Spain", 40.0, -0.2);
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Twin", L"Italy", 44.005, 8.005);
        AddCity(L"Twin", L"Malta", 36.0, 12.0);
        AddCity(L"Nowhere", L"Spain", 0.0, 5.0);
        AddCity(L"Far", L"Chile", -33.0, -70.0);
        AddCity(std::wstring(63, L'n').c_str(), L"Long", 41.0, 1.0);
    }
    POINT PixelOfCity(int index) {
        const CityRecord& city = cities[static_cast<std::size_t>(index)];
        return PixelOf(city.latitude, city.longitude);
    }
    /// Lets the pointer rest on a pixel for as long as a hover takes.
    void Rest(POINT at) {
        cursor = at;
        Hover(at);
        if (Runs(kHoverTimer)) Tick(kHoverTimer);
    }
    LRESULT ShowCity(const CityRecord& city) {
        return SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&city));
    }
    void PhotosChanged(std::int64_t index, LPARAM count = 1) {
        SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, static_cast<WPARAM>(index), count);
    }
    /// The signed indices that the hidden window was asked since the last look.
    std::vector<int> TakeAsked() {
        std::vector<int> indices;
        for (const HostMessage& message : asked) {
            EXPECT_EQ(message.lParam, reinterpret_cast<LPARAM>(window));
            indices.push_back(static_cast<int>(message.wParam));
        }
        asked.clear();
        return indices;
    }
    /// Ends a flight. @return how many steps it took
    int Fly() {
        int steps = 0;
        for (; Runs(kFlightTimer) && steps < 1000; ++steps) Tick(kFlightTimer);
        return steps;
    }
    void StandStill() { Key(window, VK_HOME); }
    /// The panel's titles: city above country.
    std::vector<std::string> Titles() {
        std::vector<std::string> titles;
        for (const SeenText& text : Look().texts) {
            if (text.x >= 800 - 108) titles.push_back(text.text);
        }
        return titles;
    }
};

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(HostMessagesTest, ClickTellsOfTheCityAsksForItsPhotosAndFliesThere) {
    Open();
    const struct {
        const char* why;
        double latitude, longitude;
        int told;  // index, or -1
        int asks;  // signed index
    } cases[] = {
        {"on a city", 42.0, 3.0, kParis, kParis},
        {"on the first city", 40.0, -0.2, kFirst, kFirst},
        {"beside a city", 42.0, 5.0, -1, -kParis},
        {"beside the first city", 39.0, -2.0, -1, 0},
    };
    for (const auto& c : cases) {
        StandStill();
        messages.clear();
        Click(PixelOf(c.latitude, c.longitude));
        ASSERT_EQ(messages.size(), c.told >= 0 ? 1U : 0U) << c.why;
        if (c.told >= 0) {
            EXPECT_EQ(messages[0].wParam, static_cast<WPARAM>(c.told)) << c.why;
            EXPECT_EQ(messages[0].lParam, reinterpret_cast<LPARAM>(&cities[messages[0].wParam]));
        }
        EXPECT_THAT(TakeAsked(), ElementsAre(c.asks)) << c.why;
        EXPECT_TRUE(Runs(kFlightTimer)) << c.why;
        Fly();
        const SeenView view = LookAtView();
        EXPECT_NEAR(view.tilt, c.latitude, 0.3) << c.why;
        EXPECT_NEAR(std::remainder(view.spin + c.longitude, 360.0), 0.0, 0.3) << c.why;
    }
    StandStill();
    Click({5, 300});  // space
    EXPECT_TRUE(TakeAsked().empty());
    EXPECT_FALSE(Runs(kFlightTimer));
}

TEST_F(HostMessagesTest, OnlyTheAnswerOneIsConsent) {
    Open();
    const struct {
        bool hidden;
        LRESULT answer;
        bool shown;
    } cases[] = {{true, 0, false},           {true, 2, false},  {true, -1, false},
                 {true, 0x100000001, false}, {false, 1, false}, {true, 1, true}};
    for (const auto& c : cases) {
        hasHidden = c.hidden;
        consent = c.answer;
        StandStill();
        Click(PixelOfCity(kParis));
        EXPECT_EQ(!Titles().empty(), c.shown) << c.answer;
    }
    EXPECT_THAT(Titles(), ElementsAre("Paris", "France"));
    // Beside a city: its country, without it.
    StandStill();
    Click(PixelOf(42.0, 5.0));
    EXPECT_THAT(Titles(), ElementsAre("France"));
}

TEST_F(HostMessagesTest, HoverAsksAfterHalfASecondOfRest) {
    Open();
    consent = 1;
    const POINT paris = PixelOfCity(kParis);
    cursor = paris;
    Hover(paris);
    ASSERT_TRUE(Runs(kHoverTimer));
    EXPECT_EQ(timers[kHoverTimer], 500U);
    Tick(kHoverTimer);
    EXPECT_FALSE(Runs(kHoverTimer)) << "once";
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    EXPECT_THAT(Titles(), ElementsAre("Paris", "France"));
    EXPECT_TRUE(messages.empty()) << "the parent hears of clicks only";
    Tick(kHoverTimer);
    EXPECT_TRUE(asked.empty()) << "a tick that was under way";

    Rest(PixelOf(42.0, 5.0));
    EXPECT_THAT(TakeAsked(), ElementsAre(-int{kParis}));
    EXPECT_THAT(Titles(), ElementsAre("France"));
}

TEST_F(HostMessagesTest, HoverIsGivenUpWhenAnythingHappens) {
    Open();
    const POINT paris = PixelOfCity(kParis);
    const struct {
        const char* why;
        std::function<void()> act;
    } cases[] = {
        {"moved to space",
         [&] {
             Hover({3, 300});
         }},
        {"zoomed by key", [&] { Key(window, VK_ADD); }},
        {"zoomed by wheel", [&] { Wheel(120); }},
        {"resized", [&] { SendMessageW(window, WM_SIZE, 0, MAKELPARAM(800, 600)); }},
        {"its photos changed", [&] { PhotosChanged(kParis); }},
        {"moved with the button down", [&] { Drag(paris); }},
    };
    for (const auto& c : cases) {
        StandStill();
        Hover(paris);
        ASSERT_TRUE(Runs(kHoverTimer)) << c.why;
        c.act();
        EXPECT_FALSE(Runs(kHoverTimer)) << c.why;
    }
    StandStill();
    Hover(paris);
    PhotosChanged(-kParis);
    PhotosChanged(kTwin);
    PhotosChanged(kParis, 0);
    EXPECT_TRUE(Runs(kHoverTimer)) << "another city's photos, or none";
    cursor = {paris.x + 1, paris.y};
    Tick(kHoverTimer);
    EXPECT_TRUE(asked.empty()) << "the cursor is elsewhere, by one pixel";
}

TEST_F(HostMessagesTest, HoverNeverStartsForTheFirstCity) {
    Open();
    Hover(PixelOfCity(kFirst));
    EXPECT_FALSE(Runs(kHoverTimer));
    Hover(PixelOf(39.0, -2.0));  // beside it
    EXPECT_FALSE(Runs(kHoverTimer));
    Click(PixelOfCity(kFirst));
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kFirst}));
    Hover(PixelOfCity(kParis));
    EXPECT_FALSE(Runs(kHoverTimer)) << "during a flight";
}

TEST_F(HostMessagesTest, HostsRequestFliesToTheCityAndAsksForItsPhotos) {
    Open();
    consent = 1;
    const auto record = [](const wchar_t* name, const wchar_t* country) {
        CityRecord city = {};
        std::copy_n(name, std::wcslen(name), city.cityName);
        std::copy_n(country, std::wcslen(country), city.countryName);
        return city;
    };
    const struct {
        const char* why;
        CityRecord city;
        int found;
    } cases[] = {
        {"by name and country", record(L"Paris", L"France"), kParis},
        {"whatever the case", record(L"pARIS", L"fRANCE"), kParis},
        {"by name alone", record(L"Twin", L""), kTwin},
        {"twin by country", record(L"Twin", L"Malta"), kOtherTwin},
        {"on the far side", record(L"Far", L""), kFar},
        {"the first", record(L"First", L""), kFirst},
        {"unknown", record(L"Atlantis", L""), -1},
        {"known, in another country", record(L"Paris", L"Texas"), -1},
        {"without a name", record(L"", L"France"), -1},
        {"without a position", record(L"Nowhere", L"Spain"), -1},
        {"64 characters, by the first 63", record(std::wstring(64, L'n').c_str(), L""), kLong},
        {"names that fill their fields",
         record(std::wstring(64, L'P').c_str(), std::wstring(64, L'F').c_str()), -1},
    };
    for (const auto& c : cases) {
        StandStill();
        ShowCity(c.city);
        EXPECT_EQ(Runs(kFlightTimer), c.found >= 0) << c.why;
        if (c.found < 0) {
            EXPECT_TRUE(TakeAsked().empty()) << c.why;
            continue;
        }
        EXPECT_THAT(TakeAsked(), ElementsAre(c.found)) << c.why;
        Fly();
        const CityRecord& city = cities[static_cast<std::size_t>(c.found)];
        const SeenView view = LookAtView();
        EXPECT_NEAR(std::remainder(view.tilt - city.latitude, 360.0), 0.0, kSamePlace) << c.why;
        EXPECT_NEAR(std::remainder(view.spin + city.longitude, 360.0), 0.0, kSamePlace) << c.why;
    }
    EXPECT_TRUE(messages.empty()) << "the parent hears of clicks only";

    ShowCity(cities[kTwin]);
    const std::vector<std::string> words = Look().Words();  // before the flight
    EXPECT_THAT(words, Contains(AllOf(StartsWith("Lat 44"), HasSubstr("Long   8"))));
    EXPECT_THAT(words, Contains("Twin")) << "labelled";
}

TEST_F(HostMessagesTest, ARequestMayPointAnywhere) {
    Open();
    for (const LPARAM address : std::initializer_list<LPARAM>{0, 1, -1, 0x7FFF00000000})
        SendMessageW(window, HORIVO_MSG_CITY, 7, address);
    EXPECT_TRUE(asked.empty());
    EXPECT_FALSE(Runs(kFlightTimer));
    // Only the names are read: behind them the memory ends.
    constexpr SIZE_T kPage = 0x1000;
    constexpr SIZE_T kNames = offsetof(CityRecord, hostBytes);
    auto* const pages = static_cast<std::byte*>(
        VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    std::byte* const record = pages + kPage - kNames;
    std::memcpy(record, &cities[kParis], kNames);
    DWORD before = 0;
    VirtualProtect(pages + kPage, kPage, PAGE_NOACCESS, &before);
    SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(record));
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    VirtualFree(pages, 0, MEM_RELEASE);
}

TEST_F(HostMessagesTest, ChangedPhotosAreReadAgainWhereTheyShow) {
    photos.PutCity(L"France\\Paris", 1);
    Open();
    consent = 1;
    ShowCity(cities[kParis]);
    Fly();
    ASSERT_EQ(Look().images.size() % 10, 1U);
    photos.PutCity(L"France\\Paris", 2);
    const struct {
        const char* why;
        std::int64_t index;
        LPARAM count;
    } ignored[] = {
        {"no new photos", kParis, 0},
        {"a negative number", kParis, -1},
        {"the country, while the city shows", -kParis, 1},
        {"another city", kTwin, 1},
        {"one past the end", 7, 1},
        {"one past the end, negative", -7, 1},
        {"the largest", INT_MAX, 1},
        {"the smallest, which has no positive", INT_MIN, 1},
    };
    asked.clear();
    for (const auto& c : ignored) {
        PhotosChanged(c.index, c.count);
        EXPECT_TRUE(TakeAsked().empty()) << c.why;
    }
    EXPECT_EQ(Look().images.size() % 10, 1U);
    consent = 0;
    PhotosChanged(kParis);
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    EXPECT_EQ(Look().images.size() % 10, 1U) << "without consent";
    consent = 1;
    TakeRepaintRequest();
    PhotosChanged(0x700000000 + kParis);  // only the low half counts
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    EXPECT_TRUE(TakeRepaintRequest());
    EXPECT_EQ(Look().images.size() % 10, 2U);

    // The country's panel hears its own messages only.
    StandStill();
    Click(PixelOf(42.0, 5.0));
    ASSERT_THAT(Titles(), ElementsAre("France"));
    TakeAsked();
    PhotosChanged(kParis);
    EXPECT_TRUE(TakeAsked().empty());
    PhotosChanged(-kParis);
    EXPECT_THAT(TakeAsked(), ElementsAre(-int{kParis}));
}

TEST_F(HostMessagesTest, HostMayDoAnythingWhileItIsAsked) {
    photos.PutCity(L"France\\Paris", 1);
    const auto replace = [&] {
        DestroyWindow(window);
        CreateMap();
    };
    const struct {
        const char* why;
        std::function<void()> act;
        bool lives;
    } acts[] = {
        {"destroys the window", [&] { DestroyWindow(window); }, false},
        {"hands over no cities", [&] { library.InitMap(nullptr, 0); }, true},
        {"clicks again",
         [&] {
             Click({150, 80});
         },
         true},
        {"asks for another city", [&] { ShowCity(cities[kTwin]); }, true},
        {"says that photos changed", [&] { PhotosChanged(kParis); }, true},
        {"opens another window and closes it", [&] { DestroyWindow(CreateMap()); }, true},
        {"replaces the window", replace, false},
    };
    const struct {
        const char* why;
        std::function<void()> start;
        bool tells;
    } starts[] = {
        {"click", [&] { Click(PixelOfCity(kParis)); }, true},
        {"hover", [&] { Rest(PixelOfCity(kParis)); }, false},
        {"request", [&] { ShowCity(cities[kParis]); }, false},
    };
    for (const auto& start : starts) {
        for (const auto& act : acts) {
            for (const bool told : {false, true}) {
                if (told && !start.tells) continue;
                const std::string why = std::string(start.why) + ", " + act.why;
                Open(300, 200);
                consent = 1;
                bool acted = false;
                (told ? whileTold : whileAsked) = [&] {
                    acted = true;
                    act.act();
                };
                start.start();
                whileAsked = whileTold = nullptr;
                EXPECT_TRUE(acted) << why;
                EXPECT_EQ(IsWindow(window) != FALSE, act.lives) << why;
                if (IsWindow(window)) {
                    Look();
                    EXPECT_FALSE(SpiedGl().calls.empty()) << why << ": it still paints";
                }
                EXPECT_EQ(GetCapture(), nullptr) << why;
                while (const HWND child = GetWindow(host, GW_CHILD)) DestroyWindow(child);
                EXPECT_TRUE(timers.empty()) << why;
            }
        }
    }
}

}  // namespace
