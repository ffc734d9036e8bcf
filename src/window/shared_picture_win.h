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

/// Milliseconds that SharedPicture::Release waits for a worker that is using the picture. The time
/// is long, because a load may take minutes.
inline constexpr DWORD kWorkerEndWaitMs = 300000;

/// The map picture and the scene mutex that guards it. Used by the window thread only, except where
/// a comment names other threads.
class SharedPicture {
public:
    MapPicture picture;    ///< guarded by the mutex, except IsLoading, IsSplitting and IsBusy
    TextureLimits limits;  ///< atomics: the window thread writes them, workers read them
    LoadTracker loads;     ///< see LoadTracker for the threads

    /// Makes the mutex, unless there is one. If Release has left an orphaned mutex, uses it
    /// instead of a new mutex.
    void MakeMutex() noexcept;
    /// Whether there is a mutex. Without a mutex no worker may be started.
    bool HasMutex() const noexcept { return sceneMutex_ != nullptr; }
    /// Waits for the mutex. @return empty when the time ran out or there is no mutex
    MutexHold Lock(DWORD waitMs) const noexcept { return AcquireMutex(sceneMutex_.get(), waitMs); }
    /// Whether the caller may use the picture after Lock: the caller holds the mutex, or there is
    /// no mutex and therefore no worker.
    bool MayUse(const MutexHold& hold) const noexcept { return hold || !HasMutex(); }
    /// Makes another handle to the mutex, for a worker; empty on failure.
    UniqueHandle DuplicateMutex() const noexcept { return DuplicateOf(sceneMutex_.get()); }

    /// Waits for a worker that is using the picture, then frees the picture. Workers that were
    /// started before this call and still wait for the mutex will not change the picture. After a
    /// time-out the picture is not freed, and the mutex stays for the next MakeMutex, because a
    /// worker still holds it.
    void Release() noexcept;
    /// Closes the mutex, which must exist. @return the result of CloseHandle
    bool CloseMutex() noexcept;
    /// Frees the picture and the mutexes without waiting. Call this function only when no
    /// worker can be running.
    void Abandon() noexcept;

    /// The number of calls of Release. A worker stores the number at its start. When the number has
    /// changed, the worker does not change the picture. Any thread.
    std::uint32_t Generation() const noexcept { return generation_; }

    /// Frees the pixels of the picture and of the tiles. The caller must hold the mutex.
    void Clear() noexcept;

    /// Sets the limit for the split to the size limit that SetTextureLimit or HalveLimit has set.
    void UseWholeTextureLimit() noexcept;

    /// Sets the size limit to the largest texture size of the OpenGL in use, pixels per side, or to
    /// the limit of the last HalveLimit if that is smaller.
    void SetTextureLimit(std::int32_t size) noexcept;
    /// Stores the exponents that scale the size limits, from the user's settings.
    void SetScalers(const MapSettings& settings) noexcept;
    /// Frees the picture and halves the size limit. The caller must hold the mutex.
    void HalveLimit() noexcept;

    /// Stores whether tiles wait to be uploaded, because the context could not be made current when
    /// the tiles were ready.
    void SetTilesWait(bool wait) noexcept { tilesWait_ = wait; }
    /// Returns the value that SetTilesWait has stored, and resets it to false.
    bool TakeTilesWait() noexcept;

private:
    UniqueHandle sceneMutex_;  ///< guards `picture`; null: there is no mutex
    /// The mutex of a worker that did not end before the time-out of Release. The worker still
    /// writes to the picture, so the next MakeMutex uses this mutex instead of a new one.
    UniqueHandle orphanedMutex_;
    std::atomic<std::uint32_t> generation_{0};
    /// Upper limit of the texture size that the self-test of InstallMap has set, pixels per side.
    std::int32_t sizeCap_ = std::numeric_limits<std::int32_t>::max();
    bool tilesWait_ = false;
};
