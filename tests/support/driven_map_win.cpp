#include "support/driven_map_win.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "support/gl_spy_win.h"

namespace {

constexpr SYSTEMTIME kNoonInJuly = {2024, 7, 1, 1, 12, 0, 0, 0};

DrivenMapTest* driven = nullptr;
WNDPROC plainParent = nullptr;

std::wstring TextOrEmpty(const wchar_t* text) { return text != nullptr ? text : L""; }

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
      // A window of that class may belong to another program on this desktop.
      findWindow_(library.module,
                  [this](const wchar_t* name, const wchar_t* title) -> HWND {
                      EXPECT_STREQ(name, L"zhv_MainHidden");
                      EXPECT_EQ(title, nullptr);
                      return hasHidden ? hidden_ : nullptr;
                  }),
      shellExecute_(
          library.module,
          [this](HWND, const wchar_t* verb, const wchar_t* page, const wchar_t* parameters,
                 const wchar_t* folder, INT show) -> HINSTANCE {
              opened.push_back({TextOrEmpty(verb), TextOrEmpty(page), TextOrEmpty(parameters),
                                TextOrEmpty(folder), show});
              if (whileOpening) whileOpening();
              return nullptr;
          }) {
    driven = this;
    FixedClock() = kNoonInJuly;
    SpiedGl().keepCalls = false;
    PutPatternMap(64, 32);
    PutSettings("lag_factor=8\r\n");  // a coarse globe: quick pictures
    CreateHidden();
    plainParent = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(host, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ParentProc)));
}

DrivenMapTest::~DrivenMapTest() {
    if (window != nullptr && IsWindow(window)) DestroyWindow(window);
    DestroyWindow(hidden_);
    driven = nullptr;
}

void DrivenMapTest::CreateHidden() {
    WNDCLASSW hiddenClass = {};
    hiddenClass.lpfnWndProc = HiddenProc;
    hiddenClass.hInstance = GetModuleHandleW(nullptr);
    hiddenClass.lpszClassName = HORIVO_HOST_WINDOW_CLASS;
    RegisterClassW(&hiddenClass);
    hidden_ = CreateWindowW(HORIVO_HOST_WINDOW_CLASS, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            hiddenClass.hInstance, nullptr);
}

LRESULT CALLBACK DrivenMapTest::HiddenProc(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    if (driven == nullptr || message != HORIVO_MSG_MAY_SHOW_PHOTOS)
        return DefWindowProcW(window, message, wParam, lParam);
    driven->asked.push_back({message, wParam, lParam});
    if (const auto act = std::exchange(driven->whileAsked, nullptr)) act();
    return driven->consent;
}

LRESULT CALLBACK DrivenMapTest::ParentProc(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    const LRESULT result = CallWindowProcW(plainParent, window, message, wParam, lParam);
    if (driven == nullptr || message != HORIVO_MSG_CITY) return result;
    if (const auto act = std::exchange(driven->whileTold, nullptr)) act();
    return result;
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

void DrivenMapTest::Wheel(int delta) const {
    SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
}
