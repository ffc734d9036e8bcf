#pragma once
// A map window whose surroundings belong to the test: its timers run by hand, its clock stands, its
// cursor, its host's hidden window and the browser are the test's own.

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/faked_import_win.h"
#include "support/map_host_win.h"
#include "support/photo_disk_win.h"
#include "support/seen_picture_win.h"
// shellapi.h needs windows.h before it.
#include <shellapi.h>

class DrivenMapTest : public MapHostTest {
public:
    static constexpr WPARAM kRepeatTimer = 1;
    static constexpr WPARAM kFlightTimer = 2;
    static constexpr WPARAM kHoverTimer = 3;
    static constexpr WPARAM kSunTimer = 4;

    static constexpr int kOpenWidth = 800;  ///< of the window, where a test says nothing
    static constexpr int kOpenHeight = 600;
    static constexpr int kPanelX = kOpenWidth - 108;

    DrivenMapTest();
    ~DrivenMapTest() override;

    /// Appends a city; its zone is a HORIVO_TIME_ZONES number. Only before Open.
    CityRecord& AddCity(const wchar_t* name, const wchar_t* country, double latitude,
                        double longitude, std::uint32_t zone = 0);
    /// Hands the cities over and makes the window, with its map.
    void Open(int width = kOpenWidth, int height = kOpenHeight);
    /// Zooms as near as it goes: 0.03 degrees a pixel in the middle of the globe.
    void ZoomIn();

    /// Paints and reads what was painted.
    SeenOverlay Look();
    /// The panel's texts: city above country.
    std::vector<std::string> Titles() { return Look().Words(kPanelX); }
    SeenView LookAtView();
    bool TakeRepaintRequest() const;
    /// The client point that shows a place of the globe's front.
    POINT PixelOf(double latitude, double longitude);

    /// Size of a text in the map's font, pixels.
    SIZE SizeOf(const std::string& text) const;
    int WidthOf(const std::string& text) const { return static_cast<int>(SizeOf(text).cx); }
    int LineHeight() const { return static_cast<int>(SizeOf("M").cy); }

    void Pointer(UINT message, WPARAM buttons, POINT at) const;
    void Hover(POINT at) const { Pointer(WM_MOUSEMOVE, 0, at); }
    void Drag(POINT at) const { Pointer(WM_MOUSEMOVE, MK_LBUTTON, at); }
    void Press(POINT at) const { Pointer(WM_LBUTTONDOWN, MK_LBUTTON, at); }
    void Release(POINT at) const { Pointer(WM_LBUTTONUP, 0, at); }
    void Click(POINT at) const;
    void Wheel(int delta) const;
    /// The host's request.
    void ShowCity(const CityRecord& city) const {
        SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&city));
    }
    /// Runs a flight. @return its number of steps
    int Fly() const;
    /// Ends a flight; back to the view of the start.
    void Home() const { Key(window, VK_HOME); }
    /// Lets a timer of the window come round once, whether it runs or not.
    void Tick(WPARAM timer) const { SendMessageW(window, WM_TIMER, timer, 0); }
    bool Runs(WPARAM timer) const { return timers.contains(timer); }

    HWND window = nullptr;
    std::map<UINT_PTR, UINT> timers;  ///< that run, with their periods in ms
    POINT cursor = {};                ///< client point of the cursor

    // The host's hidden main window.
    bool hasHidden = true;
    LRESULT consent = 0;               ///< its answer
    std::vector<HostMessage> asked;    ///< what it was asked
    std::function<void()> whileAsked;  ///< what the host does once before it answers
    std::function<void()> whileTold;   ///< and once while its parent window hears of a city
    std::function<void()> beforeKey;   ///< and once before a key reaches the window

    std::vector<std::wstring> opened;  ///< pages that were handed to the browser, in order
    std::function<void()> whileOpening;

    PhotoDisk photos;

private:
    FakedImport<"SetTimer", decltype(SetTimer)> setTimer_;
    FakedImport<"KillTimer", decltype(KillTimer)> killTimer_;
    FakedImport<"GetCursorPos", decltype(GetCursorPos)> getCursorPos_;
    FakedImport<"FindWindowW", decltype(FindWindowW)> findWindow_;
    using Send = FakedImport<"SendMessageW", decltype(SendMessageW)>;
    Send sendMessage_;
    FakedImport<"ShellExecuteW", decltype(ShellExecuteW)> shellExecute_;
};
