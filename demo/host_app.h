#pragma once
// The program itself: its windows, its language, its hidden window and its message loop.

#include <cstdint>
#include <memory>
#include <vector>

#include "data/folder_watch.h"
#include "program_data.h"
#include "window/host_window.h"
#include "window/host_windows.h"
#include "window/program.h"

/// The program between its start and its end. The main thread's alone.
class HostApp : public Program {
public:
    HostApp();
    HostApp(const HostApp&) = delete;
    HostApp& operator=(const HostApp&) = delete;
    ~HostApp() override;

    /// Opens one more window with the map in it.
    /// @param mapSize  of the map, pixels; both 0: as the user left the window
    /// @return null when it was refused; `status` is then the library's code
    HostWindow* OpenWindow(SIZE mapSize, bool withList, std::uint32_t& status);
    void OpenAnother(HWND asker, bool withList) override;
    void CloseAll() override;
    /// The last window that goes ends the message loop.
    void Forget(HostWindow* window) override;
    void ChooseLanguage(const Language& language) override;

    /// The message loop. @return when the last window has gone
    void Run();

    ProgramData data;
    std::vector<HostWindow*> windows;

private:
    static LRESULT CALLBACK HiddenProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void MakeHiddenWindow();
    void Ring(UINT_PTR timer);
    /// The zones are read: shows the times and begins to watch the photos.
    void FinishStart();
    void TellOfPhotos(std::int32_t signedIndex, std::int32_t newPhotos);
    void Dispatch(MSG& message);

    HWND hidden_ = nullptr;
    HACCEL accelerators_ = nullptr;
    std::unique_ptr<FolderWatch> watch_;
};
