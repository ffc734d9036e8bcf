#pragma once
// The list of the cities with their local times, and the field that narrows it while one types.

#include <cstdint>
#include <string>
#include <vector>

#include "clock/city_order.h"
#include "window/dpi.h"
#include "window/host_windows.h"

class CityList {
public:
    /// @param cities, times  must outlive the list
    CityList(const std::vector<CityRecord>& cities, CityTimes& times)
        : cities_(cities), times_(times) {}

    /// Makes the label, the field and the list as children of `parent`, hidden.
    bool Create(HWND parent);
    void Show(bool shown);
    /// Font and column widths. To be called after SetTexts when both change.
    void SetLook(const ScaledLook& look);
    /// Titles in the present language.
    void SetTexts();
    /// Pixels that all columns need side by side.
    int Width() const { return width_; }
    void Place(const RECT& area, const ScaledLook& look);

    /// Shows the times of `utc`.
    void Refresh(const SYSTEMTIME& utc);
    /// Shows what the field asks for. To be called when its text has changed.
    void Narrow();
    void SortBy(CityColumn column, bool descending);
    CityColumn SortColumn() const { return sortColumn_; }
    bool SortDescending() const { return sortDescending_; }

    /// Index of the selected city; -1 when there is none.
    std::int32_t Selected() const { return selected_; }
    /// Selects a city without telling anybody, shows its line, and empties a field that hides it.
    void Select(std::int32_t city);
    std::size_t RowCount() const { return rows_.size(); }

    /// What the list wants to be told, as WM_NOTIFY brought it.
    /// @param selectedNow  out: whether the user has selected another city
    LRESULT Notify(NMHDR* notice, bool& selectedNow);

    HWND Field() const { return field_; }
    HWND List() const { return list_; }

private:
    void FillRows();
    /// Selects the line of `selected_`, wherever it is now.
    void ShowSelection();
    void MarkSortColumn();
    std::wstring TextOf(const CityRow& row, CityColumn column) const;
    int FindByStart(const wchar_t* start, int from) const;

    const std::vector<CityRecord>& cities_;
    CityTimes& times_;
    std::vector<CityRow> rows_;
    SYSTEMTIME utc_{};
    CityColumn sortColumn_ = CityColumn::Name;
    bool sortDescending_ = false;
    std::int32_t selected_ = -1;
    bool quiet_ = false;  ///< selections now are the program's, not the user's
    HWND label_ = nullptr;
    HWND field_ = nullptr;
    HWND list_ = nullptr;
    int width_ = 0;
};
