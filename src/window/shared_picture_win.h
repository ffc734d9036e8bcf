#pragma once
// The map picture as the window and its worker threads share it: under a mutex, until FreeMap.

#include <atomic>
#include <cstdint>
#include <limits>

#include "base/handles_win.h"
#include "image/load_tracker.h"
#include "image/map_picture.h"
#include "image/texture_limits.h"

/// Milliseconds that the window thread waits for a worker with the picture: a load may take
/// minutes.
inline constexpr DWORD kWorkerEndWaitMs = 300000;

/// The map picture and the mutex around it.
struct SharedPicture {
    MapPicture picture;
    UniqueHandle sceneMutex;  ///< guards `picture`; null: none could be made, and no worker runs
    /// The mutex that FreeMap waited for in vain: its worker still writes to `picture`, so the next
    /// InitMap takes it again instead of a new one.
    UniqueHandle orphanedMutex;
    /// Raised whenever FreeMap releases the picture; a worker from before leaves it alone.
    std::atomic<std::uint32_t> generation{0};
    TextureLimits limits;  ///< atomics: window thread writes, workers read
    /// What the self-test of InstallMap found to be the largest size that works, pixels a side;
    /// stays in force when GL is asked again. Window thread.
    std::int32_t sizeCap = std::numeric_limits<std::int32_t>::max();
    LoadTracker loads;  ///< see there
    /// Tiles that could not be uploaded without a context; the next frame does it. Window thread.
    bool tilesWaitForContext = false;
    /// Whether InstallMap holds the mutex (or there is none), so that its window may load.
    bool testMayLoad = false;
};

/// Makes the mutex, unless there is one; an orphaned one comes first. Window thread, like the rest.
void MakeSceneMutex(SharedPicture& shared) noexcept;

/// Waits for a worker that has the picture and frees the picture; workers that were started before
/// leave it alone from then on. After a time-out the worker keeps the picture, and its mutex is the
/// orphaned one.
void ReleasePicture(SharedPicture& shared) noexcept;

/// Closes the mutex, which must be there. @return what CloseHandle answers
bool CloseSceneMutex(SharedPicture& shared) noexcept;

/// Frees picture and mutexes without waiting, when no worker can be left.
void AbandonPicture(SharedPicture& shared) noexcept;
