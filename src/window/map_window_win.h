#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "base/handles_win.h"
#include "base/window_timer_win.h"

/// Number of timers of a map window. The ids of the timers are 1 to kMapTimers.
inline constexpr std::size_t kMapTimers = 4;

/// The data of one live map window.
class MapWindow {
public:
    explicit MapWindow(HWND handle) noexcept : window(handle), dc(handle) {}

    /// Stores `font` and selects it into the DC. When `font` is null, the DC keeps its default
    /// font.
    void UseFont(UniqueFont font);
    bool HasFont() const noexcept { return font_ != nullptr; }

    /// Notes that the message of a timer was posted back to the queue.
    /// @param id      id of the timer, 1 to kMapTimers
    /// @param starts  number of starts of the timer until now
    void NotePostedBack(UINT_PTR id, std::uint32_t starts) noexcept { postedBack_[id] = starts; }
    /// Removes the note that NotePostedBack has made. @return the number of starts in the note; 0:
    /// there was no note
    std::uint32_t TakePostedBack(UINT_PTR id) noexcept { return std::exchange(postedBack_[id], 0); }

    /// Stores the size of the frame that was just shown, pixels.
    /// @return whether the frame before had another size; false for the first frame
    bool NoteShownSize(std::int32_t width, std::int32_t height) noexcept;

    const HWND window;
    const WindowDc dc;  ///< kept for the life of the window (class style CS_OWNDC)
    WindowTimer sunTimer;

private:
    // Members are released in reverse order: the font is deselected before it is deleted, and the
    // DC is released last.
    UniqueFont font_;
    std::unique_ptr<SelectedObject> selectedFont_;
    std::array<std::uint32_t, kMapTimers + 1> postedBack_ = {};  ///< numbers of starts, by timer id
    std::int32_t shownWidth_ = 0;                                ///< 0 before the first frame
    std::int32_t shownHeight_ = 0;
};

/// Reads the client size of a window, pixels.
/// @return false while the width or the height is below 1; `width` and `height` are then unchanged
bool ClientSize(HWND window, std::int32_t& width, std::int32_t& height) noexcept;
