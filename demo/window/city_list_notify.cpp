// What the list control asks and reports: texts, search by the first letters, order, selection.

#include "window/city_list.h"

#include <algorithm>

#include "clock/time_texts.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

// Space above the text "nothing found" in an empty list, pixels at 96 dots per inch.
constexpr int kEmptyPadding = 40;

}  // namespace

std::wstring CityList::TextOf(const CityRow& row, CityColumn column) const {
    const PlaceNames& names = data_.names[static_cast<std::size_t>(row.city)];
    if (column == CityColumn::Name) return names.city[0];
    if (column == CityColumn::Country) return names.country[0];
    if (!row.hasTime) return {};
    if (column == CityColumn::Time) return TimeText(row.local.time);
    if (column == CityColumn::Date) return DateText(row.local.time);
    return OffsetText(row.local.offsetMinutes);
}

/// The first row at or after `from` whose city's name begins with `start`; after the last row the
/// search goes on at the first row. @return -1 when there is none
int CityList::FindByPrefix(const wchar_t* start, int from) const {
    const int count = static_cast<int>(rows_.size());
    for (int i = 0; i < count; ++i) {
        const int row = (std::max(from, 0) + i) % count;
        const auto city = static_cast<std::size_t>(rows_[static_cast<std::size_t>(row)].city);
        const Fit fit = FitOf(data_.cities[city], data_.names[city], start);
        if (fit <= Fit::NameBegins) return row;
    }
    return -1;
}

/// Draws the text "nothing found" into an empty list. @return the answer to NM_CUSTOMDRAW
LRESULT CityList::DrawNothingFound(const NMCUSTOMDRAW& draw) const {
    if (draw.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYPOSTPAINT;
    RECT area{};
    GetClientRect(list_, &area);
    area.top += MulDiv(kEmptyPadding, static_cast<int>(GetDpiForWindow(list_)), 96);
    const std::wstring text = LocalText(IDS_NOTHING_FOUND);
    SetBkMode(draw.hdc, TRANSPARENT);
    SetTextColor(draw.hdc, GetSysColor(COLOR_WINDOWTEXT));
    DrawTextW(draw.hdc, text.c_str(), -1, &area, DT_CENTER | DT_NOPREFIX);
    return CDRF_DODEFAULT;
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
        case NM_CUSTOMDRAW:
            if (!rows_.empty()) return CDRF_DODEFAULT;
            return DrawNothingFound(*reinterpret_cast<const NMCUSTOMDRAW*>(notice));
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
