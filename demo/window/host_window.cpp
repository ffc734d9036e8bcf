#include "window/host_window.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "clock/start_city.h"
#include "horivo_host.h"
#include "resource_ids.h"
#include "texts.h"
#include "window/host_menu.h"

namespace {

constexpr wchar_t kClass[] = L"Horivo sample host";
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
// Default size of the map, pixels at 96 dots per inch.
constexpr int kMapWidth = 800;
constexpr int kMapHeight = 640;

}  // namespace

HostWindow::HostWindow(ProgramData& data, Program& program)
    : data_(data), program_(program), list_(data) {}

void HostWindow::RegisterOnce() {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Proc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hIcon = LoadIconW(windowClass.hInstance, MAKEINTRESOURCEW(IDI_PROGRAM));
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = kClass;
    RegisterClassExW(&windowClass);
}

bool HostWindow::Open(bool isFirst, std::uint32_t& status) {
    status = HORIVO_OK;
    withList_ = IsFeatureEnabled(kNoTimeTable);
    RegisterOnce();
    CreateWindowExW(0, kClass, L"", kStyle, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                    CW_USEDEFAULT, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    if (handle_ == nullptr) return false;
    if (!CreateParts(status)) {
        DestroyWindow(handle_);
        return false;
    }
    SetInitialPlace(isFirst);
    SetOnTop(data_.settings.alwaysOnTop);
    ShowWindow(handle_, data_.settings.maximized ? SW_SHOWMAXIMIZED : SW_SHOW);
    map_.FollowHost();
    SetFocus(withList_ ? list_.Field() : map_.Window());
    ShowStartCity();
    if (!isFirst) FlyToSelected();
    return true;
}

/// Selects the city that was chosen last, or else a city in the user's own time zone.
void HostWindow::ShowStartCity() {
    std::int32_t city = FindCity(data_.cities, data_.settings.city, data_.settings.country);
    if (city < 0) city = FindCityHere(data_.cities);
    Show(city);
}

/// Creates the map and the controls. Creates the map first, so that a thread of the library loads
/// the picture of the map while this function creates the controls.
bool HostWindow::CreateParts(std::uint32_t& status) {
    scale_ = std::make_unique<UiScale>(GetDpiForWindow(handle_));
    const RECT area{0, 0, scale_->Pixels(kMapWidth), scale_->Pixels(kMapHeight)};
    if (!map_.Create(handle_, area, status)) return false;
    if (!list_.Create(handle_) || !statusBar_.Create(handle_)) return false;
    list_.SortBy(static_cast<CityColumn>(data_.settings.sortColumn), data_.settings.sortDescending);
    list_.Show(withList_);
    WaitForNextMinute();  // first: a minute that begins meanwhile is not missed
    ApplyLanguage();
    return true;
}

void HostWindow::SetInitialPlace(bool isFirst) {
    RECT place = data_.settings.place;
    if (!isFirst || !FitToScreen(place)) place = DefaultPlace();
    SetWindowPos(handle_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Computes the place of the window for a map of the default size: at the corner where Windows has
/// put the window, then moved and shrunk to be on the screen.
RECT HostWindow::DefaultPlace() const {
    RECT place{0, 0, scale_->Pixels(kMapWidth) + (withList_ ? list_.Width() : 0),
               scale_->Pixels(kMapHeight) + statusHeight_};
    AdjustWindowRectExForDpi(&place, kStyle, TRUE, 0, scale_->Dpi());
    RECT now{};
    GetWindowRect(handle_, &now);
    OffsetRect(&place, now.left - place.left, now.top - place.top);
    FitToScreen(place);
    return place;
}

RECT HostWindow::MapArea() const {
    RECT area{};
    GetClientRect(handle_, &area);
    area.bottom = std::max(area.top, area.bottom - statusHeight_);
    if (withList_) {
        const LONG spare = std::max(0L, area.right - scale_->Pixels(kMinMapWidth));
        area.left = std::min(static_cast<LONG>(list_.Width()), spare);
    }
    return area;
}

void HostWindow::Arrange() {
    if (scale_ == nullptr || IsIconic(handle_)) return;
    statusHeight_ = statusBar_.Place(*scale_);
    const RECT map = MapArea();
    if (withList_) list_.Place({0, 0, map.left, map.bottom}, *scale_);
    map_.Place(map);
}

void HostWindow::ApplyScaling(UINT dpi) {
    auto scale = std::make_unique<UiScale>(dpi);
    list_.SetScale(*scale);
    statusBar_.SetScale(*scale);
    scale_ = std::move(scale);
    Arrange();
}

void HostWindow::ApplyLanguage() {
    SetLocalizedMenu(handle_, FindLanguage(data_.settings.language).command,
                     IsFeatureEnabled(kNoPhotos));
    SetLocalString(HORIVO_TEXT_ADD_PHOTO, LocalText(IDS_ADD_PHOTO).c_str());
    list_.SetTexts();
    ShowTitle();
    ShowTimes();
    ApplyScaling(scale_->Dpi());
}

void HostWindow::ShowTitle() {
    std::wstring title = LocalText(IDS_TITLE);
    const std::int32_t selected = list_.Selected();
    if (selected >= 0) {
        title = data_.names[static_cast<std::size_t>(selected)].city[0] + L" - " + title;
    }
    SetWindowTextW(handle_, title.c_str());
}

bool HostWindow::TakeKey(const MSG& message) {
    // Does not call IsDialogMessage: the map would not get the arrow keys, because the map does not
    // answer WM_GETDLGCODE. Also, under Wine the map is not a child of this window.
    if (message.message != WM_KEYDOWN) return false;
    if (message.wParam == VK_TAB) return MoveFocus();
    const bool inField = message.hwnd == list_.Field();
    if (message.wParam == VK_ESCAPE && (inField || message.hwnd == list_.List())) {
        list_.ClearField();
        SetFocus(list_.Field());
    } else if (message.wParam == VK_RETURN && inField) {
        ChooseFirst();
    } else if (message.wParam == VK_DOWN && inField) {
        if (list_.SelectedRow() < 0) ChooseFirst();
        SetFocus(list_.List());
    } else {
        return false;
    }
    return true;
}

/// Moves the focus to the next part in the order field, list, map; with Shift to the previous part.
bool HostWindow::MoveFocus() {
    const HWND order[] = {list_.Field(), list_.List(), map_.Window()};
    const HWND* const at = std::find(std::begin(order), std::end(order), GetFocus());
    if (at == std::end(order) || !withList_) return false;
    const std::ptrdiff_t step = GetKeyState(VK_SHIFT) < 0 ? std::ssize(order) - 1 : 1;
    const HWND next = order[(at - order + step) % std::ssize(order)];
    if (next != nullptr) SetFocus(next);
    return true;
}

/// Flies to the first city of the list and chooses it. With an empty search field, flies to the
/// city that is selected already, if there is one.
void HostWindow::ChooseFirst() {
    if (GetWindowTextLengthW(list_.Field()) > 0 || list_.Selected() < 0) {
        if (list_.First() < 0) return;
        Choose(list_.First());
    }
    FlyToSelected();
}

/// Shows a city that the user has chosen, and stores it for the next start of the program.
void HostWindow::Choose(std::int32_t city) {
    if (city < 0 || static_cast<std::size_t>(city) >= data_.cities.size()) return;
    data_.settings.city = data_.cities[static_cast<std::size_t>(city)].cityName;
    data_.settings.country = data_.cities[static_cast<std::size_t>(city)].countryName;
    Show(city);
}

/// Shows a city in list, title and status bar.
void HostWindow::Show(std::int32_t city) {
    list_.Select(city);
    ShowTitle();
    ShowTimes();
}

void HostWindow::FlyToSelected() {
    if (list_.Selected() < 0 || map_.Window() == nullptr) return;
    SendMessageW(
        map_.Window(), HORIVO_MSG_CITY, 0,
        reinterpret_cast<LPARAM>(&data_.cities[static_cast<std::size_t>(list_.Selected())]));
}

void HostWindow::StorePlace() const {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(handle_, &placement)) return;
    // Windows counts rcNormalPosition from the corner of the work area. With a taskbar at the upper
    // or the left edge, this is not the corner of the screen.
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(handle_, MONITOR_DEFAULTTONEAREST), &monitor);
    OffsetRect(&placement.rcNormalPosition, monitor.rcWork.left - monitor.rcMonitor.left,
               monitor.rcWork.top - monitor.rcMonitor.top);
    data_.settings.place = placement.rcNormalPosition;
    data_.settings.maximized = IsZoomed(handle_) != FALSE;
    data_.settings.sortColumn = static_cast<int>(list_.SortColumn());
    data_.settings.sortDescending = list_.SortDescending();
}
