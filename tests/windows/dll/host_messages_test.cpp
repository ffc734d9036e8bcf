// What the host hears from the map and what the map does when the host speaks.
#include <gmock/gmock.h>

#include <climits>
#include <cmath>
#include <cstring>

#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

namespace {

constexpr double kSamePlace = 0.01;  // degrees
constexpr POINT kSpace = {5, 300};

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
        period = Runs(kHoverTimer) ? timers[kHoverTimer] : 0;
        Tick(kHoverTimer);
    }
    static void ExpectNear(const SeenView& view, double latitude, double longitude, double degrees,
                           const char* why) {
        EXPECT_NEAR(std::remainder(view.tilt - latitude, 360.0), 0.0, degrees) << why;
        EXPECT_NEAR(std::remainder(view.spin + longitude, 360.0), 0.0, degrees) << why;
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

    UINT period = 0;  ///< of the last hover, ms
};

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
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
        Home();
        messages.clear();
        Click(PixelOf(c.latitude, c.longitude));
        ASSERT_EQ(messages.size(), c.told >= 0 ? 1U : 0U) << c.why;
        if (c.told >= 0) {
            EXPECT_EQ(messages[0].wParam, static_cast<WPARAM>(c.told)) << c.why;
            EXPECT_EQ(messages[0].lParam, reinterpret_cast<LPARAM>(&cities[messages[0].wParam]));
        }
        EXPECT_THAT(TakeAsked(), ElementsAre(c.asks)) << c.why;
        EXPECT_GT(Fly(), 0) << c.why;
        ExpectNear(LookAtView(), c.latitude, c.longitude, 0.3, c.why);
    }
    Home();
    Click(kSpace);
    EXPECT_THAT(asked, IsEmpty());
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
        Home();
        Click(PixelOfCity(kParis));
        EXPECT_EQ(!Titles().empty(), c.shown) << c.answer;
    }
    EXPECT_THAT(Titles(), ElementsAre("Paris", "France"));
}

TEST_F(HostMessagesTest, HoverAsksAfterHalfASecondOfRest) {
    Open();
    consent = 1;
    const POINT paris = PixelOfCity(kParis);
    Rest(paris);
    EXPECT_EQ(period, 500U);
    EXPECT_FALSE(Runs(kHoverTimer)) << "once";
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    EXPECT_THAT(Titles(), ElementsAre("Paris", "France"));
    Tick(kHoverTimer);
    EXPECT_THAT(asked, IsEmpty()) << "a tick that was under way";
    Rest(PixelOf(42.0, 5.0));
    EXPECT_THAT(TakeAsked(), ElementsAre(-int{kParis}));
    EXPECT_THAT(Titles(), ElementsAre("France"));
    EXPECT_THAT(messages, IsEmpty()) << "the parent hears of clicks only";

    for (const POINT& first : {PixelOfCity(kFirst), PixelOf(39.0, -2.0)}) {
        Hover(first);
        EXPECT_FALSE(Runs(kHoverTimer)) << "never for the first city";
    }
    Click(PixelOfCity(kFirst));
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kFirst})) << "which a click takes";
    Hover(paris);
    EXPECT_FALSE(Runs(kHoverTimer)) << "during a flight";
}

TEST_F(HostMessagesTest, ATimerThatFallsDueDuringAPaintWaitsForTheHostsLoop) {
    Open();
    cursor = PixelOfCity(kParis);
    Key(window, 'F');  // frame after frame: the map looks for due timers itself
    const auto fallDue = [&](WPARAM timer) { PostMessageW(window, WM_TIMER, timer, 0); };
    // What the host's loop finds; 0 for nothing.
    const auto takeTimer = [&] {
        MSG message = {};
        if (!PeekMessageW(&message, window, WM_TIMER, WM_TIMER, PM_REMOVE)) return WPARAM{0};
        DispatchMessageW(&message);
        return message.wParam;
    };
    Hover(cursor);
    fallDue(kHoverTimer);
    Paint(window);
    fallDue(kHoverTimer);
    Paint(window);
    EXPECT_THAT(asked, IsEmpty()) << "inside UpdateWindow";
    EXPECT_EQ(takeTimer(), kHoverTimer);
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    EXPECT_EQ(takeTimer(), 0U) << "twice due before it was heard is once";

    for (const bool paintedAgain : {false, true}) {
        Hover(cursor);
        fallDue(kHoverTimer);
        Paint(window);
        Hover(cursor);
        if (paintedAgain) Paint(window);
        EXPECT_EQ(takeTimer(), paintedAgain ? 0U : kHoverTimer);
        EXPECT_THAT(asked, IsEmpty()) << "the pointer rests anew since then";
        EXPECT_TRUE(Runs(kHoverTimer));
        Tick(kHoverTimer);
        EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    }
    constexpr WPARAM kHostsTimer = 77;
    fallDue(kHostsTimer);
    Paint(window);
    EXPECT_EQ(takeTimer(), kHostsTimer) << "a timer that the host has set for the window";
    Hover(cursor);
    {
        const FakedImport<"PostMessageW", decltype(PostMessageW)> full(
            library.module, [](HWND, UINT, WPARAM, LPARAM) { return FALSE; });
        fallDue(kHoverTimer);
        Paint(window);
        EXPECT_EQ(takeTimer(), 0U);
    }
    Hover(cursor);
    Tick(kHoverTimer);
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis})) << "the next tick counts";
}

TEST_F(HostMessagesTest, HoverIsGivenUpWhenAnythingHappens) {
    Open();
    const POINT paris = PixelOfCity(kParis);
    const struct {
        const char* why;
        std::function<void()> act;
    } cases[] = {
        {"moved to space", [&] { Hover(kSpace); }},
        {"zoomed by key", [&] { Key(window, VK_ADD); }},
        {"zoomed by wheel", [&] { Wheel(120); }},
        {"resized", [&] { SendMessageW(window, WM_SIZE, 0, MAKELPARAM(800, 600)); }},
        {"its photos changed", [&] { PhotosChanged(kParis); }},
        {"moved with the button down", [&] { Drag(paris); }},
    };
    for (const auto& c : cases) {
        Home();
        Hover(paris);
        ASSERT_TRUE(Runs(kHoverTimer)) << c.why;
        c.act();
        EXPECT_FALSE(Runs(kHoverTimer)) << c.why;
    }
    Home();
    Hover(paris);
    PhotosChanged(-kParis);
    PhotosChanged(kTwin);
    PhotosChanged(kParis, 0);
    EXPECT_TRUE(Runs(kHoverTimer)) << "another city's photos, or none";
    cursor = {paris.x + 1, paris.y};
    Tick(kHoverTimer);
    EXPECT_THAT(asked, IsEmpty()) << "the cursor is elsewhere, by one pixel";
}

TEST_F(HostMessagesTest, HostsRequestFliesToTheCityAndAsksForItsPhotos) {
    Open();
    consent = 1;
    const std::wstring filled(64, L'n');
    const struct {
        const char* why;
        std::wstring name, country;
        int found;
    } cases[] = {
        {"by name and country, whatever the case", L"pARIS", L"fRANCE", kParis},
        {"by name alone", L"Twin", L"", kTwin},
        {"twin by country", L"Twin", L"Malta", kOtherTwin},
        {"on the far side", L"Far", L"", kFar},
        {"the first", L"First", L"", kFirst},
        {"unknown", L"Atlantis", L"", -1},
        {"known, in another country", L"Paris", L"Texas", -1},
        {"without a name", L"", L"France", -1},
        {"without a position", L"Nowhere", L"Spain", -1},
        {"64 characters, by the first 63", filled, L"", kLong},
        {"names that fill their fields", filled, filled, -1},
    };
    for (const auto& c : cases) {
        CityRecord record = {};
        c.name.copy(record.cityName, 64);
        c.country.copy(record.countryName, 64);
        Home();
        ShowCity(record);
        EXPECT_EQ(Runs(kFlightTimer), c.found >= 0) << c.why;
        EXPECT_EQ(TakeAsked(), c.found >= 0 ? std::vector{c.found} : std::vector<int>{}) << c.why;
        if (c.found < 0) continue;
        Fly();
        const CityRecord& city = cities[static_cast<std::size_t>(c.found)];
        ExpectNear(LookAtView(), city.latitude, city.longitude, kSamePlace, c.why);
    }
    EXPECT_THAT(messages, IsEmpty()) << "the parent hears of clicks only";

    ShowCity(cities[kTwin]);
    const std::vector<std::string> words = Look().Words();  // before the flight
    EXPECT_THAT(words, Contains(AllOf(StartsWith("Lat 44"), HasSubstr("Long   8"))));
    EXPECT_THAT(words, Contains("Twin")) << "labelled";
}

TEST_F(HostMessagesTest, ARequestMayPointAnywhere) {
    Open();
    for (const LPARAM address : std::initializer_list<LPARAM>{0, 1, -1, 0x7FFF00000000})
        SendMessageW(window, HORIVO_MSG_CITY, 7, address);
    EXPECT_THAT(asked, IsEmpty());
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
    ShowCity(*reinterpret_cast<const CityRecord*>(record));
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    VirtualFree(pages, 0, MEM_RELEASE);
}

TEST_F(HostMessagesTest, ChangedPhotosAreReadAgainWhereTheyShow) {
    photos.PutCity(L"France\\Paris", 1);
    Open();
    consent = 1;
    ShowCity(cities[kParis]);
    Fly();
    ASSERT_EQ(Look().images.size(), 1U);
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
        {"the smallest, which has no positive", INT_MIN, 1},
    };
    for (const auto& c : ignored) {
        asked.clear();
        PhotosChanged(c.index, c.count);
        EXPECT_THAT(asked, IsEmpty()) << c.why;
    }
    EXPECT_EQ(Look().images.size(), 1U);
    consent = 0;
    PhotosChanged(kParis);
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    EXPECT_EQ(Look().images.size(), 1U) << "without consent";
    consent = 1;
    TakeRepaintRequest();
    PhotosChanged(0x700000000 + kParis);  // only the low half counts
    EXPECT_THAT(TakeAsked(), ElementsAre(int{kParis}));
    EXPECT_TRUE(TakeRepaintRequest());
    EXPECT_EQ(Look().images.size(), 2U);

    // The country's panel hears its own messages only.
    Home();
    Click(PixelOf(42.0, 5.0));
    ASSERT_THAT(Titles(), ElementsAre("France"));
    TakeAsked();
    PhotosChanged(kParis);
    EXPECT_THAT(asked, IsEmpty());
    PhotosChanged(-kParis);
    EXPECT_THAT(TakeAsked(), ElementsAre(-int{kParis}));
}

TEST_F(HostMessagesTest, HostMayDoAnythingWhileItIsAsked) {
    photos.PutCity(L"France\\Paris", 1);
    const POINT clicked = {150, 80};
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
        {"clicks again", [&] { Click(clicked); }, true},
        {"asks for another city", [&] { ShowCity(cities[kTwin]); }, true},
        {"opens another window and closes it", [&] { DestroyWindow(CreateMap()); }, true},
        {"replaces the window", replace, false},
    };
    const struct {
        const char* why;
        std::function<void()> start;
        std::function<void()>& moment;
    } starts[] = {
        {"click", [&] { Click(PixelOfCity(kParis)); }, whileAsked},
        {"click, its parent hears", [&] { Click(PixelOfCity(kParis)); }, whileTold},
        {"hover", [&] { Rest(PixelOfCity(kParis)); }, whileAsked},
        {"request", [&] { ShowCity(cities[kParis]); }, whileAsked},
    };
    for (const auto& start : starts) {
        for (const auto& act : acts) {
            const std::string why = std::string(start.why) + ", " + act.why;
            Open(300, 200);
            consent = 1;
            start.moment = act.act;
            start.start();
            EXPECT_EQ(start.moment, nullptr) << why << ": not reached";
            start.moment = nullptr;
            EXPECT_EQ(IsWindow(window) != FALSE, act.lives) << why;
            if (IsWindow(window)) {
                const int before = SpiedGl().frames;
                Paint(window);
                EXPECT_GT(SpiedGl().frames, before) << why << ": it still paints";
            }
            EXPECT_EQ(GetCapture(), nullptr) << why;
            while (const HWND child = GetWindow(host, GW_CHILD)) DestroyWindow(child);
            EXPECT_THAT(timers, IsEmpty()) << why;
        }
    }
}

}  // namespace
