#pragma once
// Computes the places of the parts of the photo panel, in window pixels, y upward. Plain
// arithmetic.
//
// From the top down: two lines of titles, the photos button, the paging buttons, the photos, and
// the square with the buttons for the view.

#include <algorithm>
#include <cstdint>

/// Width of the column at the right edge of the window that holds buttons and photos, pixels.
inline constexpr std::int32_t kPhotoPanelWidth = 108;
/// Height of the strip at the lower edge of the window that is reserved for the buttons, pixels.
/// Photos are placed relative to the top of this strip.
inline constexpr std::int32_t kPanelBottom = 108;
inline constexpr std::int32_t kPhotoGap = 4;  ///< between two photos, pixels

/// Heights and gaps of the title strip, pixels.
inline constexpr std::int32_t kTitleGap = 8;  ///< between the titles and the photos button
inline constexpr std::int32_t kPhotosButtonHeight = 24;
inline constexpr std::int32_t kPagingButtonHeight = 19;  ///< of the visible part of the button
inline constexpr std::int32_t kPagingGap = 4;            ///< above and below the paging buttons

/// The values from which the layout is computed, pixels.
struct PanelArea {
    std::int32_t width = 0;       ///< width of the window
    std::int32_t height = 0;      ///< height of the window
    std::int32_t lineHeight = 0;  ///< line height of the font
};

/// Left edge of the panel.
constexpr std::int32_t PanelX(const PanelArea& area) noexcept {
    return area.width - kPhotoPanelWidth;
}

/// Height from the upper edge of the window to the bottom of the photos button.
constexpr std::int32_t PhotosButtonDepth(std::int32_t lineHeight) noexcept {
    return 2 * lineHeight + kTitleGap + kPhotosButtonHeight;
}

/// Height of the strip at the upper edge of the window with the titles and the photo buttons.
constexpr std::int32_t TitleStripHeight(std::int32_t lineHeight) noexcept {
    return PhotosButtonDepth(lineHeight) + kPagingGap + kPagingButtonHeight + kPagingGap;
}

/// Height between the title strip and the strip of height kPanelBottom; negative in a very low
/// window.
constexpr std::int32_t PhotoStackHeight(const PanelArea& area) noexcept {
    return area.height - TitleStripHeight(area.lineHeight) - kPanelBottom;
}

/// Left end of a title with the width `textWidth`. The title is centred in the panel, but begins at
/// least 4 pixels from the left edge of the panel.
constexpr std::int32_t TitleX(std::int32_t panelX, std::int32_t textWidth) noexcept {
    constexpr std::int32_t kMinMargin = 4;
    return panelX + std::max((kPhotoPanelWidth - textWidth) / 2, kMinMargin);
}

/// Left end of a line with the width `textWidth` that ends 4 pixels left of the panel. The result
/// is at least 0, because OpenGL draws no part of a line that begins left of the window.
constexpr std::int32_t CaptionX(std::int32_t panelX, std::int32_t textWidth) noexcept {
    constexpr std::int32_t kMargin = 4;
    return std::max(panelX - kMargin - textWidth, 0);
}

/// Stacks the photos from the title strip downward.
class PhotoStack {
public:
    explicit constexpr PhotoStack(const PanelArea& area) noexcept
        : hiddenY_(area.height), top_(PhotoStackHeight(area)) {}

    /// Returns the bottom of the next photo, relative to kPanelBottom. A photo that would reach
    /// into the strip of the buttons gets a place above the window, and so do all photos after it.
    constexpr std::int32_t Place(std::int32_t height) noexcept {
        const std::int32_t bottom = top_ - height;
        top_ -= height + kPhotoGap;
        if (bottom < 0) return hiddenY_;
        ++shown_;
        return bottom;
    }
    /// Number of photos placed inside the window. These are the first photos of the stack.
    constexpr std::int32_t GetShownCount() const noexcept { return shown_; }

private:
    std::int32_t hiddenY_;
    std::int32_t top_;
    std::int32_t shown_ = 0;
};
