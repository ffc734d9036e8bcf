#include "long_run.h"

#include <cstdio>

#include "support/gl_spy_win.h"

std::uint64_t SeedOfRun() {
    const char* wanted = std::getenv("HORIVO_SEED");
    const auto seed = wanted != nullptr ? std::strtoul(wanted, nullptr, 10) : GetTickCount();
    std::fprintf(stderr, "HORIVO_SEED=%lu repeats this run\n", seed);
    return std::uint64_t{seed} << 32;  // the states of two runs shall not meet
}

WatchedLibrary::WatchedLibrary(HMODULE module, Dice& dice, const std::atomic<bool>& slow)
    : ledger(module),
      workers(module),
      boxes(module, [](auto...) { return IDOK; }),
      dice_(dice),
      slow_(slow),
      browser_(module, [](auto...) { return HINSTANCE{}; }),
      wait_(module, [this](HANDLE handle, DWORD wait) { return WaitFor(handle, wait); }),
      post_(module, [this](auto... arguments) {
          Dawdle();
          return Post::Real(arguments...);
      }) {}

DWORD WatchedLibrary::WaitFor(HANDLE handle, DWORD wait) {
    Dawdle();
    // Waits of minutes become moments, so that giving up is tried as well as waiting.
    if (slow_ && wait != INFINITE && (wait == kWorkerEndWaitMs || dice_.OneIn(4)))
        wait = static_cast<DWORD>(dice_.Roll(wait == kWorkerEndWaitMs ? 200 : 20));
    const DWORD result = Wait::Real(handle, wait);
    Dawdle();
    return result;
}

LongRunTest::LongRunTest() {
    SpiedGl().keepCalls = false;
    for (int i = 0; i < 40; ++i) {
        CityRecord& city = sane.emplace_back();
        std::wcscpy(city.cityName, i == 0 ? L"Paris" : L"Elsewhere");
        std::wcscpy(city.countryName, i % 4 == 0 ? L"France" : L"Nowhere");
        city.latitude = i == 0 ? 42.0 : i * 4.0 - 70.0;
        city.longitude = i == 0 ? 3.0 : i * 9.0 - 160.0;
        city.timeZoneId = static_cast<std::uint32_t>(10 + i % 30);
    }
    cities = sane;
    photos.PutCity(L"France\\Paris", 6);
    test_ = this;
    WNDCLASSW hidden = {};
    hidden.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        return message == HORIVO_MSG_MAY_SHOW_PHOTOS
                   ? test_->Consent(reinterpret_cast<HWND>(lParam))
                   : DefWindowProcW(window, message, wParam, lParam);
    };
    hidden.lpszClassName = HORIVO_HOST_WINDOW_CLASS;
    RegisterClassW(&hidden);
    hidden_ = CreateWindowW(HORIVO_HOST_WINDOW_CLASS, nullptr, 0, 0, 0, 0, 0, nullptr, nullptr,
                            nullptr, nullptr);
    watched.emplace(library.module, dice, slow);
}

LongRunTest::~LongRunTest() {
    slow = false;
    DestroyAll();
    library.FreeMap();
    Rest();
    DestroyWindow(hidden_);
    UnregisterClassW(HORIVO_HOST_WINDOW_CLASS, nullptr);
}

void LongRunTest::PutFiles(int mapWidth) {
    EmptyDataFolder();
    PutPatternMap(mapWidth, mapWidth / 2);
    PutSettings("lag_factor=8\r\n");
}

void LongRunTest::DestroyAll() const {
    while (const HWND child = GetWindow(host, GW_CHILD)) DestroyWindow(child);
}

HWND LongRunTest::Make(int width, int height) {
    library.CreateMapWindow(nullptr, 0, 0, 9, 9, &status);  // refused for another reason
    const DWORD before = library.GetLastSysError();
    const HWND made = CreateMap(width, height);
    const bool unsure =
        before == ERROR_CLASS_DOES_NOT_EXIST || before == ERROR_CANNOT_FIND_WND_CLASS;
    EXPECT_TRUE(made != nullptr || unsure || library.GetLastSysError() != before) << before;
    EXPECT_TRUE(made == nullptr || status == HORIVO_OK) << status;
    return made;
}
