#include "window/host_window.h"

#include <shellapi.h>
#include <windowsx.h>

#include <algorithm>

#include "clock/time_texts.h"
#include "data/data_folder.h"
#include "horivo_host.h"
#include "resource_ids.h"
#include "texts.h"
#include "user_messages.h"
#include "window/dialogs.h"
#include "window/host_menu.h"

namespace {

constexpr wchar_t kClass[] = L"Horivo sample host";
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr UINT kClockMs = 1000;  // a new minute shows at most this late
// Pixels at 96 dots per inch.
constexpr int kMapWidth = 800;
constexpr int kMapHeight = 640;

SYSTEMTIME UniversalTime() {
    SYSTEMTIME utc{};
    GetSystemTime(&utc);
    return utc;
}

std::wstring DifferenceFromHere(const SYSTEMTIME& utc, const LocalTime& there) {
    const std::wstring text =
        DifferenceText(there.offsetMinutes - CityTimes::Here(utc).offsetMinutes);
    const std::size_t blank = text.find(L' ');
    return LocalText(IDS_STATUS_DIFFERENCE, text.substr(0, blank),
                     blank == std::wstring::npos ? L"" : text.substr(blank + 1));
}

}  // namespace

HostWindow::HostWindow(ProgramData& data, Program& program)
    : data_(data), program_(program), list_(data.cities, data.times) {}

void HostWindow::RegisterOnce() {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Proc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = kClass;
    RegisterClassExW(&windowClass);
}

bool HostWindow::Open(const WindowStart& start, std::uint32_t& status) {
    status = HORIVO_OK;
    withList_ = start.withList;
    RegisterOnce();
    CreateWindowExW(0, kClass, L"", kStyle, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                    CW_USEDEFAULT, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    if (handle_ == nullptr) return false;
    if (!Build(status)) {
        SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
        DestroyWindow(handle_);
        return false;
    }
    GivePlace(start);
    const bool maximized = start.mapSize.cx == 0 && data_.settings.maximized;
    ShowWindow(handle_, maximized ? SW_SHOWMAXIMIZED : SW_SHOW);
    map_.Follow();
    SetFocus(map_.Window());
    return true;
}

/// The map comes first: it reads its picture while the rest is made.
bool HostWindow::Build(std::uint32_t& status) {
    look_ = std::make_unique<ScaledLook>(GetDpiForWindow(handle_));
    const RECT area{0, 0, look_->Pixels(kMapWidth), look_->Pixels(kMapHeight)};
    if (!map_.Create(handle_, area, status)) return false;
    if (!list_.Create(handle_) || !status_.Create(handle_)) return false;
    list_.SortBy(static_cast<CityColumn>(data_.settings.sortColumn), data_.settings.sortDescending);
    list_.Show(withList_);
    ApplyLanguage();
    SetTimer(handle_, kClockTimer, kClockMs, nullptr);
    return true;
}

void HostWindow::GivePlace(const WindowStart& start) {
    SIZE mapSize = start.mapSize;
    if (mapSize.cx == 0) {
        RECT place = data_.settings.place;
        if (start.isFirst && FitToScreen(place)) {
            SetWindowPos(handle_, nullptr, place.left, place.top, place.right - place.left,
                         place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
            return;
        }
        mapSize = {look_->Pixels(kMapWidth), look_->Pixels(kMapHeight)};
    }
    RECT frame{0, 0, mapSize.cx + (withList_ ? list_.Width() : 0), mapSize.cy + statusHeight_};
    AdjustWindowRectExForDpi(&frame, kStyle, TRUE, 0, look_->Dpi());
    RECT now{};
    GetWindowRect(handle_, &now);
    const LONG width = frame.right - frame.left;
    const LONG height = frame.bottom - frame.top;
    // A map as large as the screen lies there with all its pixels, and the frame's edges outside.
    const LONG left = std::clamp(now.left, frame.left,
                                 std::max(frame.left, GetSystemMetrics(SM_CXSCREEN) - width));
    const LONG top = std::clamp(now.top, 0L, std::max(0L, GetSystemMetrics(SM_CYSCREEN) - height));
    SetWindowPos(handle_, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT HostWindow::MapArea() const {
    RECT area{};
    GetClientRect(handle_, &area);
    area.bottom = std::max(area.top, area.bottom - statusHeight_);
    if (withList_) {
        const LONG spare = std::max(0L, area.right - look_->Pixels(kMapAtLeast));
        area.left = std::min(static_cast<LONG>(list_.Width()), spare);
    }
    return area;
}

void HostWindow::Arrange() {
    if (look_ == nullptr || IsIconic(handle_)) return;
    statusHeight_ = status_.Place(*look_);
    const RECT map = MapArea();
    if (withList_) list_.Place({0, 0, map.left, map.bottom}, *look_);
    map_.Place(map);
}

void HostWindow::UseScaling(UINT dpi) {
    auto look = std::make_unique<ScaledLook>(dpi);
    list_.SetLook(*look);
    status_.SetLook(*look);
    look_ = std::move(look);
    Arrange();
}

void HostWindow::ApplyLanguage() {
    GiveMenu(handle_, FindLanguage(data_.settings.language).command, IsFeatureEnabled(kNoPhotos));
    list_.SetTexts();
    ShowTitle();
    ShowTimes();
    UseScaling(look_->Dpi());
}

void HostWindow::ShowTitle() {
    std::wstring title = LocalText(IDS_TITLE);
    const std::int32_t selected = list_.Selected();
    if (selected >= 0) {
        title = std::wstring(data_.cities[static_cast<std::size_t>(selected)].cityName) + L" - " +
                title;
    }
    SetWindowTextW(handle_, title.c_str());
}

void HostWindow::ShowTimes() {
    const SYSTEMTIME utc = UniversalTime();
    shownMinute_ = utc.wMinute;
    list_.Refresh(utc);
    const std::wstring all = std::to_wstring(data_.cities.size());
    const std::wstring shown = std::to_wstring(list_.RowCount());
    const std::wstring count = list_.RowCount() == data_.cities.size()
                                   ? LocalText(IDS_STATUS_CITIES, all)
                                   : LocalText(IDS_STATUS_CITIES_OF, shown, all);
    status_.SetTexts(SelectedCityText(utc), count, LocalText(IDS_STATUS_UTC, TimeText(utc)),
                     *look_);
}

std::wstring HostWindow::SelectedCityText(const SYSTEMTIME& utc) const {
    if (list_.Selected() < 0) return {};
    const CityRecord& city = data_.cities[static_cast<std::size_t>(list_.Selected())];
    std::wstring text = std::wstring(city.cityName) + L", " + city.countryName;
    LocalTime there{};
    if (data_.times.At(city, utc, there)) {
        for (const std::wstring& part :
             {TimeText(there.time), DateText(there.time), DifferenceFromHere(utc, there)}) {
            text += L"  \x2022  " + part;
        }
    }
    return text;
}

bool HostWindow::TakeFocusKey(const MSG& message) {
    // Not IsDialogMessage: the map answers no question about the keys that it wants, and would lose
    // its arrow keys. Under Wine the map is not even a child here.
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB) return false;
    HWND ring[] = {list_.Field(), list_.List(), map_.Window()};
    HWND* const end = ring + 3;
    HWND* at = std::find(ring, end, GetFocus());
    if (at == end || !withList_) return false;
    const bool back = GetKeyState(VK_SHIFT) < 0;
    HWND* next = back ? (at == ring ? end - 1 : at - 1) : (at + 1 == end ? ring : at + 1);
    if (*next != nullptr) SetFocus(*next);
    return true;
}

void HostWindow::ShowSelectedCity() {
    ShowTitle();
    ShowTimes();
    FlyToSelected();
}

void HostWindow::FlyToSelected() {
    if (list_.Selected() < 0 || map_.Window() == nullptr) return;
    SendMessageW(
        map_.Window(), HORIVO_MSG_CITY, 0,
        reinterpret_cast<LPARAM>(&data_.cities[static_cast<std::size_t>(list_.Selected())]));
}

void HostWindow::CityClicked(std::int32_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= data_.cities.size()) return;
    list_.Select(index);
    ShowTitle();
    ShowTimes();
}

void HostWindow::OpenPhotoFolder() {
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(handle_, L"open", PhotoFolder().c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    constexpr INT_PTR kFirstSuccess = 33;  // ShellExecute: lower values are errors
    if (result < kFirstSuccess) TellUser(handle_, IDS_FOLDER_FAILED);
}

void HostWindow::Do(std::uint32_t command) {
    for (const Language& language : Languages()) {
        if (language.command == command) program_.ChooseLanguage(language);
    }
    for (int i = 0; i < MapKeyRepeats(command) && map_.Window() != nullptr; ++i) {
        SendMessageW(map_.Window(), WM_KEYDOWN, static_cast<WPARAM>(MapKeyOf(command)), 1);
    }
    switch (command) {
        case IDM_NEW_WINDOW:
            program_.OpenAnother(handle_, withList_);
            break;
        case IDM_CLOSE_WINDOW:
            SendMessageW(handle_, WM_CLOSE, 0, 0);
            break;
        case IDM_OPEN_PHOTO_FOLDER:
            OpenPhotoFolder();
            break;
        case IDM_EXIT:
            program_.CloseAll();
            break;
        case IDM_SEARCH:
            SetFocus(list_.Field());
            SendMessageW(list_.Field(), EM_SETSEL, 0, -1);
            break;
        case IDM_FLY_TO_CITY:
            FlyToSelected();
            break;
        case IDM_KEYS:
            ShowKeys(handle_, look_->Font());
            break;
        case IDM_ABOUT:
            ShowAbout(handle_, look_->Font());
            break;
        default:
            break;
    }
}

void HostWindow::KeepPlace() const {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(handle_, &placement)) return;
    data_.settings.place = placement.rcNormalPosition;
    data_.settings.maximized = IsZoomed(handle_) != FALSE;
    data_.settings.sortColumn = static_cast<int>(list_.SortColumn());
    data_.settings.sortDescending = list_.SortDescending();
}
