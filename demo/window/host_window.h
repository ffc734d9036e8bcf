#pragma once
// A window of the program: the cities on the left, the map on the right, a status line below.

#include <cstdint>
#include <memory>

#include "program_data.h"
#include "window/city_list.h"
#include "window/dpi.h"
#include "window/host_windows.h"
#include "window/map_pane.h"
#include "window/program.h"
#include "window/status_line.h"

/// How a window comes up.
struct WindowStart {
    SIZE mapSize;   ///< of the map, pixels; both 0: where and as large as the user left the window
    bool withList;  ///< of the cities
    bool isFirst;   ///< only the first takes the place that the user left
};

/// Lives as long as its window handle, which deletes it.
class HostWindow {
public:
    /// @param data, program  must outlive the window
    HostWindow(ProgramData& data, Program& program);
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow() = default;

    /// Makes and shows the window.
    /// @param status  out: the library's code when the map was refused
    /// @return false when it was refused; the object is then still the caller's
    bool Open(const WindowStart& start, std::uint32_t& status);

    HWND Handle() const { return handle_; }
    HWND Map() const { return map_.Window(); }
    CityList& List() { return list_; }

    /// Puts all texts into the present language.
    void ApplyLanguage();
    /// Shows the present times in list and status line.
    void ShowTimes();
    /// Whether the message is the key that moves the focus between field, list and map; it is done
    /// then.
    bool TakeFocusKey(const MSG& message);

private:
    static LRESULT CALLBACK Proc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    static void RegisterOnce();

    bool Build(std::uint32_t& status);
    void GivePlace(const WindowStart& start);
    void LimitSize(MINMAXINFO& limits) const;
    void Arrange();
    RECT MapArea() const;
    void UseScaling(UINT dpi);
    void TickClock();
    LRESULT HandleNotice(NMHDR* notice);
    void HandleCommand(WPARAM wParam, LPARAM lParam);
    void Do(std::uint32_t command);
    void OpenPhotoFolder();
    void FlyToSelected();
    void ShowSelectedCity();
    void CityClicked(std::int32_t index);
    void ShowTitle();
    std::wstring SelectedCityText(const SYSTEMTIME& utc) const;
    void KeepPlace() const;

    static constexpr UINT_PTR kClockTimer = 1;
    // Pixels at 96 dots per inch.
    static constexpr int kMapAtLeast = 160;
    static constexpr int kHeightAtLeast = 240;

    ProgramData& data_;
    Program& program_;
    HWND handle_ = nullptr;
    HWND focus_ = nullptr;  ///< child that gets the focus back
    std::unique_ptr<ScaledLook> look_;
    MapPane map_;
    CityList list_;
    StatusLine status_;
    int statusHeight_ = 0;
    WORD shownMinute_ = 60;  ///< none yet
    bool withList_ = true;
};
