#pragma once
// A map window whose surroundings belong to the test: its timers run by hand, its clock stands, its
// workers wait where they are told to, and cursor, browser, message boxes and the host's hidden
// window are the test's own. It is driven by lines of actions, such as
//   Play("move Paris; runs hover 500; tick hover; asked 1; titles Paris | France");
// Verbs act or expect; the table in the source says what each does. A failure names the line, the
// action in it and why it matters.

#include <map>

#include "support/photo_disk_win.h"
#include "support/seen_picture_win.h"
// shellapi.h needs windows.h before it.
#include <shellapi.h>

class MapPlay : public MapHostTest {
public:
    using Rows = std::initializer_list<std::pair<std::string, std::string>>;  ///< why, actions
    // Numbers that hosts were built with.
    enum Message : UINT { kCity = 32968, kMayShow = 32978, kNewPhotos = 32979 };
    static constexpr WPARAM kFlightTimer = 2;
    static constexpr WPARAM kSunTimer = 4;
    static constexpr int kOpenWidth = 800;  ///< of the window, where a test says nothing
    static constexpr int kOpenHeight = 600;
    static constexpr int kPanelX = kOpenWidth - 108;

    MapPlay() {
        FixedClock() = {2024, 7, 1, 1, 12, 0, 0, 0};
        SpiedGl().keepCalls = false;
        PutPatternMap(64, 32);
        PutSettings("lag_factor=8\r\n");  // a coarse globe: quick pictures
    }
    ~MapPlay() override { CloseAll(); }

    /// Plays actions that are parted by semicolons.
    void Play(const std::string& actions, const std::string& why = "");
    /// Plays each row behind `first`.
    void PlayRows(const std::string& first, Rows rows);

    /// Appends a city; its zone is a HORIVO_TIME_ZONES number. Only before Open.
    CityRecord& AddCity(const std::wstring& name, const std::wstring& country, double latitude,
                        double longitude, std::uint32_t zone = 0) {
        CityRecord& city = cities.emplace_back();
        name.copy(city.cityName, 63);
        country.copy(city.countryName, 63);
        city.latitude = latitude;
        city.longitude = longitude;
        city.timeZoneId = zone;
        return city;
    }
    /// Hands the cities over and makes the window, with its map.
    void Open(int width = kOpenWidth, int height = kOpenHeight) {
        Init();
        SpiedGl().uploads.clear();
        window = CreateMap(width, height);
        ASSERT_TRUE(WaitForTiles());
        PumpPending();
        Paint(window);
    }
    void CloseAll() {
        while (const HWND child = GetWindow(host, GW_CHILD)) DestroyWindow(child);
    }
    void Send(UINT message, WPARAM w, LPARAM l) const { SendMessageW(window, message, w, l); }
    void Pointer(UINT message, WPARAM buttons, POINT at) {
        cursor = at;
        Send(message, buttons, MAKELPARAM(at.x, at.y));
    }
    void Hover(POINT at) { Pointer(WM_MOUSEMOVE, 0, at); }
    void Click(POINT at) {
        Pointer(WM_LBUTTONDOWN, MK_LBUTTON, at);
        Pointer(WM_LBUTTONUP, 0, at);
    }
    /// Zooms as near as it goes: 0.03 degrees a pixel in the middle of the globe.
    void ZoomIn() const { Send(WM_MOUSEWHEEL, MAKEWPARAM(0, -32760), 0); }
    /// Ends a flight; back to the view of the start.
    void Home() const { Key(window, VK_HOME); }
    /// Lets a timer of the window come round once, whether it runs or not.
    void Tick(WPARAM timer) const { Send(WM_TIMER, timer, 0); }
    /// The host's request.
    void ShowCity(const CityRecord& city) const { Send(kCity, 0, reinterpret_cast<LPARAM>(&city)); }

    /// Paints and reads what was painted.
    SeenOverlay Look() {
        GlSpyRecord& record = SpiedGl();
        record.calls.clear();
        record.texts.clear();
        record.keepCalls = record.keepTexts = true;
        Paint(window);
        record.keepCalls = record.keepTexts = false;
        return OverlayOfPicture(record.calls, record.texts);
    }
    SeenView LookAtView() {
        Look();
        return ViewOfPicture(SpiedGl().calls);
    }
    /// The photos of the picture, from the top.
    std::vector<SeenImage> Photos() {
        std::vector<SeenImage> images = Look().images;
        // A photo that does not fit stands above the window. Buttons have another size.
        std::erase_if(images, [&](const SeenImage& image) {
            return image.y >= ClientHeight() || image.y < 0 || image.width <= 32 || image.t != 0;
        });
        return images;
    }
    /// The texts of the picture but for the readout of the pointed place.
    std::vector<std::string> Labels() {
        std::vector<std::string> words = Look().Words();
        std::erase_if(words, [](const std::string& word) { return word.starts_with("Lat "); });
        return words;
    }
    /// Size of a text in the map's font, pixels.
    SIZE SizeOf(const std::string& text) const {
        SIZE size = {};
        const WindowDc dc(window);  // its own: the font is in it
        GetTextExtentPoint32A(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
        return size;
    }
    int WidthOf(const std::string& text) const { return static_cast<int>(SizeOf(text).cx); }
    int LineHeight() const { return static_cast<int>(SizeOf("M").cy); }
    /// The client point that shows a place of the globe's front.
    POINT PixelOf(double lat, double lon) { return PixelOfPlace(LookAtView(), lat, lon); }
    /// What a word says: "x,y" is a client point, "px,y" is counted from the panel's left edge and
    /// the window's bottom, "40:-0.2" shows a latitude and a longitude, "photo2" is the middle of
    /// the second photo from the top, "photo2+0,63" a pixel from its lower left corner; else the
    /// name of a point in `points` or of a city.
    POINT At(const std::string& word);
    int ClientHeight() const {
        RECT client = {};
        GetClientRect(window, &client);
        return client.bottom;
    }
    /// Checks the tiles uploaded since the last look against those of the first set, pixel by pixel
    /// where they are kept. @return the number of sets
    std::size_t TakeTileSets() {
        const std::vector<SpiedUpload> uploads = std::exchange(SpiedGl().uploads, {});
        EXPECT_EQ(uploads.size() % 8, 0U);
        if (rightTiles.empty()) rightTiles = uploads;
        for (std::size_t i = 0; i < uploads.size(); ++i)
            EXPECT_TRUE(uploads[i].pixels == rightTiles[i % 8].pixels) << "tile " << i % 8;
        return uploads.size() / 8;
    }

    HWND window = nullptr;
    std::map<std::string, HWND> windows;  ///< for "create" and "use"
    std::map<std::string, POINT> points;
    std::map<std::string, std::function<void()>> acts;  ///< for "do", and once for "when"
    std::map<UINT_PTR, UINT> timers;                    ///< that run, with their periods in ms
    POINT cursor = {};                                  ///< client point of the cursor
    LRESULT consent = 0;                                ///< answer of the host's hidden window
    std::string asked;                                  ///< indices that it was asked about
    std::string heard;                                  ///< those of which its parent heard
    std::string opened;  ///< the ends of pages that were handed to the browser
    int boxes = 0;       ///< shown since the last look
    bool contextLost = false;
    SeenView marked;  ///< the view of "mark"
    std::vector<SpiedUpload> rightTiles;
    PhotoDisk photos;
    WorkerWatch workers{library.module};

private:
    /// Does what a test has put there for this moment, once.
    void Come(const std::string& moment) {
        if (const auto act = std::exchange(acts[moment], nullptr)) act();
    }

    /// Stands for the host's hidden window: only its name and its answer are looked at.
    static inline const HWND kHidden = reinterpret_cast<HWND>(std::uintptr_t{0x5A5A});
    FakedImport<"SetTimer", decltype(SetTimer)> setTimer_{
        library.module, [this](HWND, UINT_PTR id, UINT period, TIMERPROC) {
            timers[id] = period;
            return id;
        }};
    FakedImport<"KillTimer", decltype(KillTimer)> killTimer_{
        library.module, [this](HWND, UINT_PTR id) { return timers.erase(id) > 0; }};
    FakedImport<"GetCursorPos", decltype(GetCursorPos)> getCursorPos_{
        library.module, [this](POINT* at) { return ClientToScreen(window, &(*at = cursor)); }};
    FakedImport<"FindWindowW", decltype(FindWindowW)> findWindow_{
        library.module, [](auto* name, auto*) {
            EXPECT_STREQ(name, L"zhv_MainHidden");
            return kHidden;
        }};
    FakedImport<"SendMessageW", decltype(SendMessageW)> sendMessage_{
        library.module, [this](HWND to, UINT message, WPARAM wParam, LPARAM lParam) {
            const std::string index = ' ' + std::to_string(static_cast<int>(wParam));
            if (to == kHidden) {
                EXPECT_TRUE(message == kMayShow && lParam == reinterpret_cast<LPARAM>(window));
                asked += index;
                Come("asked");
                return consent;
            }
            if (to == window && message == WM_KEYDOWN) Come("key");
            const LRESULT answer = decltype(sendMessage_)::Real(to, message, wParam, lParam);
            if (to != host) return answer;
            EXPECT_TRUE(message == kCity && lParam == reinterpret_cast<LPARAM>(&cities[wParam]));
            heard += index;
            Come("told");
            return answer;
        }};
    FakedImport<"ShellExecuteW", decltype(ShellExecuteW)> shellExecute_{
        library.module,
        [this](HWND, std::wstring verb, std::wstring page, auto*, std::wstring folder, int show) {
            EXPECT_TRUE(verb == L"open" && folder == L".\\" && show == SW_SHOWNORMAL);
            EXPECT_TRUE(page.starts_with(L"https://"));
            opened += ' ' + std::string(page.begin() + page.rfind(L'/'), page.end());
            Come("opening");
            return HINSTANCE{};
        }};
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> messageBox_{
        library.module, [this](HWND owner, std::wstring text, std::wstring title, UINT style) {
            EXPECT_TRUE(owner == host && title == L"Error" && style == MB_ICONERROR);
            EXPECT_TRUE(text.starts_with(L"Can not load textures.\n Check for the \"map.jpg\""));
            ++boxes;
            Come("box");
            return IDOK;
        }};
    FakedImport<"wglMakeCurrent", decltype(wglMakeCurrent)> makeCurrent_{
        library.module, [this](HDC dc, HGLRC context) {
            if (contextLost && context != nullptr) return FALSE;
            return decltype(makeCurrent_)::Real(dc, context);
        }};
};
