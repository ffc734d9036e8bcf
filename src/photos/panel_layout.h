#pragma once
// Where the parts of the photo panel stand: plain arithmetic in window pixels, y upward.

#include <algorithm>
#include <cstdint>

/// Width of the column at the window's right edge that holds buttons and photos, pixels.
inline constexpr std::int32_t kPhotoPanelWidth = 108;
/// Height of the strip at the lower edge that is left to the buttons; the origin of the images.
inline constexpr std::int32_t kPanelBottom = 108;
inline constexpr std::int32_t kPhotoGap = 4;

/// What the layout depends on, pixels.
struct PanelArea {
    std::int32_t width = 0;       ///< of the window
    std::int32_t height = 0;      ///< of the window
    std::int32_t lineHeight = 0;  ///< line height of the font
};

constexpr std::int32_t PanelX(const PanelArea& area) noexcept {
    return area.width - kPhotoPanelWidth;
}

/// Height of the strip at the upper edge with the titles and the paging buttons.
constexpr std::int32_t TitleStripHeight(std::int32_t lineHeight) noexcept {
    return 2 * lineHeight + 59;
}

/// Height between the title strip and the buttons; negative in a very low window.
constexpr std::int32_t PhotoStackHeight(const PanelArea& area) noexcept {
    return area.height - TitleStripHeight(area.lineHeight) - kPanelBottom;
}

/// Where a title of this width begins: centred in the panel, at least 4 pixels from its edge.
constexpr std::int32_t TitleX(std::int32_t panelX, std::int32_t textWidth) noexcept {
    constexpr std::int32_t kLeastMargin = 4;
    return panelX + std::max((kPhotoPanelWidth - textWidth) / 2, kLeastMargin);
}

/// Where a line of this width begins that ends 4 pixels left of the panel. Not left of the window:
/// OpenGL would drop the whole line.
constexpr std::int32_t CaptionX(std::int32_t panelX, std::int32_t textWidth) noexcept {
    constexpr std::int32_t kMargin = 4;
    return std::max(panelX - kMargin - textWidth, 0);
}

/// Stacks the images from the title strip downward.
class PhotoStack {
public:
    explicit constexpr PhotoStack(const PanelArea& area) noexcept
        : hiddenY_(area.height), current_(PhotoStackHeight(area)) {}

    /// Gives the y of the next image, relative to the images' origin. One that would reach among
    /// the buttons gets a y above the window; so do all that follow it.
    constexpr std::int32_t Place(std::int32_t height) noexcept {
        const std::int32_t y = current_ - height;
        current_ -= height + kPhotoGap;
        if (y < 0) return hiddenY_;
        ++shown_;
        return y;
    }
    /// Images placed inside the window; they are the first ones.
    constexpr std::int32_t GetShownCount() const noexcept { return shown_; }

private:
    std::int32_t hiddenY_;
    std::int32_t current_;
    std::int32_t shown_ = 0;
};
