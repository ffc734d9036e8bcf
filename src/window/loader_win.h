#pragma once

#include <string>

#include "window/host_data.h"
#include "window/shared_picture_win.h"

/// A worker posts this message to its window. wParam is the stage; lParam is 1 for success and 0
/// for failure.
inline constexpr UINT kStageDoneMessage = WM_USER + 1;
inline constexpr WPARAM kLoadStage = 0;
inline constexpr WPARAM kSplitStage = 1;

/// Starts the worker threads that load the map picture and split it into tiles. Any number of
/// workers may run at the same time: the scene mutex (see SharedPicture) makes them use the picture
/// one after the other, and the result is one complete set of tiles.
class MapLoader {
public:
    /// Both arguments must outlive the workers.
    MapLoader(SharedPicture& shared, const HostData& host) noexcept
        : shared_(shared), host_(host) {}

    /// Starts a load for `window`, which gets kStageDoneMessage at the end of the load. Without a
    /// scene mutex, starts nothing. A load that waits too long for this mutex, or that FreeMap has
    /// made obsolete, ends without a message.
    void StartLoad(HWND window);
    /// Starts the split of the picture that was loaded for `window`.
    void StartSplit(HWND window);

private:
    void StartWorker(HWND window, LoadNumber load, LPTHREAD_START_ROUTINE procedure, WPARAM stage);
    bool StartThread(HWND window, LoadNumber load, LPTHREAD_START_ROUTINE procedure);

    SharedPicture& shared_;
    const HostData& host_;
};
