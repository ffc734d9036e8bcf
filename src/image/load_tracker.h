#pragma once
// Which loads of the map picture are under way, and how the others have ended.

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "image/map_picture.h"

/// Number of a load, in the order in which they were started; its split has the same.
using LoadNumber = std::uint32_t;
inline constexpr LoadNumber kNoLoad = 0;

/// How far a load has come. A worker that succeeds or fails reports that before it posts its
/// message, so that the window can tell the message from one that a stranger has posted.
enum class LoadState : std::uint32_t {
    Ended,      ///< the window was told, or nobody will be
    Loading,    ///< its worker reads the picture or waits for the lock
    Loaded,     ///< read; the window's turn
    Splitting,  ///< its second worker cuts the picture or waits for the lock
    Split,      ///< cut; the window's turn
    Failed,     ///< or could not be started; the window's turn
};

/// The loads of all windows, numbered at their start. Starts on the window thread, reports come
/// from any thread; nothing here waits or allocates. Windows are told apart by their handles.
class LoadTracker {
public:
    /// Numbers a new load for `window`. Window thread, like all but Report.
    LoadNumber Start(const void* window) noexcept;

    /// Takes down how far a load has come; kNoLoad and a load that is forgotten: nothing. Whoever
    /// reports Loaded holds the scene mutex. Any thread.
    void Report(LoadNumber number, LoadState state) noexcept;

    /// The newest load of `window` in that state, kNoLoad when there is none.
    LoadNumber Find(const void* window, LoadState state) const noexcept;

    /// Whether the failure of a load leaves textures behind that nobody will use: no newer load was
    /// started, and no other one has filled the picture since. The caller holds the scene mutex.
    /// @param stage  of the picture
    bool LeavesTextures(LoadNumber failed, PictureStage stage) const noexcept;

    /// Forgets a window that dies: its loads go on, and nobody will hear of them.
    /// @return whether one had not ended
    bool Forget(const void* window) noexcept;

    /// Whether a load or split of a window that lives is under way. One that gave up has ended.
    bool IsAnyUnderWay() const noexcept;

    /// Whether the window of the newest load died before the load had ended.
    bool IsNewestForgotten() const noexcept;

private:
    /// Changed in one piece: a worker that comes late finds another number in its slot. Aligned to
    /// its size because clang otherwise calls a library that a MinGW build does not link.
    struct alignas(2 * sizeof(std::uint32_t)) Progress {
        LoadNumber number;
        LoadState state;
    };
    struct Slot {
        std::atomic<Progress> progress{Progress{kNoLoad, LoadState::Ended}};
        const void* window = nullptr;       ///< null: forgotten. Window thread
        LoadNumber filledBefore = kNoLoad;  ///< whose picture was there at the start. Window thread
    };
    static_assert(std::atomic<Progress>::is_always_lock_free, "a lock may need memory");

    const Slot& SlotOf(LoadNumber number) const noexcept { return slots_[number % slots_.size()]; }
    Slot& SlotOf(LoadNumber number) noexcept { return slots_[number % slots_.size()]; }

    // A load older than that many counts as ended.
    static constexpr std::size_t kMaxRemembered = 64;
    std::array<Slot, kMaxRemembered> slots_;
    LoadNumber newest_ = kNoLoad;                 ///< window thread
    std::atomic<LoadNumber> filledBy_ = kNoLoad;  ///< the load whose picture came last
};
