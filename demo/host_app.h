#pragma once
// What all windows of the program share.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "clock/city_times.h"
#include "data/folder_watch.h"
#include "data/settings.h"
#include "horivo_map.h"
#include "language.h"
#include "window/host_windows.h"

class HostWindow;

/// The program between its start and its end. The main thread's alone.
class HostApp {
public:
    HostApp();
    HostApp(const HostApp&) = delete;
    HostApp& operator=(const HostApp&) = delete;
    ~HostApp();

    /// Opens one more window with the map in it.
    /// @param mapSize  of the map, pixels; both 0: as the user left the window
    /// @return null when it was refused; `status` is then the library's code
    HostWindow* OpenWindow(SIZE mapSize, bool withList, std::uint32_t& status);
    /// To be called by a window that goes: the last one ends the message loop.
    void Forget(HostWindow* window);

    /// Changes the language of everything that is open, and remembers it.
    void ChooseLanguage(const Language& language);
    const Language& ChosenLanguage() const { return FindLanguage(settings.language); }

    /// The message loop. @return when the last window has gone
    void Run();

    std::vector<CityRecord> cities;
    CityTimes times;
    HostSettings settings;
    std::vector<HostWindow*> windows;

private:
    static LRESULT CALLBACK HiddenProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void MakeHiddenWindow();
    /// Reads the time zones and looks at the photos: what the first picture need not wait for.
    void FinishStart();
    void TellOfPhotos(std::int32_t signedIndex, std::int32_t newPhotos);
    void Dispatch(MSG& message);

    HWND hidden_ = nullptr;
    HACCEL accelerators_ = nullptr;
    std::unique_ptr<FolderWatch> watch_;
};

/// Tells the user of a failure, in a box over `owner`.
void TellUser(HWND owner, std::uint32_t textId);
/// The text for a result code of the library.
std::uint32_t ResultTextId(std::uint32_t code);
