// The times that a host window shows, and the timer that renews them at each minute.

#include "window/host_window.h"

#include "clock/time_texts.h"
#include "resource_ids.h"
#include "texts.h"
#include "window/clipboard.h"

namespace {

constexpr UINT kMinuteMs = 60000;

SYSTEMTIME UniversalTime() {
    SYSTEMTIME utc{};
    GetSystemTime(&utc);
    return utc;
}

std::wstring DifferenceFromHere(const SYSTEMTIME& utc, const LocalTime& there) {
    const std::wstring text =
        DifferenceText(there.offsetMinutes - CityTimes::Here(utc).offsetMinutes);
    const std::size_t space = text.find(L' ');
    return LocalText(IDS_STATUS_DIFFERENCE, text.substr(0, space),
                     space == std::wstring::npos ? L"" : text.substr(space + 1));
}

}  // namespace

void HostWindow::ShowTimes() {
    const SYSTEMTIME utc = UniversalTime();
    shownMinute_ = utc.wMinute;
    list_.Refresh(utc);
    const std::wstring all = std::to_wstring(data_.cities.size());
    const std::wstring shown = std::to_wstring(list_.RowCount());
    const std::wstring count = list_.RowCount() == data_.cities.size()
                                   ? LocalText(IDS_STATUS_CITIES, all)
                                   : LocalText(IDS_STATUS_CITIES_OF, shown, all);
    statusBar_.SetTexts(SelectedCityText(utc), count, LocalText(IDS_STATUS_UTC, TimeText(utc)),
                        *scale_);
}

std::wstring HostWindow::SelectedCityText(const SYSTEMTIME& utc) const {
    if (list_.Selected() < 0) return {};
    const auto city = static_cast<std::size_t>(list_.Selected());
    std::wstring text = data_.names[city].city[0] + L", " + data_.names[city].country[0];
    LocalTime there{};
    if (data_.times.At(data_.cities[city], utc, there)) {
        for (const std::wstring& part :
             {TimeText(there.time), DateText(there.time), DifferenceFromHere(utc, there)}) {
            text += L"  \x2022  " + part;
        }
    }
    return text;
}

/// Starts the timer for the next minute. It replaces the timer that runs already, if there is one.
void HostWindow::WaitForNextMinute() {
    const SYSTEMTIME now = UniversalTime();
    SetTimer(handle_, kClockTimer, kMinuteMs - (now.wSecond * 1000U + now.wMilliseconds), nullptr);
}

/// Shows the times of a new minute, and asks the map for a frame, because the map does not redraw
/// by itself when the Sun moves. Does neither when the timer was early, as it may be by some
/// milliseconds.
void HostWindow::OnClockTimer() {
    WaitForNextMinute();
    if (UniversalTime().wMinute == shownMinute_) return;
    ShowTimes();
    if (HWND map = map_.Window(); map != nullptr) InvalidateRect(map, nullptr, FALSE);
}

/// Shows the times after the clock of the computer was set or the computer has woken up, also when
/// the minute that is shown has the same number as the present one, in another hour.
void HostWindow::OnClockSet() {
    if (scale_ == nullptr) return;
    shownMinute_ = kNoMinute;
    OnClockTimer();
}

/// Copies a text such as "Paris 14:05 Sunday" for the selected city. When the search field has the
/// focus and a selection, copies the selected text instead.
void HostWindow::CopyTime() const {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(list_.Field(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    LocalTime there{};
    if (GetFocus() == list_.Field() && start != end) {
        SendMessageW(list_.Field(), WM_COPY, 0, 0);
    } else if (const auto city = static_cast<std::size_t>(list_.Selected());
               list_.Selected() >= 0 &&
               data_.times.At(data_.cities[city], UniversalTime(), there)) {
        CopyText(handle_, data_.names[city].city[0] + L' ' + TimeText(there.time) + L' ' +
                              DayText(there.time));
    }
}
