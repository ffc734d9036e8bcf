#pragma once
// Sizes and font of the program's own controls, scaled for their monitor.

#include "windows_api.h"

/// Converts sizes to the scaling of one monitor, and owns the font for that scaling.
class UiScale {
public:
    /// @param dpi  dots per inch of the monitor; 96 is unscaled
    explicit UiScale(UINT dpi);
    UiScale(const UiScale&) = delete;
    UiScale& operator=(const UiScale&) = delete;
    ~UiScale();

    UINT Dpi() const { return dpi_; }
    /// Pixels for a size given at 96 dots per inch.
    int Pixels(int size) const { return MulDiv(size, static_cast<int>(dpi_), 96); }
    /// The font that the user has chosen for message texts; null when Windows does not report it.
    HFONT Font() const { return font_; }
    /// Size of a text in the font that Font returns, pixels.
    SIZE Measure(HWND window, const wchar_t* text) const;

private:
    UINT dpi_;
    HFONT font_;
};
