// What the host hears from the map and what the map does when the host speaks.
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
        AddCity(std::wstring(63, L'n'), L"Long", 41.0, 1.0);  // 5
        AddCity(L"Nan", L"", 1.0, std::numeric_limits<double>::quiet_NaN());
        AddCity(L"Large", L"", 6e307, 1.0);  // finite, but the arithmetic of angles overflows
        Open();
    }
};

TEST_F(HostMessagesTest, ClickTellsOfTheCityAsksForItsPhotosAndFliesThere) {
    PlayRows("home",
             {{"on a city", "click 42:3; told 1; asked 1; fly; same 400,299 42:3"},
              {"on the first city", "click 40:-0.2; told 0; asked 0; fly; same 400,299 40:-0.2"},
              {"beside a city", "click 42:5; told none; asked -1; fly; same 400,299 42:5"},
              {"beside the first city", "click 39:-2; told none; asked 0; fly"},
              {"space", "click 5,300; told none; asked none; stops flight"},
              {"only the answer 1 is consent", "answer 2; click Paris; titles none"},
              {"all of its bits", "answer 4294967297; click Paris; titles none"},
              {"consent", "answer 1; click Paris; titles Paris | France"}});
}

TEST_F(HostMessagesTest, HoverAsksAfterHalfASecondOfRestUnlessAnythingHappens) {
    Play(
        "answer 1; move Paris; runs hover 500; tick hover; stops hover; asked 1;"
        "titles Paris | France; tick hover; asked none; move 42:5; tick hover; asked -1;"
        "titles France; told none; move First; stops hover; move 39:-2; stops hover;"
        "click First; asked 0; move 42:3; stops hover",
        "once; never for the first city, which a click takes; not during a flight");
    PlayRows("home; answer 0; move Paris; runs hover",
             {{"moved to space", "move 5,300; stops hover"},
              {"zoomed by key", "key plus; stops hover"},
              {"zoomed by wheel", "wheel 120; stops hover"},
              {"resized", "size 801 600; stops hover; size 800 600"},
              {"its photos changed", "photos changed 1; stops hover"},
              {"a new table of cities", "cities; stops hover"},
              {"moved with the button down", "drag Paris; stops hover"},
              {"another city's photos, or none",
               "photos changed -1; photos changed 2; photos changed 1 0; runs hover"}});
    ++cursor.x;
    Play("tick hover; asked none", "the cursor is elsewhere, by one pixel");
}

TEST_F(HostMessagesTest, ATimerThatFallsDueDuringAPaintWaitsForTheHostsLoop) {
    points["Paris"] = PixelOf(42.0, 3.0);
    PlayRows("key f; move Paris; post hover; paint",  // f: frame after frame
             {{"twice due before it was heard is once; also a timer of the host's for the window",
               "post hover; post host's; paint; asked none; queue hover; asked 1; queue host's;"
               "queue none; key f"},
              {"the pointer rests anew since then",
               "move Paris; queue hover; asked none; runs hover; tick hover; asked 1; key f"}});
}

TEST_F(HostMessagesTest, HostsRequestFliesToTheCityAndAsksForItsPhotos) {
    const std::string filled(63, 'n');
    acts["read"] = [this] { EXPECT_LT(cities[2].distanceSq, 1e-6); };
    PlayRows(
        "home; answer 1",
        {
            {"by both names, whatever the case", "city pARIS/fRANCE; asked 1; fly; view 42 -3"},
            {"by name alone, and the host may read at once",
             "move Paris; city Twin; asked 2; do read; says Twin"},
            {"twin by country", "city Twin/Malta; asked 3; fly; view 36 -12"},
            {"the first", "city First; asked 0; fly; view 40 0.2"},
            {"unknown", "city Atlantis; asked none; stops flight"},
            {"known, in another country", "city Paris/Texas; asked none; stops flight"},
            {"without a name", "city /France; asked none; stops flight"},
            {"without a position", "city Nowhere/Spain; asked none; stops flight"},
            {"nowhere at all",
             "city Nan; stops flight; view 40 0; city Large; stops flight; asked 6 7"},
            {"by its first 63", "city " + filled + "nn; asked 5; fly; view 41 -1"},
            {"a filled country", "city " + filled + "/" + filled + "n; asked none; stops flight"},
        });
    for (const LPARAM address : {LPARAM{0}, LPARAM{1}, LPARAM{0x7FFF00000000}})
        Send(HORIVO_MSG_CITY, 7, address);
    Play("asked none", "the address may be any");
}

TEST_F(HostMessagesTest, ChangedPhotosAreReadAgainWhereTheyShow) {
    photos.PutCity(L"France\\Paris", 1);
    Play("answer 1; city Paris; fly; asked 1; stack 1");
    photos.PutCity(L"France\\Paris", 2);
    PlayRows("", {{"no new photos", "photos changed 1 0; photos changed 1 -1; asked none"},
                  {"the country, while the city shows", "photos changed -1; asked none"},
                  {"another city, one past the end, the smallest that has no positive",
                   "photos changed 2; photos changed 8; photos changed -2147483648; asked none"},
                  {"without consent", "stack 1; answer 0; photos changed 1; asked 1; stack 1"},
                  {"only the low half counts",
                   "answer 1; unpainted; photos changed 30064771073; asked 1; repaint; stack 2"},
                  {"the country's panel hears its own messages only",
                   "home; click 42:5; asked -1; titles France; photos changed 1; asked none;"
                   "photos changed -1; asked -1"}});
}

TEST_F(HostMessagesTest, HostMayDoAnythingWhileItIsAsked) {
    photos.PutCity(L"France\\Paris", 1);
    Play("close all");
    for (const std::string start : {"asked %; click Paris", "told %; click Paris",
                                    "asked %; move Paris; tick hover", "asked %; city Paris"}) {
        for (const std::string act :
             {"close", "no cities", "click 150,80", "city Twin", "passing window"}) {
            std::string line = "open 300 200; answer 1; when " + start;
            line.replace(line.find('%'), 1, act);
            Play(line + "; when " + start.substr(0, start.find(' ')) +
                 (act == "close" ? "; gone" : "; lives") + "; no capture; close all; no timers");
        }
    }
}

}  // namespace
