#include "window/city_list.h"

#include <algorithm>

#include "clock/time_texts.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

constexpr int kMargin = 6;         // pixels at 96 dots per inch, as all sizes below
constexpr int kCellPadding = 18;   // beside a text in its column, and room for the sort arrow
constexpr int kNameAtLeast = 100;  // of the city column
constexpr int kMostFieldChars = 63;

constexpr std::uint32_t kTitles[] = {IDS_COLUMN_CITY, IDS_COLUMN_TIME, IDS_COLUMN_DATE,
                                     IDS_COLUMN_OFFSET};
constexpr int kColumns = 4;

HWND MakeChild(HWND parent, const wchar_t* windowClass, DWORD style, DWORD exStyle) {
    return CreateWindowExW(exStyle, windowClass, L"", WS_CHILD | style, 0, 0, 0, 0, parent, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

bool CityList::Create(HWND parent) {
    // The label stands before the field: that gives the field its name for assistive tools.
    label_ = MakeChild(parent, L"STATIC", SS_NOPREFIX | SS_ENDELLIPSIS, 0);
    field_ = MakeChild(parent, L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
    list_ = MakeChild(parent, WC_LISTVIEWW,
                      WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                      WS_EX_CLIENTEDGE);
    if (label_ == nullptr || field_ == nullptr || list_ == nullptr) return false;
    SendMessageW(field_, EM_LIMITTEXT, kMostFieldChars, 0);
    constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    ListView_SetExtendedListViewStyleEx(list_, kStyle, kStyle);
    for (int i = 0; i < kColumns; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_FMT | LVCF_SUBITEM;
        column.fmt = LVCFMT_LEFT;
        column.iSubItem = i;
        ListView_InsertColumn(list_, i, &column);
    }
    return true;
}

void CityList::Show(bool shown) {
    for (HWND child : {label_, field_, list_}) ShowWindow(child, shown ? SW_SHOWNA : SW_HIDE);
}

void CityList::SetTexts() {
    SetWindowTextW(label_, LocalText(IDS_FILTER_LABEL).c_str());
    SetWindowTextW(list_, LocalText(IDS_LIST_LABEL).c_str());
    for (int i = 0; i < kColumns; ++i) {
        std::wstring title = LocalText(kTitles[i]);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = title.data();
        ListView_SetColumn(list_, i, &column);
    }
    InvalidateRect(list_, nullptr, TRUE);
}

void CityList::SetLook(const ScaledLook& look) {
    for (HWND child : {label_, field_, list_}) {
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(look.Font()), TRUE);
    }
    const auto measure = [&](const std::wstring& text) {
        return static_cast<int>(look.Measure(list_, text.c_str()).cx);
    };
    int widths[kColumns] = {look.Pixels(kNameAtLeast), 0, 0, 0};
    for (const CityRecord& city : cities_) widths[0] = std::max(widths[0], measure(city.cityName));
    SYSTEMTIME sample{};
    sample.wYear = 2028;
    sample.wMonth = 12;
    sample.wHour = 20;  // the widest digits, and the half of the day that has its own word
    for (WORD i = 0; i < 7; ++i) {
        sample.wDayOfWeek = i;
        sample.wDay = static_cast<WORD>(24 + i);  // the 24th of that month is a Sunday
        widths[1] = std::max(widths[1], measure(TimeText(sample)));
        widths[2] = std::max(widths[2], measure(DateText(sample)));
    }
    widths[3] = measure(OffsetText(-(12 * 60 + 45)));
    width_ = GetSystemMetricsForDpi(SM_CXVSCROLL, look.Dpi()) +
             2 * GetSystemMetricsForDpi(SM_CXEDGE, look.Dpi()) + 2 * look.Pixels(kMargin);
    for (int i = 0; i < kColumns; ++i) {
        const int title = measure(LocalText(kTitles[i]));
        const int width = std::max(widths[i], title) + look.Pixels(kCellPadding);
        ListView_SetColumnWidth(list_, i, width);
        width_ += width;
    }
}

void CityList::Place(const RECT& area, const ScaledLook& look) {
    const int margin = look.Pixels(kMargin);
    const int line = static_cast<int>(look.Measure(list_, L"Xg").cy);
    const int width = std::max(0, static_cast<int>(area.right - area.left) - 2 * margin);
    int top = static_cast<int>(area.top) + margin;
    const auto place = [&](HWND child, int height) {
        MoveWindow(child, area.left + margin, top, width, std::max(0, height), TRUE);
        top += height + margin;
    };
    place(label_, line);
    place(field_, line + 2 * margin);
    place(list_, static_cast<int>(area.bottom) - top - margin);
}

void CityList::FillRows() {
    wchar_t wanted[kMostFieldChars + 1] = {};
    GetWindowTextW(field_, wanted, kMostFieldChars + 1);
    rows_.clear();
    for (std::size_t i = 0; i < cities_.size(); ++i) {
        if (!Matches(cities_[i], wanted)) continue;
        CityRow row{static_cast<std::int32_t>(i), false, {}};
        row.hasTime = times_.At(cities_[i], utc_, row.local);
        rows_.push_back(row);
    }
    SortRows(rows_, cities_, sortColumn_, sortDescending_);
    quiet_ = true;
    ListView_SetItemCountEx(list_, static_cast<int>(rows_.size()), LVSICF_NOSCROLL);
    ShowSelection();
    quiet_ = false;
    InvalidateRect(list_, nullptr, FALSE);
}

void CityList::ShowSelection() {
    constexpr UINT kStates = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(list_, -1, 0, kStates);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (rows_[i].city != selected_) continue;
        ListView_SetItemState(list_, static_cast<int>(i), kStates, kStates);
    }
}

void CityList::Refresh(const SYSTEMTIME& utc) {
    utc_ = utc;
    FillRows();
}

void CityList::Narrow() { FillRows(); }

void CityList::SortBy(CityColumn column, bool descending) {
    sortColumn_ = column;
    sortDescending_ = descending;
    MarkSortColumn();
    FillRows();
}

void CityList::MarkSortColumn() {
    HWND header = ListView_GetHeader(list_);
    for (int i = 0; i < kColumns; ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        Header_GetItem(header, i, &item);
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == static_cast<int>(sortColumn_))
            item.fmt |= sortDescending_ ? HDF_SORTDOWN : HDF_SORTUP;
        Header_SetItem(header, i, &item);
    }
}

void CityList::Select(std::int32_t city) {
    selected_ = city;
    const auto isIt = [&](const CityRow& row) { return row.city == city; };
    if (std::none_of(rows_.begin(), rows_.end(), isIt)) {
        SetWindowTextW(field_, L"");
        FillRows();
    }
    quiet_ = true;
    ShowSelection();
    quiet_ = false;
    const auto row = std::find_if(rows_.begin(), rows_.end(), isIt);
    if (row == rows_.end()) return;
    ListView_EnsureVisible(list_, static_cast<int>(row - rows_.begin()), FALSE);
}

std::wstring CityList::TextOf(const CityRow& row, CityColumn column) const {
    if (column == CityColumn::Name) return cities_[static_cast<std::size_t>(row.city)].cityName;
    if (!row.hasTime) return {};
    if (column == CityColumn::Time) return TimeText(row.local.time);
    if (column == CityColumn::Date) return DateText(row.local.time);
    return OffsetText(row.local.offsetMinutes);
}

/// The line, from `from` on and round, whose city begins like this; -1 when none does.
int CityList::FindByStart(const wchar_t* start, int from) const {
    const int count = static_cast<int>(rows_.size());
    const int length = lstrlenW(start);
    for (int i = 0; i < count; ++i) {
        const int row = (std::max(from, 0) + i) % count;
        const std::wstring name = TextOf(rows_[static_cast<std::size_t>(row)], CityColumn::Name);
        if (CompareStringEx(LOCALE_NAME_USER_DEFAULT, LINGUISTIC_IGNORECASE, name.c_str(),
                            std::min(length, static_cast<int>(name.size())), start, length, nullptr,
                            nullptr, 0) == CSTR_EQUAL) {
            return row;
        }
    }
    return -1;
}

LRESULT CityList::Notify(NMHDR* notice, bool& selectedNow) {
    selectedNow = false;
    switch (notice->code) {
        case LVN_GETDISPINFOW: {
            LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(notice)->item;
            const auto row = static_cast<std::size_t>(item.iItem);
            if ((item.mask & LVIF_TEXT) == 0 || row >= rows_.size()) return 0;
            const auto column = static_cast<CityColumn>(item.iSubItem);
            lstrcpynW(item.pszText, TextOf(rows_[row], column).c_str(), item.cchTextMax);
            return 0;
        }
        case LVN_ODFINDITEMW: {
            const auto* find = reinterpret_cast<const NMLVFINDITEMW*>(notice);
            const bool byText = (find->lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) != 0;
            return byText && !rows_.empty() ? FindByStart(find->lvfi.psz, find->iStart) : -1;
        }
        case LVN_COLUMNCLICK: {
            const auto column =
                static_cast<CityColumn>(reinterpret_cast<const NMLISTVIEW*>(notice)->iSubItem);
            SortBy(column, column == sortColumn_ && !sortDescending_);
            return 0;
        }
        case LVN_ITEMCHANGED: {
            const auto* change = reinterpret_cast<const NMLISTVIEW*>(notice);
            const auto row = static_cast<std::size_t>(change->iItem);
            const bool selects = (change->uNewState & LVIS_SELECTED) != 0 &&
                                 (change->uOldState & LVIS_SELECTED) == 0;
            if (quiet_ || change->iItem < 0 || !selects || row >= rows_.size()) return 0;
            selectedNow = rows_[row].city != selected_;
            selected_ = rows_[row].city;
            return 0;
        }
        default:
            return 0;
    }
}
