#pragma once
// A window of the program: the cities on the left, the map on the right, a status bar below.

#include <cstdint>
#include <memory>

#include "program_data.h"
#include "window/city_list.h"
#include "window/map_pane.h"
#include "window/program.h"
#include "window/status_bar.h"
#include "window/ui_scale.h"
#include "windows_api.h"

/// A host window. When its window is destroyed, this object calls Program::Forget, which deletes
/// the object if Open has succeeded.
class HostWindow {
public:
    /// @param data, program  must outlive the window
    HostWindow(ProgramData& data, Program& program);
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow() = default;

    /// Creates and shows the window, and selects the city that it starts with.
    /// @param isFirst  true: opens at the place in the settings, and leaves the flight to the city
    ///                 to the end of the program's start; false: has the default size, and flies
    /// @param status  out: the library's code when the map was refused, else HORIVO_OK
    /// @return false when there is no window
    bool Open(bool isFirst, std::uint32_t& status);

    HWND Handle() const { return handle_; }
    HWND Map() const { return map_.Window(); }

    /// Sets all texts in the current language, also the hint that the map shows.
    void ApplyLanguage();
    /// Shows the current times in the list and the status bar.
    void ShowTimes();
    /// Lets the map fly to the selected city, if there is one.
    void FlyToSelected();
    /// Handles the keys of the window: Tab and Shift+Tab move the focus; Down and Enter work in the
    /// search field, Escape in the field and in the list.
    /// @return whether the message was handled; if not, dispatch it as usual
    bool TakeKey(const MSG& message);

private:
    static LRESULT CALLBACK Proc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    static void RegisterOnce();

    bool CreateParts(std::uint32_t& status);
    void SetInitialPlace(bool isFirst);
    RECT DefaultPlace() const;
    void LimitSize(MINMAXINFO& limits) const;
    void Arrange();
    RECT MapArea() const;
    void ApplyScaling(UINT dpi);
    void WaitForNextMinute();
    void OnClockTimer();
    void OnClockSet();
    LRESULT OnNotify(NMHDR* notice);
    void OnCommand(WPARAM wParam, LPARAM lParam);
    void OnMenuCommand(std::uint32_t command);
    void OpenPhotoFolder();
    void ShowStartCity();
    bool MoveFocus();
    void ChooseFirst();
    void Choose(std::int32_t city);
    void Show(std::int32_t city);
    void ShowTitle();
    void CopyTime() const;
    bool IsOnTop() const;
    void SetOnTop(bool onTop);
    std::wstring SelectedCityText(const SYSTEMTIME& utc) const;
    void StorePlace() const;

    static constexpr UINT_PTR kClockTimer = 1;
    static constexpr WORD kNoMinute = 60;  // not a minute of the clock
    // Smallest width of the map and smallest height of the window that the user can set, pixels at
    // 96 dots per inch.
    static constexpr int kMinMapWidth = 160;
    static constexpr int kMinHeight = 240;

    ProgramData& data_;
    Program& program_;
    HWND handle_ = nullptr;
    HWND focus_ = nullptr;  ///< control that gets the focus when the window is active again
    std::unique_ptr<UiScale> scale_;
    MapPane map_;
    CityList list_;
    StatusBar statusBar_;
    int statusHeight_ = 0;
    WORD shownMinute_ = kNoMinute;  ///< minute of the times that the window shows
    bool withList_ = true;          ///< the city list is shown
};
