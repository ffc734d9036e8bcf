#include "window/city_list.h"

#include <algorithm>

#include "clock/time_texts.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

// Pixels at 96 dots per inch.
constexpr int kMargin = 6;        // space around the label, the field and the list
constexpr int kCellPadding = 18;  // space beside a column's text for margins and the sort arrow

constexpr int kFieldInset = 1;      // pixels from a field's edge to its text, at any scaling
constexpr int kMaxFieldChars = 63;  // longest text of the search field; a city's name has no more
// Widths of the columns with names: each is as wide as this number of letters "n". The list ends
// the few longer names in dots.
constexpr int kNameLetters = 20;
constexpr int kCountryLetters = 16;

constexpr int kSunday = 24;                   // day of the first sample date, in December 2028
constexpr int kWideOffset = -(12 * 60 + 45);  // minutes; no other offset has a longer text

// kTitles has the title of each CityColumn; kOrder lists the columns from left to right.
constexpr std::uint32_t kTitles[kCityColumns] = {IDS_COLUMN_CITY, IDS_COLUMN_TIME, IDS_COLUMN_DATE,
                                                 IDS_COLUMN_OFFSET, IDS_COLUMN_COUNTRY};
constexpr int kOrder[kCityColumns] = {0, 4, 1, 2, 3};

HWND CreateChild(HWND parent, const wchar_t* windowClass, DWORD style, DWORD exStyle) {
    return CreateWindowExW(exStyle, windowClass, L"", WS_CHILD | style, 0, 0, 0, 0, parent, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

bool CityList::Create(HWND parent) {
    // Creates the label before the field, because screen readers read the static text before a
    // field as the name of the field.
    label_ = CreateChild(parent, L"STATIC", SS_NOPREFIX | SS_ENDELLIPSIS, 0);
    field_ = CreateChild(parent, L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
    list_ = CreateChild(parent, WC_LISTVIEWW,
                        WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                        WS_EX_CLIENTEDGE);
    if (label_ == nullptr || field_ == nullptr || list_ == nullptr) return false;
    SendMessageW(field_, EM_LIMITTEXT, kMaxFieldChars, 0);
    constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
    ListView_SetExtendedListViewStyleEx(list_, kStyle, kStyle);
    for (int i = 0; i < kCityColumns; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_FMT | LVCF_SUBITEM;
        column.fmt = LVCFMT_LEFT;
        column.iSubItem = i;
        ListView_InsertColumn(list_, i, &column);
    }
    ListView_SetColumnOrderArray(list_, kCityColumns, kOrder);
    return true;
}

void CityList::Show(bool shown) {
    for (HWND child : {label_, field_, list_}) ShowWindow(child, shown ? SW_SHOWNA : SW_HIDE);
}

void CityList::SetTexts() {
    SetWindowTextW(label_, LocalText(IDS_FILTER_LABEL).c_str());
    SetWindowTextW(list_, LocalText(IDS_LIST_LABEL).c_str());
    for (int i = 0; i < kCityColumns; ++i) {
        std::wstring title = LocalText(kTitles[i]);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = title.data();
        ListView_SetColumn(list_, i, &column);
    }
    ShowSortArrow();  // a new title removes the arrow
    InvalidateRect(list_, nullptr, TRUE);
}

void CityList::SetScale(const UiScale& scale) {
    for (HWND child : {label_, field_, list_}) {
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(scale.Font()), TRUE);
    }
    const auto measure = [&](const std::wstring& text) {
        return static_cast<int>(scale.Measure(list_, text.c_str()).cx);
    };
    int widths[kCityColumns] = {measure(std::wstring(kNameLetters, L'n')), 0, 0,
                                measure(OffsetText(kWideOffset)),
                                measure(std::wstring(kCountryLetters, L'n'))};
    // Measures samples of wide texts: the time 20:00, and a date for each day of the week.
    for (WORD i = 0; i < 7; ++i) {
        const auto day = static_cast<WORD>(kSunday + i);
        const SYSTEMTIME sample{2028, 12, i, day, 20, 0, 0, 0};
        widths[1] = std::max(widths[1], measure(TimeText(sample)));
        widths[2] = std::max(widths[2], measure(DateText(sample)));
    }
    width_ = GetSystemMetricsForDpi(SM_CXVSCROLL, scale.Dpi()) +
             2 * GetSystemMetricsForDpi(SM_CXEDGE, scale.Dpi()) + 2 * scale.Pixels(kMargin);
    for (int i = 0; i < kCityColumns; ++i) {
        const int title = measure(LocalText(kTitles[i]));
        const int width = std::max(widths[i], title) + scale.Pixels(kCellPadding);
        ListView_SetColumnWidth(list_, i, width);
        width_ += width;
    }
}

void CityList::Place(const RECT& area, const UiScale& scale) {
    const int margin = scale.Pixels(kMargin);
    // The height of a line: "X" reaches the top of a line, and "g" reaches the bottom.
    const int line = static_cast<int>(scale.Measure(list_, L"Xg").cy);
    const int width = std::max(0, static_cast<int>(area.right - area.left) - 2 * margin);
    int top = static_cast<int>(area.top) + margin;
    const auto place = [&](HWND child, int height) {
        MoveWindow(child, area.left + margin, top, width, std::max(0, height), TRUE);
        top += height + margin;
    };
    place(label_, line);
    // The field puts its text at its upper edge. With exactly this height, the text is in the
    // middle.
    const int edge = GetSystemMetricsForDpi(SM_CYEDGE, scale.Dpi());
    place(field_, line + 2 * (kFieldInset + edge));
    place(list_, static_cast<int>(area.bottom) - top - margin);
}

void CityList::FillRows() {
    wchar_t wanted[kMaxFieldChars + 1] = {};
    GetWindowTextW(field_, wanted, kMaxFieldChars + 1);
    rows_.clear();
    for (std::size_t i = 0; i < data_.cities.size(); ++i) {
        const Fit fit = FitOf(data_.cities[i], data_.names[i], wanted);
        if (fit == Fit::None) continue;
        CityRow row{static_cast<std::int32_t>(i), fit, false, {}};
        row.hasTime = data_.times.At(data_.cities[i], utc_, row.local);
        rows_.push_back(row);
    }
    SortRows(rows_, data_.names, sortColumn_, sortDescending_);
    ListView_SetItemCountEx(list_, static_cast<int>(rows_.size()), LVSICF_NOSCROLL);
    ShowSelection();
    InvalidateRect(list_, nullptr, FALSE);
}

void CityList::ShowSelection() {
    constexpr UINT kStates = LVIS_SELECTED | LVIS_FOCUSED;
    const int row = SelectedRow();
    // Wine scrolls to a row that gets the focus. Without this test, each minute would do so.
    if (row == ListView_GetNextItem(list_, -1, LVNI_SELECTED)) return;
    isSelecting_ = true;
    ListView_SetItemState(list_, -1, 0, kStates);
    if (row >= 0) ListView_SetItemState(list_, row, kStates, kStates);
    isSelecting_ = false;
}

void CityList::Refresh(const SYSTEMTIME& utc) {
    utc_ = utc;
    FillRows();
}

void CityList::SortBy(CityColumn column, bool descending) {
    sortColumn_ = column;
    sortDescending_ = descending;
    ShowSortArrow();
    FillRows();
}

void CityList::ShowSortArrow() {
    HWND header = ListView_GetHeader(list_);
    for (int i = 0; i < kCityColumns; ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        Header_GetItem(header, i, &item);
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == static_cast<int>(sortColumn_))
            item.fmt |= sortDescending_ ? HDF_SORTDOWN : HDF_SORTUP;
        Header_SetItem(header, i, &item);
    }
}

int CityList::SelectedRow() const {
    const auto row = std::ranges::find(rows_, selected_, &CityRow::city);
    return row != rows_.end() ? static_cast<int>(row - rows_.begin()) : -1;
}

void CityList::Select(std::int32_t city) {
    selected_ = city;
    if (SelectedRow() < 0) ClearField();
    ScrollTo(SelectedRow());
    ShowSelection();
}

void CityList::Scroll() {
    const bool isSearch = GetWindowTextLengthW(field_) > 0;
    ScrollTo(isSearch ? 0 : std::max(0, SelectedRow()));
}

void CityList::ScrollTo(int row) {
    if (row < 0) return;
    const int first = ListView_GetTopIndex(list_);
    const int page = ListView_GetCountPerPage(list_);
    const int last = static_cast<int>(rows_.size()) - 1;
    // Windows scrolls no further than it must, so a row half a page further comes first.
    if (row < first) ListView_EnsureVisible(list_, std::max(row - page / 2, 0), FALSE);
    if (row >= first + page) ListView_EnsureVisible(list_, std::min(row + page / 2, last), FALSE);
    ListView_EnsureVisible(list_, row, FALSE);
}

void CityList::ClearField() { SetWindowTextW(field_, L""); }
