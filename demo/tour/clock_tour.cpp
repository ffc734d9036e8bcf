#include "tour/clock_tour.h"

#include <functional>
#include <utility>

#include "resource_ids.h"
#include "tour/map_driver.h"
#include "tour/tour.h"
#include "tour/tour_stops.h"

namespace {

constexpr DWORD kSettleMs = 400;  // a menu or dialog draws itself
constexpr DWORD kZonesPatienceMs = 30000;
constexpr int kMenus = 4;
constexpr wchar_t kClickedCity[] = L"Rome";

struct TourLanguage {
    const wchar_t* name;  ///< in the pictures' names
    std::uint32_t command;
};

constexpr TourLanguage kTourLanguages[] = {
    {L"english", IDM_LANGUAGE_ENGLISH},
    {L"german", IDM_LANGUAGE_GERMAN},
    {L"russian", IDM_LANGUAGE_RUSSIAN},
    {L"japanese", IDM_LANGUAGE_JAPANESE},
};

/// Takes pictures from inside the modal loop of a menu or a dialog, and ends it.
class Peeper {
public:
    Peeper(std::function<void()> look, std::function<void()> end)
        : look_(std::move(look)), end_(std::move(end)) {
        current_ = this;
        timer_ = SetTimer(nullptr, 0, kSettleMs, Ring);
    }
    Peeper(const Peeper&) = delete;
    Peeper& operator=(const Peeper&) = delete;
    ~Peeper() {
        KillTimer(nullptr, timer_);
        current_ = nullptr;
    }

private:
    static void CALLBACK Ring(HWND, UINT, UINT_PTR, DWORD) {
        if (current_ == nullptr) return;
        current_->look_();
        current_->end_();
    }

    static inline Peeper* current_ = nullptr;
    std::function<void()> look_;
    std::function<void()> end_;
    UINT_PTR timer_ = 0;
};

class ClockTour {
public:
    ClockTour(HostApp& app, HostWindow& window, std::wstring folder)
        : app_(app), window_(window), driver_(window.Map()), folder_(std::move(folder)) {}

    std::vector<std::wstring> Take() {
        WaitForTimes();
        for (const TourLanguage& language : kTourLanguages) VisitLanguage(language);
        Command(IDM_LANGUAGE_ENGLISH);
        VisitSearch();
        VisitClickedCity();
        VisitKeyboard();
        VisitSecondWindow();
        return failures_;
    }

private:
    void Demand(bool holds, const std::wstring& what) {
        if (!holds) failures_.push_back(what);
    }

    void Command(std::uint32_t command) {
        SendMessageW(window_.Handle(), WM_COMMAND, command, 0);
        PumpMessages(kSettleMs);
    }

    void Photograph(const std::wstring& name, HWND shown = nullptr) {
        const HWND window = shown != nullptr ? shown : window_.Handle();
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const std::wstring scaling =
            std::to_wstring(MulDiv(100, static_cast<int>(GetDpiForWindow(window_.Handle())), 96));
        const std::wstring path = folder_ + L'\\' + name + L'-' + scaling + L".png";
        Demand(SavePng(TakeScreenPicture(window), path), name + L": no picture");
    }

    void WaitForTimes() {
        const DWORD start = GetTickCount();
        while (!app_.data.times.Ready() && GetTickCount() - start < kZonesPatienceMs)
            PumpMessages(50);
        Demand(app_.data.times.Ready(), L"no time zones");
        driver_.LookWhenSettled();
    }

    void VisitLanguage(const TourLanguage& language) {
        SetFocus(window_.List().List());
        Command(language.command);
        const std::wstring name = std::wstring(L"clock-") + language.name;
        Photograph(name);
        for (int i = 0; i < kMenus; ++i) {
            PhotographMenu(i, name + L"-menu-" + std::to_wstring(i + 1));
        }
        PhotographDialog(IDM_KEYS, name + L"-keys");
        PhotographDialog(IDM_ABOUT, name + L"-about");
    }

    void PhotographMenu(int item, const std::wstring& name) {
        const Peeper peeper([&] { Photograph(name); }, [&] { EndMenu(); });
        RECT title{};
        GetMenuItemRect(window_.Handle(), GetMenu(window_.Handle()), static_cast<UINT>(item),
                        &title);
        TrackPopupMenu(GetSubMenu(GetMenu(window_.Handle()), item), TPM_LEFTALIGN, title.left,
                       title.bottom, 0, window_.Handle(), nullptr);
    }

    void PhotographDialog(std::uint32_t command, const std::wstring& name) {
        const Peeper peeper([&] { Photograph(name); },
                            [&] {
                                HWND dialog = GetLastActivePopup(window_.Handle());
                                SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                            });
        SendMessageW(window_.Handle(), WM_COMMAND, command, 0);
    }

    void VisitSearch() {
        HWND field = window_.List().Field();
        SetWindowTextW(field, L"new z");
        PumpMessages(kSettleMs);
        const std::size_t found = window_.List().RowCount();
        Demand(found > 0 && found < 10, L"search: " + std::to_wstring(found) + L" cities");
        HWND list = window_.List().List();
        ListView_SetItemState(list, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        const std::int32_t city = window_.List().Selected();
        Demand(city >= 0, L"search: nothing selected");
        driver_.LookWhenSettled();
        Photograph(L"clock-search");
        SetWindowTextW(field, L"");
        PumpMessages(kSettleMs);
        Demand(window_.List().RowCount() == app_.data.cities.size(), L"search: cities stay away");
        Demand(window_.List().Selected() == city, L"search: the selection is lost");
    }

    /// What is clicked on the map is chosen in the list, too.
    void VisitClickedCity() {
        const CityRecord* city = FindCity(app_.data.cities, kClickedCity);
        if (city == nullptr || !FlyTo(driver_, *city)) {
            return Demand(false, std::wstring(L"no flight to ") + kClickedCity);
        }
        driver_.LookWhenSettled();
        const POINT point = driver_.PointAtCity(*city);
        driver_.Click(point.x, point.y);
        Demand(window_.List().Selected() == city - app_.data.cities.data(),
               L"a click chooses no city");
        Demand(driver_.Title().starts_with(kClickedCity), L"the title does not name the city");
        driver_.LookWhenSettled();
        Photograph(L"clock-click");
    }

    void PressTab() {
        MSG tab{};
        tab.hwnd = GetFocus();
        tab.message = WM_KEYDOWN;
        tab.wParam = VK_TAB;
        Demand(window_.TakeFocusKey(tab), L"Tab is not taken");
    }

    void VisitKeyboard() {
        Command(IDM_SEARCH);
        Demand(GetFocus() == window_.List().Field(), L"Ctrl+F does not reach the field");
        PressTab();
        Demand(GetFocus() == window_.List().List(), L"Tab does not reach the list");
        PressTab();
        Demand(GetFocus() == window_.Map(), L"Tab does not reach the map");
        PressTab();
        Demand(GetFocus() == window_.List().Field(), L"Tab does not come round");
    }

    void VisitSecondWindow() {
        Command(IDM_NEW_WINDOW);
        if (app_.windows.size() != 2) return Demand(false, L"no second window");
        HostWindow& second = *app_.windows[1];
        const MapDriver other(second.Map());
        other.LookWhenSettled();
        other.Drag(300, 300, 380, 320);
        const Picture one = driver_.LookWhenSettled();
        const Picture two = other.LookWhenSettled();
        Demand(!one.pixels.empty() && !two.pixels.empty(), L"two windows: one of them is bare");
        Photograph(L"clock-second", second.Handle());
        // It goes while the picture is read again, for the window that stays.
        driver_.Press('L');
        SendMessageW(second.Handle(), WM_CLOSE, 0, 0);
        Demand(app_.windows.size() == 1, L"the second window stays");
        Demand(!driver_.LookWhenSettled().pixels.empty(), L"the first window is bare");
    }

    HostApp& app_;
    HostWindow& window_;
    MapDriver driver_;
    std::wstring folder_;
    std::vector<std::wstring> failures_;
};

}  // namespace

std::vector<std::wstring> TakeClockTour(HostApp& app, HostWindow& window,
                                        const std::wstring& folder) {
    const GdiplusSession gdiplus;
    return ClockTour(app, window, folder).Take();
}
