#pragma once
// Keeps track of the loads of the map picture: which loads are under way, and how the other loads
// ended. The scene mutex is the mutex that guards the map picture.

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "image/map_picture.h"

/// Number of a load, counted in the order of their starts. A load uses two workers, one after the
/// other: the first loads the picture, the second splits it into tiles.
using LoadNumber = std::uint32_t;
inline constexpr LoadNumber kNoLoad = 0;

/// State of a load. A worker reports success or failure before it posts its message to the window.
/// So the window can compare a message with the reported states: a failure message that another
/// program has posted clears no textures.
enum class LoadState : std::uint32_t {
    Ended,      ///< no worker of the load runs, and the window need not handle anything for it
    Loading,    ///< the first worker loads the picture or waits for the lock
    Loaded,     ///< the window has to handle the loaded picture next
    Splitting,  ///< the second worker splits the picture or waits for the lock
    Split,      ///< the window has to handle the tiles next
    Failed,  ///< a worker failed or could not be started; the window has to handle the failure next
};

/// The loads of all windows. The window thread starts them, and any thread may report their states;
/// no function waits or allocates memory. A window is identified by its handle.
class LoadTracker {
public:
    /// Gives a number to a new load for `window`. Window thread, as for every function below that
    /// names no other thread.
    LoadNumber Start(const void* window) noexcept;

    /// Stores the state of a load. For Loaded, also stores that this load filled the picture.
    /// Ignores kNoLoad and a load that is too old to be remembered. A thread that reports Loaded
    /// must hold the scene mutex. Any thread.
    void Report(LoadNumber number, LoadState state) noexcept;

    /// The newest load of `window` that has this state; kNoLoad when there is none.
    LoadNumber Find(const void* window, LoadState state) const noexcept;

    /// Whether the map picture must be cleared after the load `failed`: true when `failed` is the
    /// newest load and the picture is empty or no other load has filled the picture since `failed`
    /// started. The caller must hold the scene mutex.
    /// @param stage  the present stage of the map picture
    bool MustClearTextures(LoadNumber failed, PictureStage stage) const noexcept;

    /// Whether the picture of this load was cleared before it was split, because a newer load
    /// replaces it. A split without a picture is then not a failure. Any thread that holds the
    /// scene mutex.
    /// @param stage  the present stage of the map picture
    bool IsSuperseded(LoadNumber number, PictureStage stage) const noexcept;

    /// Removes a window that is being destroyed. Its loads go on, but no window handles their end.
    /// @return whether any of its loads had not ended
    bool Forget(const void* window) noexcept;

    /// Whether a load or split for an existing window is under way. A failed load does not count.
    bool IsAnyUnderWay() const noexcept;

    /// Whether the window of the newest load was destroyed before the load had ended.
    bool IsNewestForgotten() const noexcept;

private:
    /// Number and state change in one atomic step, so that a worker that reports late cannot change
    /// a slot that belongs to a newer load. The alignment makes the atomic lock-free with clang;
    /// otherwise clang calls a library that MinGW programs do not link.
    struct alignas(2 * sizeof(std::uint32_t)) Progress {
        LoadNumber number;
        LoadState state;
    };
    struct Slot {
        std::atomic<Progress> progress{Progress{kNoLoad, LoadState::Ended}};
        /// Null when the window was destroyed. Used by the window thread only.
        const void* window = nullptr;
        /// The load that had filled the picture last when this load started. Used by the window
        /// thread only.
        LoadNumber filledBefore = kNoLoad;
    };
    static_assert(std::atomic<Progress>::is_always_lock_free, "a lock may allocate memory");

    const Slot& SlotOf(LoadNumber number) const noexcept { return slots_[number % slots_.size()]; }
    Slot& SlotOf(LoadNumber number) noexcept { return slots_[number % slots_.size()]; }

    // Only this many of the newest loads are remembered; older loads count as ended.
    static constexpr std::size_t kMaxRemembered = 64;
    std::array<Slot, kMaxRemembered> slots_;
    std::atomic<LoadNumber> newest_ = kNoLoad;    ///< written by the window thread
    std::atomic<LoadNumber> filledBy_ = kNoLoad;  ///< the load that filled the picture last
};
