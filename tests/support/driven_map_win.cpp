#include "support/driven_map_win.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "support/gl_spy_win.h"

namespace {

constexpr SYSTEMTIME kNoonInJuly = {2024, 7, 1, 1, 12, 0, 0, 0};

/// Stands for the host's hidden window: nothing but its name and its answer is looked at.
const HWND kHidden = reinterpret_cast<HWND>(std::uintptr_t{0x5A5A});

}  // namespace

DrivenMapTest::DrivenMapTest()
    : setTimer_(library.module,
                [this](HWND, UINT_PTR id, UINT period, TIMERPROC) -> UINT_PTR {
                    timers[id] = period;
                    return id;
                }),
      killTimer_(library.module,
                 [this](HWND, UINT_PTR id) -> BOOL { return timers.erase(id) > 0; }),
      getCursorPos_(library.module,
                    [this](POINT* point) -> BOOL {
                        *point = cursor;
                        return ClientToScreen(window, point);
                    }),
      findWindow_(library.module,
                  [this](const wchar_t* name, const wchar_t* title) -> HWND {
                      EXPECT_STREQ(name, L"zhv_MainHidden");
                      EXPECT_EQ(title, nullptr);
                      return hasHidden ? kHidden : nullptr;
                  }),
      sendMessage_(library.module,
                   [this](HWND to, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
                       if (to == kHidden) {
                           EXPECT_EQ(message, UINT{HORIVO_MSG_MAY_SHOW_PHOTOS});
                           asked.push_back({message, wParam, lParam});
                           if (const auto act = std::exchange(whileAsked, nullptr)) act();
                           return consent;
                       }
                       if (to == window && message == WM_KEYDOWN) {
                           if (const auto act = std::exchange(beforeKey, nullptr)) act();
                       }
                       const LRESULT answer = Send::Real(to, message, wParam, lParam);
                       if (to == host) {
                           if (const auto act = std::exchange(whileTold, nullptr)) act();
                       }
                       return answer;
                   }),
      shellExecute_(library.module,
                    [this](HWND, const wchar_t* verb, const wchar_t* page,
                           const wchar_t* parameters, const wchar_t* folder, INT show) {
                        EXPECT_STREQ(verb, L"open");
                        EXPECT_EQ(parameters, nullptr);
                        EXPECT_STREQ(folder, L".\\");
                        EXPECT_EQ(show, SW_SHOWNORMAL);
                        EXPECT_EQ(std::wstring(page).find(L"https://"), 0U);
                        opened.emplace_back(page);
                        if (whileOpening) whileOpening();
                        return HINSTANCE{};
                    }) {
    FixedClock() = kNoonInJuly;
    SpiedGl().keepCalls = false;
    PutPatternMap(64, 32);
    PutSettings("lag_factor=8\r\n");  // a coarse globe: quick pictures
}

DrivenMapTest::~DrivenMapTest() {
    if (window != nullptr && IsWindow(window)) DestroyWindow(window);
}

CityRecord& DrivenMapTest::AddCity(const wchar_t* name, const wchar_t* country, double latitude,
                                   double longitude, std::uint32_t zone) {
    CityRecord city = {};
    std::copy_n(name, std::min<std::size_t>(std::wcslen(name), 63), city.cityName);
    std::copy_n(country, std::min<std::size_t>(std::wcslen(country), 63), city.countryName);
    city.latitude = latitude;
    city.longitude = longitude;
    city.timeZoneId = zone;
    return cities.emplace_back(city);
}

void DrivenMapTest::Open(int width, int height) {
    Init();
    SpiedGl().uploads.clear();
    window = CreateMap(width, height);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(WaitForTiles());
    PumpPending();
    Paint(window);
}

void DrivenMapTest::ZoomIn() { Wheel(-32760); }

SeenOverlay DrivenMapTest::Look() {
    GlSpyRecord& record = SpiedGl();
    record.calls.clear();
    record.texts.clear();
    record.keepCalls = record.keepTexts = true;
    Paint(window);
    record.keepCalls = record.keepTexts = false;
    return OverlayOfPicture(record.calls, record.texts);
}

SeenView DrivenMapTest::LookAtView() {
    Look();
    return ViewOfPicture(SpiedGl().calls);
}

bool DrivenMapTest::TakeRepaintRequest() const {
    const bool wanted = GetUpdateRect(window, nullptr, FALSE) != FALSE;
    ValidateRect(window, nullptr);
    return wanted;
}

POINT DrivenMapTest::PixelOf(double latitude, double longitude) {
    return PixelOfPlace(LookAtView(), latitude, longitude);
}

SIZE DrivenMapTest::SizeOf(const std::string& text) const {
    SIZE size = {};
    const HDC dc = GetDC(window);  // its own: the font is in it
    GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
    ReleaseDC(window, dc);
    return size;
}

void DrivenMapTest::Pointer(UINT message, WPARAM buttons, POINT at) const {
    SendMessageW(window, message, buttons, MAKELPARAM(at.x, at.y));
}

void DrivenMapTest::Click(POINT at) const {
    Press(at);
    Release(at);
}

int DrivenMapTest::Fly() const {
    int steps = 0;
    for (; Runs(kFlightTimer) && steps < 1000; ++steps) Tick(kFlightTimer);
    return steps;
}

void DrivenMapTest::Wheel(int delta) const {
    SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
}
