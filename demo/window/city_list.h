#pragma once
// The list of the cities with their local times, and the search field above it.

#include <cstdint>
#include <string>
#include <vector>

#include "clock/city_order.h"
#include "program_data.h"
#include "window/ui_scale.h"
#include "windows_api.h"

class CityList {
public:
    /// @param data  must outlive the list
    explicit CityList(ProgramData& data) : data_(data) {}

    /// Creates the label, the search field and the list as hidden children of `parent`.
    /// @return false when Windows could not create one of them
    bool Create(HWND parent);
    void Show(bool shown);
    /// Sets the font and the column widths. Call this function after SetTexts, because the widths
    /// depend on the texts.
    void SetScale(const UiScale& scale);
    /// Sets label and column titles in the current language.
    void SetTexts();
    /// Width of the list, with its margins, that shows all columns, pixels. SetScale computes it.
    int Width() const { return width_; }
    /// Moves label, field and list into `area`, client pixels of the parent.
    void Place(const RECT& area, const UiScale& scale);

    /// Shows the cities that match the text of the search field, with their local times at `utc`.
    void Refresh(const SYSTEMTIME& utc);
    void SortBy(CityColumn column, bool descending);
    CityColumn SortColumn() const { return sortColumn_; }
    bool SortDescending() const { return sortDescending_; }

    /// Index of the selected city; -1 when there is none.
    std::int32_t Selected() const { return selected_; }
    /// Selects a city and scrolls to its row; clears the search field when its text hides that
    /// city. OnNotify does not report this selection, because the user did not make it.
    void Select(std::int32_t city);
    /// Scrolls to the first row, or to the selected city when the search field is empty.
    void Scroll();
    /// Number of cities that are shown.
    std::size_t RowCount() const { return rows_.size(); }
    /// The city of the first row; -1 when there is none.
    std::int32_t First() const { return rows_.empty() ? -1 : rows_[0].city; }
    /// The row of the selected city; -1 when it is not shown.
    int SelectedRow() const;
    /// Clears the search. The parent gets EN_CHANGE, as when the user changes the text.
    void ClearField();

    /// Answers a WM_NOTIFY of the list control.
    /// @param isNewSelection  out: whether the user has selected another city
    LRESULT OnNotify(NMHDR* notice, bool& isNewSelection);

    HWND Field() const { return field_; }
    HWND List() const { return list_; }

private:
    void FillRows();
    /// Selects in the list control the row of `selected_`, or no row when that city is not shown.
    void ShowSelection();
    /// Scrolls a row to the middle of the list. Does nothing when the row is visible, and for -1.
    void ScrollTo(int row);
    void ShowSortArrow();
    LRESULT DrawNothingFound(const NMCUSTOMDRAW& draw) const;
    std::wstring TextOf(const CityRow& row, CityColumn column) const;
    int FindByPrefix(const wchar_t* start, int from) const;

    ProgramData& data_;
    std::vector<CityRow> rows_;
    SYSTEMTIME utc_{};
    CityColumn sortColumn_ = CityColumn::Name;
    bool sortDescending_ = false;
    std::int32_t selected_ = -1;
    bool isSelecting_ = false;  ///< true while the program changes the selection
    HWND label_ = nullptr;
    HWND field_ = nullptr;
    HWND list_ = nullptr;
    int width_ = 0;
};
