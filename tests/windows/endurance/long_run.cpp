#include "long_run.h"

#include <gmock/gmock.h>

#include "support/gl_spy_win.h"

LongRunTest::LongRunTest() {
    SpiedGl().keepCalls = false;
    for (int i = 0; i < 40; ++i) {
        CityRecord city = {};
        std::wcscpy(city.cityName, i == 0 ? L"Paris" : L"Elsewhere");
        std::wcscpy(city.countryName, i % 4 == 0 ? L"France" : L"Nowhere");
        city.latitude = i == 0 ? 42.0 : i * 4.0 - 70.0;
        city.longitude = i == 0 ? 3.0 : i * 9.0 - 160.0;
        city.timeZoneId = static_cast<std::uint32_t>(10 + i % 30);
        sane.push_back(city);
    }
    cities = sane;
    photos.PutCity(L"France\\Paris", 6);
    WNDCLASSW hidden = {};
    hidden.lpfnWndProc = HiddenProc;
    hidden.hInstance = GetModuleHandleW(nullptr);
    hidden.lpszClassName = HORIVO_HOST_WINDOW_CLASS;
    RegisterClassW(&hidden);
    hidden_ = CreateWindowW(HORIVO_HOST_WINDOW_CLASS, nullptr, 0, 0, 0, 0, 0, nullptr, nullptr,
                            hidden.hInstance, nullptr);
    SetWindowLongPtrW(hidden_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LongRunTest::~LongRunTest() {
    DestroyWindow(hidden_);
    UnregisterClassW(HORIVO_HOST_WINDOW_CLASS, GetModuleHandleW(nullptr));
}

void LongRunTest::PutFiles(int mapWidth) {
    EmptyDataFolder();
    PutPatternMap(mapWidth, mapWidth / 2);
    PutSettings("lag_factor=8\r\n");
}

HWND LongRunTest::Make(int width, int height) {
    library.CreateMapWindow(nullptr, 0, 0, 9, 9, &status);  // refused for another reason
    const DWORD before = library.GetLastSysError();
    const HWND made = CreateMap(width, height);
    if (made != nullptr) {
        EXPECT_EQ(status, HORIVO_OK);
    } else if (before != ERROR_CLASS_DOES_NOT_EXIST && before != ERROR_CANNOT_FIND_WND_CLASS) {
        EXPECT_NE(library.GetLastSysError(), before);
        EXPECT_THAT(status, testing::AnyOf(HORIVO_OK, HORIVO_NO_PIXEL_FORMAT,
                                           HORIVO_PIXEL_FORMAT_REFUSED, HORIVO_CONTEXT_FAILED));
    }
    return made;
}

LRESULT CALLBACK LongRunTest::HiddenProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* test = reinterpret_cast<LongRunTest*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (test == nullptr || message != HORIVO_MSG_MAY_SHOW_PHOTOS)
        return DefWindowProcW(window, message, wParam, lParam);
    return test->Consent(reinterpret_cast<HWND>(lParam));
}
