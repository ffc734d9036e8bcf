#include "window/city_list.h"

#include <algorithm>

#include "clock/time_texts.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

// Pixels at 96 dots per inch.
constexpr int kMargin = 6;        // around label, field and list
constexpr int kCellPadding = 18;  // beside the text of a column: the cell's own and the sort arrow
constexpr int kMinNameWidth = 100;  // of the city column

constexpr int kMaxFieldChars = 63;  // as many as a city's name may have

constexpr int kSunday = 24;                   // a day of December 2028
constexpr int kWideOffset = -(12 * 60 + 45);  // minutes; its text is as long as any offset's

constexpr std::uint32_t kTitles[] = {IDS_COLUMN_CITY, IDS_COLUMN_TIME, IDS_COLUMN_DATE,
                                     IDS_COLUMN_OFFSET};
constexpr int kColumnCount = 4;

HWND CreateChild(HWND parent, const wchar_t* windowClass, DWORD style, DWORD exStyle) {
    return CreateWindowExW(exStyle, windowClass, L"", WS_CHILD | style, 0, 0, 0, 0, parent, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

bool CityList::Create(HWND parent) {
    // The label comes first: screen readers take the static text before a field as its name.
    label_ = CreateChild(parent, L"STATIC", SS_NOPREFIX | SS_ENDELLIPSIS, 0);
    field_ = CreateChild(parent, L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
    list_ = CreateChild(parent, WC_LISTVIEWW,
                        WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                        WS_EX_CLIENTEDGE);
    if (label_ == nullptr || field_ == nullptr || list_ == nullptr) return false;
    SendMessageW(field_, EM_LIMITTEXT, kMaxFieldChars, 0);
    constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    ListView_SetExtendedListViewStyleEx(list_, kStyle, kStyle);
    for (int i = 0; i < kColumnCount; ++i) {
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
    for (int i = 0; i < kColumnCount; ++i) {
        std::wstring title = LocalText(kTitles[i]);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = title.data();
        ListView_SetColumn(list_, i, &column);
    }
    InvalidateRect(list_, nullptr, TRUE);
}

void CityList::SetScale(const UiScale& scale) {
    for (HWND child : {label_, field_, list_}) {
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(scale.Font()), TRUE);
    }
    const auto measure = [&](const std::wstring& text) {
        return static_cast<int>(scale.Measure(list_, text.c_str()).cx);
    };
    int widths[kColumnCount] = {scale.Pixels(kMinNameWidth), 0, 0, 0};
    for (const CityRecord& city : cities_) widths[0] = std::max(widths[0], measure(city.cityName));
    // Wide samples of time and date: each weekday, an hour of two digits and after noon.
    for (WORD i = 0; i < 7; ++i) {
        const auto day = static_cast<WORD>(kSunday + i);
        const SYSTEMTIME sample{2028, 12, i, day, 20, 0, 0, 0};
        widths[1] = std::max(widths[1], measure(TimeText(sample)));
        widths[2] = std::max(widths[2], measure(DateText(sample)));
    }
    widths[3] = measure(OffsetText(kWideOffset));
    width_ = GetSystemMetricsForDpi(SM_CXVSCROLL, scale.Dpi()) +
             2 * GetSystemMetricsForDpi(SM_CXEDGE, scale.Dpi()) + 2 * scale.Pixels(kMargin);
    for (int i = 0; i < kColumnCount; ++i) {
        const int title = measure(LocalText(kTitles[i]));
        const int width = std::max(widths[i], title) + scale.Pixels(kCellPadding);
        ListView_SetColumnWidth(list_, i, width);
        width_ += width;
    }
}

void CityList::Place(const RECT& area, const UiScale& scale) {
    const int margin = scale.Pixels(kMargin);
    // A letter of full height and one with a descender.
    const int line = static_cast<int>(scale.Measure(list_, L"Xg").cy);
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
    wchar_t wanted[kMaxFieldChars + 1] = {};
    GetWindowTextW(field_, wanted, kMaxFieldChars + 1);
    rows_.clear();
    for (std::size_t i = 0; i < cities_.size(); ++i) {
        if (!Matches(cities_[i], wanted)) continue;
        CityRow row{static_cast<std::int32_t>(i), false, {}};
        row.hasTime = times_.At(cities_[i], utc_, row.local);
        rows_.push_back(row);
    }
    SortRows(rows_, cities_, sortColumn_, sortDescending_);
    isSelecting_ = true;
    ListView_SetItemCountEx(list_, static_cast<int>(rows_.size()), LVSICF_NOSCROLL);
    ShowSelection();
    isSelecting_ = false;
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

void CityList::ApplyFilter() { FillRows(); }

void CityList::SortBy(CityColumn column, bool descending) {
    sortColumn_ = column;
    sortDescending_ = descending;
    ShowSortArrow();
    FillRows();
}

void CityList::ShowSortArrow() {
    HWND header = ListView_GetHeader(list_);
    for (int i = 0; i < kColumnCount; ++i) {
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
    const auto isCity = [&](const CityRow& row) { return row.city == city; };
    if (std::none_of(rows_.begin(), rows_.end(), isCity)) {
        SetWindowTextW(field_, L"");
        FillRows();
    }
    isSelecting_ = true;
    ShowSelection();
    isSelecting_ = false;
    const auto row = std::find_if(rows_.begin(), rows_.end(), isCity);
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

/// The first row at or after `from` whose city's name begins with `start`, in any case; after the
/// last row the search goes on at the first. @return -1 when there is none
int CityList::FindByPrefix(const wchar_t* start, int from) const {
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

LRESULT CityList::OnNotify(NMHDR* notice, bool& isNewSelection) {
    isNewSelection = false;
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
            return byText && !rows_.empty() ? FindByPrefix(find->lvfi.psz, find->iStart) : -1;
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
            if (isSelecting_ || change->iItem < 0 || !selects || row >= rows_.size()) return 0;
            isNewSelection = rows_[row].city != selected_;
            selected_ = rows_[row].city;
            return 0;
        }
        default:
            return 0;
    }
}
