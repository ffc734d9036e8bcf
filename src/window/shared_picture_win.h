#pragma once
// The map picture, which the window thread and the worker threads share under a mutex.

#include <atomic>
#include <cstdint>
#include <limits>

#include "base/handles_win.h"
#include "image/load_tracker.h"
#include "image/map_picture.h"
#include "image/texture_limits.h"
#include "window/map_settings.h"

/// Milliseconds that the window thread waits for a worker that has the picture: a load may take
/// minutes.
inline constexpr DWORD kWorkerEndWaitMs = 300000;

/// The map picture with the scene mutex around it. Window thread, except where a line says more.
class SharedPicture {
public:
    MapPicture picture;    ///< under the mutex, except its IsLoading, IsSplitting and IsBusy
    TextureLimits limits;  ///< atomics: the window thread writes, workers read
    LoadTracker loads;     ///< window thread, except its Report

    /// Makes the mutex, unless there is one; takes the orphaned mutex, when there is one.
    void MakeMutex() noexcept;
    /// Whether workers may run: without a mutex none may.
    bool HasMutex() const noexcept { return sceneMutex_ != nullptr; }
    /// Waits for the mutex. @return empty when the time ran out or there is no mutex
    MutexHold Lock(DWORD waitMs) const noexcept { return AcquireMutex(sceneMutex_.get(), waitMs); }
    /// Whether the caller may use the picture after Lock: it has the mutex, or there is none and so
    /// no worker can have the picture.
    bool MayUse(const MutexHold& hold) const noexcept { return hold || !HasMutex(); }
    /// A further handle to the mutex, for a worker; empty when it cannot be made.
    UniqueHandle DuplicateMutex() const noexcept { return DuplicateOf(sceneMutex_.get()); }

    /// Waits for a worker that has the picture and frees the picture. Workers that were started
    /// before leave the picture alone from then on. After a time-out the worker keeps the picture,
    /// and its mutex becomes the orphaned one.
    void Release() noexcept;
    /// Closes the mutex, which must be there. @return what CloseHandle answers
    bool CloseMutex() noexcept;
    /// Frees picture and mutexes without waiting; only when no worker can be left.
    void Abandon() noexcept;

    /// Counts the calls of Release: a worker that was started at another number leaves the picture
    /// alone. Any thread.
    std::uint32_t Generation() const noexcept { return generation_; }

    /// Frees the pixels of the picture and of the tiles. The caller holds the mutex.
    void Clear() noexcept;

    /// Lets the split use the largest texture of the OpenGL in use.
    void UseWholeTextureLimit() noexcept;

    /// Takes over the largest texture of the OpenGL in use, pixels a side.
    void TakeTextureLimit(std::int32_t size) noexcept;
    /// Takes over the exponents on the size limits that the user has set.
    void TakeScalers(const MapSettings& settings) noexcept;
    /// Frees the picture and halves the size limit; the lower limit stays in force when the limit
    /// of OpenGL is taken again. The caller holds the mutex.
    void HalveLimit() noexcept;

    /// Notes whether tiles wait to be uploaded, because OpenGL could not be used when they came.
    void SetTilesWait(bool wait) noexcept { tilesWait_ = wait; }
    /// Removes the note. @return whether tiles have waited
    bool TakeTilesWait() noexcept;

private:
    UniqueHandle sceneMutex_;  ///< guards `picture`; null: none could be made
    /// The mutex of a worker for which Release waited in vain. The worker still writes to the
    /// picture, so the next MakeMutex takes this mutex instead of a new one.
    UniqueHandle orphanedMutex_;
    std::atomic<std::uint32_t> generation_{0};
    /// The largest size that works, as the self-test of InstallMap found it, pixels a side.
    std::int32_t sizeCap_ = std::numeric_limits<std::int32_t>::max();
    bool tilesWait_ = false;
};
