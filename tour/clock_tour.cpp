#include "tour/clock_tour.h"

#include <functional>
#include <span>
#include <stdexcept>
#include <utility>

#include "resource_ids.h"
#include "tour/attempt.h"
#include "tour/map_driver.h"

namespace {

constexpr DWORD kSettleMs = 400;  // after this time a menu, a dialog or a new text is drawn
constexpr DWORD kZonesTimeoutMs = 30000;
constexpr DWORD kZonesLookMs = 50;
constexpr int kMenus = 4;
constexpr wchar_t kClickedCity[] = L"Rome";

/// What a user types, and the first city that is then listed.
struct Search {
    const wchar_t* typed;
    const wchar_t* first;
};

// The second search differs from the city's name in accents or forms of letters.
constexpr struct {
    const wchar_t* name;  // in the names of the pictures
    std::uint32_t command;
    Search searches[2];
} kLanguages[] = {
    {L"english", IDM_LANGUAGE_ENGLISH, {{L"par", L"Paris"}, {L"malmö", L"Malmo"}}},
    {L"german", IDM_LANGUAGE_GERMAN, {{L"peki", L"Peking"}, {L"munchen", L"München"}}},
    {L"spanish", IDM_LANGUAGE_SPANISH, {{L"par", L"París"}, {L"pekin", L"Pekín"}}},
    {L"french", IDM_LANGUAGE_FRENCH, {{L"par", L"Paris"}, {L"geneve", L"Genève"}}},
    {L"russian", IDM_LANGUAGE_RUSSIAN, {{L"пар", L"Париж"}, {L"шанхаи", L"Шанхай"}}},
    {L"japanese", IDM_LANGUAGE_JAPANESE, {{L"東", L"東京"}, {L"ぱり", L"パリ"}}},
};

void Require(bool holds, const char* failure) {
    if (!holds) throw std::runtime_error(failure);
}

/// Calls a function after kSettleMs, also from the message loop of a menu or a modal dialog.
class ModalTimer {
public:
    explicit ModalTimer(std::function<void()> act)
        : timer_(SetTimer(nullptr, 0, kSettleMs, OnTimer)) {
        act_ = std::move(act);
    }
    ModalTimer(const ModalTimer&) = delete;
    ModalTimer& operator=(const ModalTimer&) = delete;
    ~ModalTimer() { KillTimer(nullptr, timer_); }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept { act_(); }

    static inline std::function<void()> act_;
    UINT_PTR timer_;
};

class ClockTour {
public:
    ClockTour(HostApp& app, std::wstring folder)
        : app_(app),
          window_(*app.windows[0]),
          map_(window_.Map(), app.data.cities),
          folder_(std::move(folder)) {}

    void WaitForTimes() {
        const DWORD start = GetTickCount();
        // Column 3 has the offset from UTC; it is empty until the time zones are read.
        while (TextInList(0, 3).empty()) {
            Require(GetTickCount() - start < kZonesTimeoutMs, "the list shows no times");
            PumpMessages(kZonesLookMs);
        }
        map_.LookWhenSettled();
    }

    void ShowLanguages() {
        for (const auto& language : kLanguages) {
            SetFocus(list_);
            Command(language.command);
            const std::wstring name = std::wstring(L"clock-") + language.name;
            SaveScreen(name);
            for (int i = 0; i < kMenus; ++i) ShowMenu(i, name + L"-menu-" + std::to_wstring(i + 1));
            ShowDialog(IDM_KEYS, name + L"-keys");
            ShowDialog(IDM_ABOUT, name + L"-about");
            ShowSearches(language.searches, name + L"-search-");
        }
        Command(IDM_LANGUAGE_ENGLISH);
    }

    void ClickCity() {
        map_.FlyTo(kClickedCity);
        const POINT point = map_.PointAtCity(kClickedCity);
        map_.Click(point.x, point.y);
        Require(SelectedCity() == kClickedCity, "a click on the map does not select the city");
        Require(map_.TitleNames(kClickedCity), "the title does not name the clicked city");
        map_.LookWhenSettled();
        SaveScreen(L"clock-click");
    }

    void MoveFocus() {
        Command(IDM_SEARCH);
        Require(GetFocus() == field_, "Ctrl+F does not move the focus to the field");
        for (const HWND next : {list_, window_.Map(), field_}) {
            Press(VK_TAB);
            Require(GetFocus() == next, "Tab does not move the focus from field to list to map");
        }
        Type(L"lima");
        Press(VK_DOWN);
        Require(GetFocus() == list_ && SelectedCity() == L"Lima", "Down does not choose a hit");
        Press(VK_ESCAPE);
        Require(GetFocus() == field_ && Rows() == app_.data.cities.size(),
                "Escape does not clear the search");
        Require(SelectedCity() == L"Lima", "the search loses the selection");
    }

    void OpenSecondWindow() {
        Command(IDM_NEW_WINDOW);
        Require(app_.windows.size() == 2, "there is no second window");
        const HostWindow& second = *app_.windows[1];
        const MapDriver other(second.Map(), app_.data.cities);
        other.LookWhenSettled();
        other.Drag();
        map_.LookWhenSettled();
        other.LookWhenSettled();
        Save(Screen(second.Handle()), L"clock-second");
        // Closes the second window while the map of the first window loads its picture again.
        map_.Press('L');
        SendMessageW(second.Handle(), WM_CLOSE, 0, 0);
        Require(app_.windows.size() == 1, "the second window does not close");
        map_.LookWhenSettled();
    }

private:
    void Command(std::uint32_t command) {
        SendMessageW(window_.Handle(), WM_COMMAND, command, 0);
        PumpMessages(kSettleMs);
    }

    /// Presses a key in the window with the focus. Calls HostWindow::TakeKey, because the tour does
    /// not run the message loop of HostApp, which otherwise calls TakeKey.
    void Press(WPARAM key) {
        MSG press{};
        press.hwnd = GetFocus();
        press.message = WM_KEYDOWN;
        press.wParam = key;
        Require(window_.TakeKey(press), "a key of the window does nothing");
    }

    void Type(const wchar_t* text) {
        SetFocus(field_);
        SetWindowTextW(field_, L"");
        for (; *text != L'\0'; ++text) SendMessageW(field_, WM_CHAR, *text, 1);
        PumpMessages(kSettleMs);
    }

    /// Takes pictures of each search, of the city that Enter then flies to, and of a search that
    /// finds nothing.
    void ShowSearches(std::span<const Search> searches, const std::wstring& name) {
        for (const Search& search : searches) {
            Type(search.typed);
            Require(TextInList(0, 0) == search.first, "the search finds another city first");
            SaveScreen(name + std::to_wstring(&search - searches.data() + 1));
        }
        Press(VK_RETURN);
        map_.LookWhenSettled();
        SaveScreen(name + L"enter");
        Type(L"xyzzy");
        Require(Rows() == 0, "a search finds what is not there");
        SaveScreen(name + L"none");
        Press(VK_ESCAPE);
    }

    std::size_t Rows() const { return static_cast<std::size_t>(ListView_GetItemCount(list_)); }

    std::wstring TextInList(int row, int column) const {
        wchar_t text[64] = {};
        ListView_GetItemText(list_, row, column, text, 64);
        return text;
    }

    std::wstring SelectedCity() const {
        return TextInList(ListView_GetNextItem(list_, -1, LVNI_SELECTED), 0);
    }

    static Picture Screen(HWND window) {
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        return CaptureScreen(window);
    }

    /// Saves a picture under `name`, to which it adds the scaling in percent.
    void Save(Picture picture, const std::wstring& name) const {
        const int scaling = MulDiv(100, static_cast<int>(GetDpiForWindow(window_.Handle())),
                                   USER_DEFAULT_SCREEN_DPI);
        SavePng(picture, folder_ + L'\\' + name + L'-' + std::to_wstring(scaling) + L".png");
    }

    void SaveScreen(const std::wstring& name) const { Save(Screen(window_.Handle()), name); }

    void ShowMenu(int item, const std::wstring& name) const {
        const HMENU menu = GetMenu(window_.Handle());
        Picture picture;
        const ModalTimer timer([&] {
            picture = Screen(window_.Handle());
            EndMenu();
        });
        RECT title{};
        GetMenuItemRect(window_.Handle(), menu, static_cast<UINT>(item), &title);
        TrackPopupMenu(GetSubMenu(menu, item), TPM_LEFTALIGN, title.left, title.bottom, 0,
                       window_.Handle(), nullptr);
        Save(std::move(picture), name);
    }

    void ShowDialog(std::uint32_t command, const std::wstring& name) const {
        Picture picture;
        const ModalTimer timer([&] {
            picture = Screen(window_.Handle());
            SendMessageW(GetLastActivePopup(window_.Handle()), WM_COMMAND, IDCANCEL, 0);
        });
        SendMessageW(window_.Handle(), WM_COMMAND, command, 0);
        Save(std::move(picture), name);
    }

    HostApp& app_;
    HostWindow& window_;
    MapDriver map_;
    std::wstring folder_;
    HWND field_ = FindWindowExW(window_.Handle(), nullptr, WC_EDITW, nullptr);
    HWND list_ = FindWindowExW(window_.Handle(), nullptr, WC_LISTVIEWW, nullptr);
};

}  // namespace

bool TakeClockTour(HostApp& app, const std::wstring& folder) {
    constexpr struct {
        const wchar_t* name;
        void (ClockTour::*take)();
    } kParts[] = {{L"times", &ClockTour::WaitForTimes},
                  {L"languages", &ClockTour::ShowLanguages},
                  {L"click", &ClockTour::ClickCity},
                  {L"keyboard", &ClockTour::MoveFocus},
                  {L"windows", &ClockTour::OpenSecondWindow}};
    ClockTour tour(app, folder);
    bool complete = true;
    for (const auto& part : kParts) {
        complete = Attempt(part.name,
                           [&] {
                               (tour.*part.take)();
                               return true;
                           }) &&
                   complete;
    }
    return complete;
}
