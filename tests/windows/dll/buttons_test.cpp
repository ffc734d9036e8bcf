// The overlay buttons: which sheets serve, how a button looks, when it acts.
#include <gmock/gmock.h>

#include "image/gdiplus_win.h"
#include "support/driven_map_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/gl_spy_win.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kUnlit = 0.5;  // how far above the lit look of a cell the other begins

/// A window whose host's program stands in a folder of the test's own.
class ButtonsTest : public DrivenMapTest {
protected:
    const fs::path folder =
        fs::temp_directory_path() / (L"horivo-host-" + std::to_wstring(GetCurrentProcessId()));
    const fs::path sheet = folder / "buttons.png";
    std::wstring commandLine = L"\"" + (folder / L"host.exe").wstring() + L"\" -x";
    std::wstring program = (folder / L"none" / L"host.exe").wstring();  ///< where it looks second

    ButtonsTest() {
        fs::create_directories(folder);
        fs::copy_file(fs::path(HORIVO_ASSETS) / "buttons.png", sheet,
                      fs::copy_options::overwrite_existing);
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Lyon", L"France", 38.0, -3.0);
    }
    ~ButtonsTest() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    /// The image that stands at (x, y) of the panel; of no size when there is none.
    SeenImage ImageAt(double x, double y) {
        for (const SeenImage& image : Look().images) {
            if (image.x == kPanelX + x && image.y == y) return image;
        }
        return {};
    }
    bool ShowsAt(double x, double y) { return ImageAt(x, y).width != 0; }
    /// Whether the button at (x, y) of the panel shows its highlighted look, row `v` of the sheet.
    bool IsLit(double x, double y, double v) {
        const SeenImage image = ImageAt(x, y);
        EXPECT_NE(image.width, 0) << x << ' ' << y;
        return image.t == v / 256;
    }
    /// A client point by its distance from the panel's left edge and from the window's bottom.
    static POINT InPanel(int x, int y) { return {kPanelX + x, kOpenHeight - 1 - y}; }
    int PhotosButtonY() const { return kOpenHeight - 2 * LineHeight() - 32; }
    void Show(std::size_t city) {
        ShowCity(cities[city]);
        Home();
    }

private:
    FakedImport<"GetCommandLineW", decltype(GetCommandLineW)> getCommandLine_{
        library.module, [this] { return commandLine.data(); }};
    FakedImport<"GetModuleFileNameW", decltype(GetModuleFileNameW)> getModuleFileName_{
        library.module, [this](HMODULE, wchar_t* path, DWORD size) -> DWORD {
            return static_cast<DWORD>(program.copy(path, size));
        }};
};

TEST_F(ButtonsTest, SheetGoesUpFromItsLastRowAsRgba) {
    SpiedGl().keepPixels = true;
    const auto takeSheet = [&] {
        Open();
        DestroyWindow(window);
        for (const SpiedUpload& upload : SpiedGl().uploads) {
            if (upload.height == 256) return upload;
        }
        return SpiedUpload{};
    };
    const SpiedUpload drawn = takeSheet();
    EXPECT_EQ(drawn.internalFormat, 4);
    EXPECT_EQ(drawn.format, GLenum{GL_RGBA});
    ASSERT_EQ(drawn.pixels.size(), 128U * 256 * 4);
    const auto alphaAt = [&](int x, int row) {
        return int{drawn.pixels[static_cast<std::size_t>(((255 - row) * 128 + x) * 4 + 3)]};
    };
    EXPECT_GT(alphaAt(50, 20), 0) << "the photos button";
    EXPECT_GT(alphaAt(48, 80), 0) << "home";
    EXPECT_EQ(alphaAt(68, 100), 0) << "the clear upper part of the next button";

    SaveMarkedPng(sheet, 128, 256, PixelFormat32bppARGB);
    const auto marked = takeSheet().pixels;
    ASSERT_EQ(marked.size(), drawn.pixels.size());
    const auto* const first = &marked[255 * 128 * 4];
    EXPECT_THAT(std::vector<int>(first, first + 5), ElementsAre(10, 20, 30, 255, 0));
}

TEST_F(ButtonsTest, OnlyAFittingSheetMakesButtons) {
    const struct {
        const char* why;
        int width, height, format;
        std::size_t buttons;
    } cases[] = {
        {"no picture", 0, 0, PixelFormat32bppARGB, 0},
        {"24 bits", 128, 256, PixelFormat24bppRGB, 0},
        {"too wide", 256, 256, PixelFormat32bppARGB, 0},
        {"too low", 128, 255, PixelFormat32bppARGB, 0},
        {"fits", 128, 256, PixelFormat32bppARGB, 7},
    };
    for (const auto& c : cases) {
        fs::remove(sheet);
        SaveMarkedPng(sheet, c.width, c.height, c.format);
        Open();
        std::vector<SeenImage> images = Look().images;
        std::erase_if(images, [](const SeenImage& image) { return image.y < 0; });
        EXPECT_EQ(images.size(), c.buttons) << c.why;
        Press(InPanel(50, 20));
        EXPECT_EQ(Runs(kRepeatTimer), c.buttons != 0) << c.why;
        Release(InPanel(50, 20));
        DestroyWindow(window);
    }
}

TEST_F(ButtonsTest, SheetIsLookedForBesideTheProgramAndNeverInTheCurrentFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder);
    const std::wstring there = commandLine;
    const std::wstring beside = (folder / L"host.exe").wstring();
    const struct {
        const char* why;
        std::wstring commandLine, program;
        bool found;
    } cases[] = {
        {"named by the command line", there, L"", true},
        {"beside the program", L"host.exe", beside, true},
        {"neither tells a folder", L"host.exe", L"", false},
        {"nor a whole path", L".\\host.exe", L"host.exe", false},
    };
    for (const auto& c : cases) {
        commandLine = c.commandLine;
        program = c.program;
        Open();
        EXPECT_EQ(ShowsAt(38, 6), c.found) << c.why;
        DestroyWindow(window);
    }
    fs::current_path(before);
}

TEST_F(ButtonsTest, EachShowsItsOwnLooksAndActs) {
    // Place, the lower left pixel of the lit look, and what one press changes.
    const struct {
        int key;
        int x, y;
        double u, v;
        SeenView step;
    } buttons[] = {
        {VK_DOWN, 38, 6, 32, 0, {0, -1, 0}},
        {VK_LEFT, 6, 38, 0, 32, {0, 0, 1}},
        {VK_HOME, 38, 38, 32, 32, {}},
        {VK_RIGHT, 70, 38, 64, 32, {0, 0, -1}},
        {VK_ADD, 6, 70, 0, 64, {0.1, 0, 0}},
        {VK_UP, 38, 70, 32, 64, {0, 1, 0}},
        {VK_SUBTRACT, 70, 70, 0, 0, {-0.1, 0, 0}},
    };
    Open();
    for (const auto& b : buttons) {
        SCOPED_TRACE(b.key);
        Home();
        const SeenImage image = ImageAt(b.x, b.y);
        EXPECT_EQ(image.s, b.u / 128);
        EXPECT_EQ(image.t, b.v / 256 + kUnlit);
        EXPECT_EQ(image.width, 32);
        EXPECT_EQ(image.height, 32);
        // Left and bottom edge are inside, right and top edge are not.
        const std::pair<POINT, bool> places[] = {
            {{0, 0}, true}, {{32, 0}, false}, {{0, 32}, false}, {{31, 31}, true}};
        for (const auto& [place, lit] : places) {
            Hover(InPanel(b.x + place.x, b.y + place.y));
            EXPECT_EQ(IsLit(b.x, b.y, b.v), lit) << place.x << ' ' << place.y;
        }
        TakeRepaintRequest();
        SendMessageW(window, WM_MOUSELEAVE, 0, 0);
        EXPECT_TRUE(TakeRepaintRequest());
        EXPECT_FALSE(IsLit(b.x, b.y, b.v));
        if (b.key == VK_HOME) continue;

        // Arrows and zoom act at once and again and again while they are held.
        const auto expectSteps = [&](int times) {
            const double spin = times * b.step.spin;
            ExpectView({-12.2 + times * b.step.distance, 40.0 + times * b.step.tilt,
                        spin < 0 ? spin + 360 : spin},
                       std::to_string(times));
        };
        Press(InPanel(b.x + 10, b.y + 10));
        EXPECT_TRUE(IsLit(b.x, b.y, b.v));
        ASSERT_TRUE(Runs(kRepeatTimer));
        EXPECT_EQ(timers[kRepeatTimer], 30U);
        expectSteps(1);
        Tick(kRepeatTimer);
        Drag({300, 300});  // neither turns the globe nor ends the repeat
        Tick(kRepeatTimer);
        expectSteps(3);
        Release({300, 300});
        EXPECT_FALSE(Runs(kRepeatTimer));
        EXPECT_FALSE(Runs(kFlightTimer)) << "no click";
        Tick(kRepeatTimer);  // one that was under way
        expectSteps(3);
    }
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(ButtonsTest, HomeActsOnReleaseOverIt) {
    Open();
    const POINT home = InPanel(50, 50);
    const struct {
        const char* why;
        POINT press, release;
        bool acts;
    } cases[] = {
        {"released elsewhere", home, {300, 300}, false},
        {"released over another button", home, InPanel(50, 80), false},
        {"pressed elsewhere", {300, 300}, home, false},
        {"released over it", home, InPanel(69, 69), true},
    };
    for (const auto& c : cases) {
        Home();
        Key(window, VK_UP);
        Press(c.press);
        EXPECT_FALSE(Runs(kRepeatTimer)) << c.why;
        EXPECT_EQ(LookAtView().tilt, 41.0) << c.why << ": not yet";
        Drag(c.release);
        Release(c.release);
        EXPECT_FALSE(Runs(kFlightTimer)) << c.why << ": flies";
        EXPECT_EQ(LookAtView().tilt == 40.0, c.acts) << c.why;
        EXPECT_FALSE(IsLit(38, 38, 32)) << c.why << ": dark until the next move";
    }
}

TEST_F(ButtonsTest, LostCaptureEndsTheRepeat) {
    Open();
    Press(InPanel(50, 20));
    ASSERT_TRUE(Runs(kRepeatTimer));
    const double before = LookAtView().tilt;
    ReleaseCapture();  // a message box comes up
    Tick(kRepeatTimer);
    EXPECT_FALSE(Runs(kRepeatTimer));
    EXPECT_EQ(LookAtView().tilt, before);
    Hover({400, 300});
    Click({400, 200});
    EXPECT_TRUE(Runs(kFlightTimer)) << "the next click is a click again";
}

TEST_F(ButtonsTest, ARepeatBeginsOnlyAfterAKeyThatLeftTheButtonHeld) {
    const struct {
        const char* why;
        std::function<void()> act;
        bool repeats;
    } cases[] = {
        {"looks on", [&] { EXPECT_FALSE(Runs(kRepeatTimer)) << "the key comes first"; }, true},
        {"takes the capture", [&] { SetCapture(host); }, false},
        {"opens and closes another window", [&] { DestroyWindow(CreateMap()); }, true},
        {"destroys the window", [&] { DestroyWindow(window); }, false},
    };
    Open();
    for (const auto& c : cases) {
        beforeKey = c.act;
        Press(InPanel(50, 20));
        EXPECT_EQ(Runs(kRepeatTimer), c.repeats) << c.why;
        Release(InPanel(50, 20));
    }
}

TEST_F(ButtonsTest, AddPhotoShowsWhileTheHostAcceptsAndOpensItsPage) {
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, L"Add a photo");
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, nullptr);  // changes nothing
    Open();
    const int y = PhotosButtonY();
    const POINT button = InPanel(50, y + 20);
    EXPECT_FALSE(ShowsAt(4, y)) << "nobody asked the host yet";
    Click(button);
    EXPECT_THAT(opened, IsEmpty());

    consent = 1;
    Show(0);
    const SeenImage image = ImageAt(4, y);
    EXPECT_EQ(image, (SeenRect{kPanelX + 4, static_cast<double>(y), 100, 24}));
    EXPECT_EQ(image.t, 96.0 / 256 + kUnlit);
    EXPECT_FALSE(Look().Has("Add a photo")) << "the pointer is elsewhere";
    Hover(button);
    EXPECT_TRUE(IsLit(4, y, 96));
    EXPECT_EQ(Look().PlaceOf("Add a photo"),
              SeenPlace(kPanelX - 1 - WidthOf("Add a photo"), y + 4 + (24 - LineHeight()) / 2.0));
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, std::wstring(400, L'w').c_str());
    EXPECT_EQ(Look().PlaceOf(std::string(400, 'w')).first, 0.0)
        << "further left OpenGL would drop it";

    Press(button);
    EXPECT_THAT(opened, IsEmpty()) << "on release only";
    Release(button);
    EXPECT_THAT(opened, ElementsAre(testing::EndsWith(L"/add_photo.htm")));

    consent = 0;
    Show(0);
    Hover(button);
    EXPECT_FALSE(ShowsAt(4, y));
    EXPECT_FALSE(Look().Has(std::string(400, 'w')));

    consent = 1;
    Show(0);
    Look();
    whileOpening = [&] { DestroyWindow(window); };
    Click(button);
    EXPECT_EQ(opened.size(), 2U);
    EXPECT_FALSE(IsWindow(window)) << "it may go while a page opens";
    EXPECT_THAT(timers, IsEmpty());
}

TEST_F(ButtonsTest, PagingButtonsShowWhereTheyLeadSomewhere) {
    photos.PutCity(L"France\\Paris", 17, 64, 32);
    photos.PutCity(L"France\\Lyon", 4, 64, 32);
    consent = 1;
    Open();
    const int y = kOpenHeight - 2 * LineHeight() - 59 + 4;
    const auto breakLast = [&] {
        fs::resize_file(PhotoDisk::Root() / L"France\\Paris\\1.jpg", 0);
        Show(1);
        Show(0);
    };
    const auto photosChanged = [&] { SendMessageW(window, HORIVO_MSG_PHOTOS_CHANGED, 0, 1); };
    const struct {
        const char* why;
        std::function<void()> act;
        bool previous, next;
    } steps[] = {
        {"all fit", [&] { Show(1); }, false, false},
        {"more than fit", [&] { Show(0); }, false, true},
        {"forward to the last", [&] { Click(InPanel(63, y + 5)); }, true, false},
        {"back", [&] { Click(InPanel(44, y + 5)); }, true, true},
        {"what follows cannot be loaded", breakLast, false, true},
        {"a page of nothing is taken back", [&] { Click(InPanel(63, y + 5)); }, false, false},
        {"the same place again", [&] { Show(0); }, false, false},
        {"the host has new photos", photosChanged, false, true},
        {"a page of nothing once more", [&] { Key(window, VK_NEXT); }, false, false},
        {"another place and back", [&] { Show(1), Show(0); }, false, true},
    };
    for (const auto& step : steps) {
        step.act();
        EXPECT_EQ(ShowsAt(40, y), step.previous) << step.why;
        EXPECT_EQ(ShowsAt(59, y), step.next) << step.why;
    }
}

}  // namespace
