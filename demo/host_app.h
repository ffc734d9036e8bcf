#pragma once
// The program itself: its services, windows, language, hidden window and message loop.

#include <cstdint>
#include <memory>
#include <vector>

#include "data/folder_watch.h"
#include "program_data.h"
#include "window/host_window.h"
#include "window/program.h"
#include "windows_api.h"

/// Starts the services of horivo_host.h. Create this object first: the rest of the program uses the
/// services.
class HostServices {
public:
    HostServices();
    HostServices(const HostServices&) = delete;
    HostServices& operator=(const HostServices&) = delete;
    ~HostServices();
};

/// The running program: its data, its windows and its message loop. Only the main thread uses it.
class HostApp : public Program {
public:
    /// Reads settings and cities, chooses the language and creates the hidden window, to which the
    /// maps send HORIVO_MSG_MAY_SHOW_PHOTOS.
    HostApp();
    HostApp(const HostApp&) = delete;
    HostApp& operator=(const HostApp&) = delete;
    /// Writes the settings.
    ~HostApp() override;

    /// Opens one more window with the map in it. InitMap must have succeeded.
    /// @param status  out: the library's code when the map was refused, else HORIVO_OK
    /// @return false when there is no new window
    bool OpenWindow(std::uint32_t& status);
    void OpenAnother(HWND asker) override;
    void CloseAll() override;
    /// Deletes `window`, and ends the message loop when it was the last window. Does nothing for a
    /// window whose Open has failed.
    void Forget(HostWindow* window) override;
    void ChooseLanguage(const Language& choice) override;

    /// Runs the message loop until the last window has closed.
    void Run();

    ProgramData data;
    std::vector<std::unique_ptr<HostWindow>> windows;  ///< the open windows

private:
    /// Switches to the language in the settings and reads the names of the cities in that language.
    void UseLanguage();
    static LRESULT CALLBACK HiddenProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void CreateHiddenWindow();
    void OnTimer(UINT_PTR timer);
    /// Handles the message that the time zones have been read, the last step of the start: shows
    /// the local times and flies to the city that the program starts with. The frames of an earlier
    /// flight would compete with the decoder of the map picture. If the program may show photos,
    /// also begins to watch for new photos.
    void OnZonesRead();
    void SendPhotosChanged(std::int32_t signedIndex, std::int32_t newPhotos);
    void Dispatch(MSG& message);

    HWND hidden_ = nullptr;
    HACCEL accelerators_ = nullptr;
    std::unique_ptr<FolderWatch> watch_;  ///< null when the photos are not watched
};
