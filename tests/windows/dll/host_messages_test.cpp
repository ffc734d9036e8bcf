// What the host hears from the map and what the map does when the host speaks.
#include <climits>
#include <cstring>
#include <limits>

#include "support/map_play_win.h"

namespace {

class HostMessagesTest : public MapPlay {
protected:
    HostMessagesTest() {
        AddCity(L"First", L"Spain", 40.0, -0.2);  // 0
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Twin", L"Italy", 44.005, 8.005);
        AddCity(L"Twin", L"Malta", 36.0, 12.0);
        AddCity(L"Nowhere", L"Spain", 0.0, 5.0);
        AddCity(L"Far", L"Chile", -33.0, -70.0);  // 5
        AddCity(std::wstring(63, L'n').c_str(), L"Long", 41.0, 1.0);
        points["space"] = {5, 300};
        Open();
    }
};

TEST_F(HostMessagesTest, ClickTellsOfTheCityAsksForItsPhotosAndFliesThere) {
    PlayRows("home",
             {{"on a city", "click 42:3; told 1; asked 1; fly; above 42 3 0.3"},
              {"on the first city", "click 40:-0.2; told 0; asked 0; fly; above 40 -0.2 0.3"},
              {"beside a city", "click 42:5; told none; asked -1; fly; above 42 5 0.3"},
              {"beside the first city", "click 39:-2; told none; asked 0; fly; above 39 -2 0.3"},
              {"space", "click space; told none; asked none; stops flight"}});
    PlayRows("home; hidden yes",
             {{"only the answer 1 is consent", "answer 0; click Paris; titles none"},
              {"not 2", "answer 2; click Paris; titles none"},
              {"not -1", "answer -1; click Paris; titles none"},
              {"all of its bits", "answer 0x100000001; click Paris; titles none"},
              {"nobody there", "hidden no; answer 1; click Paris; titles none"},
              {"consent", "answer 1; click Paris; titles Paris | France"}});
}

TEST_F(HostMessagesTest, HoverAsksAfterHalfASecondOfRestUnlessAnythingHappens) {
    Play(
        "answer 1; cursor Paris; move Paris; runs hover 500; tick hover; stops hover; asked 1;"
        "titles Paris | France; tick hover; asked none; rest 42:5; asked -1; titles France;"
        "told none; move First; stops hover; move 39:-2; stops hover",
        "once; never for the first city; the parent hears of clicks only");
    Play("click First; asked 0; move 42:3; stops hover", "which a click takes; during a flight");
    PlayRows("home; answer 0; cursor Paris; move Paris; runs hover",
             {{"moved to space", "move space; stops hover"},
              {"zoomed by key", "key plus; stops hover"},
              {"zoomed by wheel", "wheel 120; stops hover"},
              {"resized", "size 801 600; stops hover; size 800 600"},
              {"its photos changed", "photos changed 1; stops hover"},
              {"moved with the button down", "drag Paris; stops hover"},
              {"another city's photos, or none",
               "photos changed -1; photos changed 2; photos changed 1 0; runs hover"}});
    ++cursor.x;
    Play("tick hover; asked none", "the cursor is elsewhere, by one pixel");
}

TEST_F(HostMessagesTest, ATimerThatFallsDueDuringAPaintWaitsForTheHostsLoop) {
    points["Paris"] = PixelOf(42.0, 3.0);
    const std::string hover = "cursor Paris; key f; move Paris;";  // f: frame after frame
    Play(hover + "due hover; due hover; asked none; queue hover; asked 1; queue none; key f",
         "inside UpdateWindow; twice due before it was heard is once");
    Play(hover +
             "due hover; move Paris; queue hover; asked none; runs hover; tick hover; asked 1;"
             "key f",
         "the pointer rests anew since then");
    Play(hover +
             "due hover; move Paris; paint; queue none; asked none; runs hover; tick hover;"
             "asked 1; due 77; queue 77",
         "also a timer that the host has set for the window");
    Play("move Paris");
    {
        const FakedImport<"PostMessageW", decltype(PostMessageW)> full(
            library.module, [](HWND, UINT, WPARAM, LPARAM) { return FALSE; });
        Play("due hover; queue none");
    }
    Play("move Paris; tick hover; asked 1", "the next tick counts");
}

TEST_F(HostMessagesTest, HostsRequestFliesToTheCityAndAsksForItsPhotos) {
    const std::string filled(63, 'n');
    PlayRows(
        "home; answer 1",
        {
            {"by both names, whatever the case", "city pARIS/fRANCE; asked 1; fly; above 42 3"},
            {"by name alone", "city Twin; asked 2; fly; above 44.005 8.005"},
            {"twin by country", "city Twin/Malta; asked 3; fly; above 36 12"},
            {"on the far side", "city Far; asked 5; fly; above -33 -70"},
            {"the first", "city First; asked 0; fly; above 40 -0.2"},
            {"unknown", "city Atlantis; asked none; stops flight"},
            {"known, in another country", "city Paris/Texas; asked none; stops flight"},
            {"without a name", "city /France; asked none; stops flight"},
            {"without a position", "city Nowhere/Spain; asked none; stops flight"},
            {"by its first 63", "city " + filled + "nn; asked 6; fly; above 41 1"},
            {"a filled country", "city " + filled + "/" + filled + "n; asked none; stops flight"},
            {"labelled before the flight", "city Twin; asked 2; told none"},
        });
    EXPECT_LT(cities[2].distanceSq, 1e-6) << "the host may read it at once";
    EXPECT_NE(Look().texts[1].text.find("Lat 44"), std::string::npos) << Look().texts[1].text;
    Play("says Twin");
    // The address may be any: only the names are read, and here memory ends behind them.
    Play("home");
    for (const LPARAM address : std::initializer_list<LPARAM>{0, 1, -1, 0x7FFF00000000})
        SendMessageW(window, HORIVO_MSG_CITY, 7, address);
    Play("asked none; stops flight");
    constexpr SIZE_T kPage = 0x1000;
    constexpr SIZE_T kNames = offsetof(CityRecord, hostBytes);
    auto* const pages = static_cast<std::byte*>(
        VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    std::byte* const record = pages + kPage - kNames;
    std::memcpy(record, &cities[1], kNames);
    DWORD before = 0;
    VirtualProtect(pages + kPage, kPage, PAGE_NOACCESS, &before);
    ShowCity(*reinterpret_cast<const CityRecord*>(record));
    Play("asked 1");
    VirtualFree(pages, 0, MEM_RELEASE);
}

TEST_F(HostMessagesTest, ChangedPhotosAreReadAgainWhereTheyShow) {
    photos.PutCity(L"France\\Paris", 1);
    Play("answer 1; city Paris; fly; asked 1; stack 1");
    photos.PutCity(L"France\\Paris", 2);
    PlayRows("", {{"no new photos", "photos changed 1 0; asked none"},
                  {"a negative number", "photos changed 1 -1; asked none"},
                  {"the country, while the city shows", "photos changed -1; asked none"},
                  {"another city", "photos changed 2; asked none"},
                  {"one past the end", "photos changed 7; asked none"},
                  {"the smallest has no positive", "photos changed -2147483648; asked none"},
                  {"without consent", "stack 1; answer 0; photos changed 1; asked 1; stack 1"},
                  {"only the low half counts",
                   "answer 1; unpainted; photos changed 30064771073; asked 1; repaint; stack 2"},
                  {"the country's panel hears its own messages only",
                   "home; click 42:5; asked -1; titles France; photos changed 1; asked none;"
                   "photos changed -1; asked -1"}});
}

TEST_F(HostMessagesTest, HostMayDoAnythingWhileItIsAsked) {
    photos.PutCity(L"France\\Paris", 1);
    acts["replace"] = [this] {
        DestroyWindow(window);
        CreateMap();
    };
    acts["see"] = [this] {
        if (IsWindow(window)) Play("lives");
    };
    Play("close all");
    for (const std::string start : {"asked %; click Paris", "told %; click Paris",
                                    "asked %; rest Paris", "asked %; city Paris"}) {
        for (const char* act : {"close", "cities none", "click 150,80", "city Twin",
                                "passing window", "do replace"}) {
            std::string line = "open 300 200; answer 1; when " + start;
            line.replace(line.find('%'), 1, act);
            const bool dies = std::string(act) == "close" || std::string(act) == "do replace";
            const std::string moment = start.substr(0, start.find(' '));
            Play(line + "; when " + moment + (dies ? "; gone" : "; lives") +
                 "; no capture; close all; no timers");
        }
    }
}

}  // namespace
