// The overlay buttons: which sheets serve, how a button looks, when it acts.
#include <gmock/gmock.h>

#include "image/gdiplus_win.h"
#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"

namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

constexpr int kWidth = 800;
constexpr int kHeight = 600;
constexpr int kPanelX = kWidth - 108;
constexpr double kLit = 0.0;  // how far above a cell its look begins, in the texture
constexpr double kUnlit = 0.5;
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};

/// A window whose host's program stands in a folder of the test's own.
class ButtonsTest : public DrivenMapTest {
protected:
    ButtonsTest() {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        AddCity(L"Paris", L"France", 42.0, 3.0);
        AddCity(L"Lyon", L"France", 38.0, -3.0);
    }
    ~ButtonsTest() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    void PutSheet() {
        fs::copy_file(fs::path(HORIVO_ASSETS) / "buttons.png", folder_ / "buttons.png",
                      fs::copy_options::overwrite_existing);
    }
    void PutPicture(int width, int height, int format) {
        const Gdiplus::GdiplusStartupInput input;
        ULONG_PTR token = 0;
        Gdiplus::GdiplusStartup(&token, &input, nullptr);
        {
            Gdiplus::Bitmap bitmap(width, height, format);
            const fs::path path = folder_ / "buttons.png";
            EXPECT_EQ(bitmap.Save(path.c_str(), &kPngEncoder, nullptr), Gdiplus::Ok);
        }
        Gdiplus::GdiplusShutdown(token);
    }
    /// The image that stands at (x, y); null when there is none.
    static const SeenImage* At(const SeenOverlay& seen, double x, double y) {
        const auto found =
            std::find_if(seen.images.begin(), seen.images.end(),
                         [=](const SeenImage& image) { return image.x == x && image.y == y; });
        return found == seen.images.end() ? nullptr : &*found;
    }
    /// Whether the button at (x, y) of the panel shows its highlighted look.
    bool IsLit(double x, double y, double v) {
        const SeenOverlay seen = Look();
        const SeenImage* image = At(seen, kPanelX + x, y);
        EXPECT_NE(image, nullptr) << x << ' ' << y;
        return image != nullptr && image->t == v / 256 + kLit;
    }
    /// A client point by its distance from the panel's left edge and from the window's bottom.
    static POINT InPanel(int x, int y) { return {kPanelX + x, kHeight - 1 - y}; }
    double PhotosButtonY() const { return kHeight - 2 * LineHeight() - 32; }

private:
    const fs::path folder_ =
        fs::temp_directory_path() / (L"horivo-host-" + std::to_wstring(GetCurrentProcessId()));
    const std::wstring commandLine_ = L"\"" + (folder_ / L"host.exe").wstring() + L"\" -x";
    FakedImport<"GetCommandLineW", decltype(GetCommandLineW)> getCommandLine_{
        library.module, [this] { return const_cast<wchar_t*>(commandLine_.c_str()); }};
    // Where the library looks second.
    FakedImport<"GetModuleFileNameW", decltype(GetModuleFileNameW)> getModuleFileName_{
        library.module, [this](HMODULE, wchar_t* path, DWORD size) -> DWORD {
            const std::wstring nowhere = (folder_ / L"none" / L"host.exe").wstring();
            return static_cast<DWORD>(nowhere.copy(path, size));
        }};
};

// Cells of the seven that are always there: place, the lower left pixel of the lit look, and what
// one press changes.
constexpr struct {
    int key;
    int x, y;
    double u, v;
    SeenView step;
} kButtons[] = {
    {VK_DOWN, 38, 6, 32, 0, {0, -1, 0}},
    {VK_LEFT, 6, 38, 0, 32, {0, 0, 1}},
    {VK_HOME, 38, 38, 32, 32, {}},
    {VK_RIGHT, 70, 38, 64, 32, {0, 0, -1}},
    {VK_ADD, 6, 70, 0, 64, {0.1, 0, 0}},
    {VK_UP, 38, 70, 32, 64, {0, 1, 0}},
    {VK_SUBTRACT, 70, 70, 0, 0, {-0.1, 0, 0}},
};

TEST_F(ButtonsTest, OnlyAFittingSheetMakesButtons) {
    const struct {
        const char* why;
        std::function<void()> put;
        std::size_t buttons;
    } cases[] = {
        {"none", [] {}, 0},
        {"24 bits", [&] { PutPicture(128, 256, PixelFormat24bppRGB); }, 0},
        {"too wide", [&] { PutPicture(256, 256, PixelFormat32bppARGB); }, 0},
        {"too low", [&] { PutPicture(128, 255, PixelFormat32bppARGB); }, 0},
        {"clear, of the right size", [&] { PutPicture(128, 256, PixelFormat32bppARGB); }, 7},
        {"the drawn one", [&] { PutSheet(); }, 7},
    };
    for (const auto& c : cases) {
        c.put();
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

TEST_F(ButtonsTest, SheetIsUploadedFromItsLastRowUp) {
    PutSheet();
    SpiedGl().keepPixels = true;
    Open();
    const auto& uploads = SpiedGl().uploads;
    const auto sheet = std::find_if(uploads.begin(), uploads.end(), [](const SpiedUpload& upload) {
        return upload.width == 128 && upload.height == 256;
    });
    ASSERT_NE(sheet, uploads.end());
    EXPECT_EQ(sheet->internalFormat, 4);
    EXPECT_EQ(sheet->format, GLenum{GL_RGBA});
    // The photos button: 100 x 24 in rows 8 to 31 of the picture; beside it nothing is drawn.
    const auto alphaSum = [&](int x, int width, int firstRow, int rows) {
        int sum = 0;
        for (int row = firstRow; row < firstRow + rows; ++row) {
            for (int i = x; i < x + width; ++i)
                sum += sheet->pixels[static_cast<std::size_t>(((255 - row) * 128 + i) * 4 + 3)];
        }
        return sum;
    };
    EXPECT_GT(alphaSum(0, 100, 8, 24), 100 * 24 * 20);
    EXPECT_GT(alphaSum(32, 32, 64, 32), 32 * 32 * 20) << "home";
    EXPECT_EQ(alphaSum(64, 9, 96, 13), 0) << "the clear upper part of the next button";
}

TEST_F(ButtonsTest, EachShowsItsOwnLooksAndActs) {
    PutSheet();
    Open();
    for (const auto& b : kButtons) {
        SCOPED_TRACE(b.key);
        Key(window, VK_HOME);
        const SeenOverlay rest = Look();
        const SeenImage* image = At(rest, kPanelX + b.x, b.y);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->s, b.u / 128);
        EXPECT_EQ(image->t, b.v / 256 + kUnlit);
        EXPECT_EQ(image->width, 32);
        EXPECT_EQ(image->height, 32);
        // Left and bottom edge are inside, right and top edge are not.
        const std::pair<POINT, bool> places[] = {{{b.x, b.y}, true},
                                                 {{b.x + 32, b.y}, false},
                                                 {{b.x + 31, b.y + 31}, true},
                                                 {{b.x, b.y + 32}, false},
                                                 {{b.x + 5, b.y + 5}, true}};
        for (const auto& [place, lit] : places) {
            Hover(InPanel(place.x, place.y));
            EXPECT_EQ(IsLit(b.x, b.y, b.v), lit) << place.x - b.x << ' ' << place.y - b.y;
        }
        TakeRepaintRequest();
        SendMessageW(window, WM_MOUSELEAVE, 0, 0);
        EXPECT_TRUE(TakeRepaintRequest());
        EXPECT_FALSE(IsLit(b.x, b.y, b.v));
        if (b.key == VK_HOME) continue;

        // Arrows and zoom act at once and again and again while they are held.
        const auto expectSteps = [&](int times) {
            const SeenView view = LookAtView();
            EXPECT_NEAR(view.distance, -12.2 + times * b.step.distance, 1e-4);
            EXPECT_NEAR(view.tilt, 40.0 + times * b.step.tilt, 1e-4);
            EXPECT_NEAR(std::remainder(view.spin - times * b.step.spin, 360.0), 0.0, 1e-4);
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
    EXPECT_TRUE(messages.empty());
}

TEST_F(ButtonsTest, HomeActsOnReleaseOverIt) {
    PutSheet();
    Open();
    const POINT home = InPanel(50, 50);
    const auto turned = [&] { return LookAtView().tilt != 40.0; };
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
        Key(window, VK_HOME);
        Key(window, VK_UP);
        Press(c.press);
        EXPECT_FALSE(Runs(kRepeatTimer)) << c.why;
        EXPECT_TRUE(turned()) << c.why << ": not yet";
        Drag(c.release);
        Release(c.release);
        if (Runs(kFlightTimer)) ADD_FAILURE() << c.why << ": flies";
        EXPECT_EQ(!turned(), c.acts) << c.why;
        EXPECT_FALSE(IsLit(38, 38, 32)) << c.why << ": dark until the next move";
        Hover(home);
        EXPECT_TRUE(IsLit(38, 38, 32)) << c.why;
    }
}

TEST_F(ButtonsTest, LostCaptureEndsTheRepeat) {
    PutSheet();
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

TEST_F(ButtonsTest, AddPhotoShowsWhileTheHostAcceptsAndOpensItsPage) {
    PutSheet();
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, L"Add a photo");
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, nullptr);  // changes nothing
    Open();
    const double y = PhotosButtonY();
    const POINT button = InPanel(50, static_cast<int>(y) + 20);
    EXPECT_EQ(At(Look(), kPanelX + 4, y), nullptr) << "nobody asked the host yet";
    Click(button);
    EXPECT_THAT(opened, IsEmpty());

    consent = 1;
    SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&cities[0]));
    Key(window, VK_HOME);
    SeenOverlay seen = Look();
    const SeenImage* image = At(seen, kPanelX + 4, y);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->width, 100);
    EXPECT_EQ(image->height, 24);
    EXPECT_EQ(image->t, 96.0 / 256 + kUnlit);
    EXPECT_EQ(seen.Find("Add a photo"), nullptr) << "the pointer is elsewhere";

    Hover(button);
    EXPECT_TRUE(IsLit(4, y, 96));
    seen = Look();
    const SeenText* hint = seen.Find("Add a photo");
    ASSERT_NE(hint, nullptr);
    EXPECT_EQ(hint->x + WidthOf("Add a photo"), kPanelX - 1);
    EXPECT_EQ(hint->y, y + 4 + (24 - LineHeight()) / 2.0);
    library.SetLocalString(HORIVO_TEXT_ADD_PHOTO, std::wstring(400, L'w').c_str());
    seen = Look();
    hint = seen.Find(std::string(400, 'w'));
    ASSERT_NE(hint, nullptr);
    EXPECT_EQ(hint->x, 0.0) << "further left OpenGL would drop it";

    Press(button);
    EXPECT_THAT(opened, IsEmpty()) << "on release only";
    Release(button);
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(opened[0].verb, L"open");
    EXPECT_TRUE(opened[0].page.ends_with(L"/add_photo.htm"))
        << testing::PrintToString(opened[0].page);
    EXPECT_TRUE(opened[0].page.starts_with(L"https://"));
    EXPECT_EQ(opened[0].parameters, L"");
    EXPECT_EQ(opened[0].folder, L".\\");
    EXPECT_EQ(opened[0].show, SW_SHOWNORMAL);

    consent = 0;
    SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&cities[0]));
    Key(window, VK_HOME);
    Hover(button);
    seen = Look();
    EXPECT_EQ(At(seen, kPanelX + 4, y), nullptr);
    EXPECT_EQ(seen.Find("Add a photo"), nullptr);
}

TEST_F(ButtonsTest, PagingButtonsShowWhereTheyLeadSomewhere) {
    PutSheet();
    photos.PutCity(L"France\\Paris", 17, 64, 32);
    photos.PutCity(L"France\\Lyon", 4, 64, 32);
    consent = 1;
    Open();
    const double y = kHeight - 2 * LineHeight() - 59 + 4;
    const auto expectButtons = [&](bool previous, bool next) {
        const SeenOverlay seen = Look();
        EXPECT_EQ(At(seen, kPanelX + 40, y) != nullptr, previous);
        EXPECT_EQ(At(seen, kPanelX + 59, y) != nullptr, next);
    };
    const auto show = [&](std::size_t city) {
        SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&cities[city]));
        Key(window, VK_HOME);
    };
    show(1);
    expectButtons(false, false);
    show(0);
    expectButtons(false, true);
    Click(InPanel(63, static_cast<int>(y) + 5));
    expectButtons(true, false);
    Click(InPanel(44, static_cast<int>(y) + 5));
    expectButtons(true, true);
}

TEST_F(ButtonsTest, WindowMayGoWhileAPageOpens) {
    PutSheet();
    Open();
    consent = 1;
    SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&cities[0]));
    Key(window, VK_HOME);
    Look();
    whileOpening = [&] { DestroyWindow(window); };
    Click(InPanel(50, static_cast<int>(PhotosButtonY()) + 20));
    EXPECT_EQ(opened.size(), 1U);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(timers.size(), 0U);
}

}  // namespace
