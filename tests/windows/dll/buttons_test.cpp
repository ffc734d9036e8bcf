// The overlay buttons: which sheets serve, how a button looks, when it acts.
#include "image/gdiplus_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/map_play_win.h"

namespace {

namespace fs = std::filesystem;

/// A window whose host's program stands in a folder of the test's own.
class ButtonsTest : public MapPlay {
protected:
    const fs::path folder = fs::temp_directory_path() /
                            (L"horivo-\x0416-\x00E9-" + std::to_wstring(GetCurrentProcessId()));
    const fs::path sheet = folder / "buttons.png";
    std::wstring commandLine = L"\"" + (folder / L"host.exe").wstring() + L"\" -x";
    std::wstring program;  ///< where it looks second

    ButtonsTest() {
        fs::create_directories(folder);
        SaveMarkedPng(sheet, 128, 256, PixelFormat32bppARGB);
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Lyon", L"France", 38.0, -3.0);
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
    const std::wstring there = commandLine;
    const std::wstring beside = (folder / L"host.exe").wstring();
    const struct {
        const char* why;
        int width, height, format;
        std::wstring commandLine, program;
        bool found;
    } cases[] = {
        {"no picture", 0, 0, PixelFormat32bppARGB, there, L"", false},
        {"24 bits", 128, 256, PixelFormat24bppRGB, there, L"", false},
        {"too wide", 256, 256, PixelFormat32bppARGB, there, L"", false},
        {"too low", 128, 255, PixelFormat32bppARGB, there, L"", false},
        {"fits, named by the command line", 128, 256, PixelFormat32bppARGB, there, L"", true},
        {"beside the program", 128, 256, PixelFormat32bppARGB, L"host.exe", beside, true},
        {"no path", 128, 256, PixelFormat32bppARGB, L".\\host.exe", L"host.exe", false},
    };
    SpiedGl().keepPixels = true;
    for (const auto& c : cases) {
        fs::remove(sheet);
        SaveMarkedPng(sheet, c.width, c.height, c.format);
        commandLine = c.commandLine;
        program = c.program;
        Play(c.found ? "open; dark p50,20; press p50,20; runs repeat; release p50,20; close"
                     : "open; bare p50,20; press p50,20; stops repeat; release p50,20; close",
             c.why);
        if (!c.found) continue;
        const SpiedUpload& upload = SpiedGl().uploads.back();
        EXPECT_EQ(upload.internalFormat, 4);
        const auto first = upload.pixels.begin() + 255 * 128 * 4;  // rows come from the bottom
        EXPECT_EQ(std::vector<int>(first, first + 5), (std::vector{10, 20, 30, 255, 0}));
    }
    fs::current_path(before);
}

TEST_F(ButtonsTest, EachLightsUpAndActsOnceAndAgainWhileItIsHeld) {
    Open();
    const struct {
        int x, y;  ///< of the lower left pixel, from the panel's edge
        const char *once, *thrice;
    } buttons[] = {{38, 6, "39 0", "37 0"},      {6, 38, "40 1", "40 3"},
                   {70, 38, "40 359", "40 357"}, {6, 70, "40 0 -12.1", "40 0 -11.9"},
                   {38, 70, "41 0", "43 0"},     {70, 70, "40 0 -12.3", "40 0 -12.5"}};
    for (const auto& [x, y, once, thrice] : buttons) {
        const LONG left = kPanelX + x;
        const LONG bottom = kOpenHeight - 1 - y;
        points = {{"b", {left, bottom}},
                  {"end", {left + 31, bottom - 31}},
                  {"right", {left + 32, bottom}},
                  {"above", {left, bottom - 32}}};
        const std::string at = std::string("view ") + thrice;
        Play(
            "home; dark b; move b; lit b; move right; dark b; move above; dark b; move end; lit b;"
            "unpainted; leave; repaint; dark b; press b; lit b; runs repeat 30; view " +
                std::string(once) + "; tick repeat; drag 300,300; tick repeat;" + at +
                "; release 300,300; stops repeat; stops flight; tick repeat;" + at,
            once);
    }
    PlayRows("told none; home; key up",
             {{"released over another",
               "press p50,50; drag p50,80; release p50,80; stops flight; view 41 0; dark p50,50"},
              {"pressed elsewhere",
               "press 300,300; drag p50,50; release p50,50; stops flight; dark p50,50"},
              {"home acts when it is released over it",
               "press p50,50; view 41 0; release p69,69; stops flight; view 40 0"}});
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
    const std::wstring hint(400, L'w');
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, hint.c_str());
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, nullptr);  // changes nothing
    Open();
    points["add"] = {kPanelX + 50, 2 * LineHeight() + 12};
    const std::string said(hint.begin(), hint.end());
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
                  {"another place and back", "city Lyon; city Paris; home; bare back; dark on"}});
}

}  // namespace
