#pragma once
// Sizes and fonts of the program's own controls at the scaling of their monitor.

#include "window/host_windows.h"

/// What belongs to one scaling.
class ScaledLook {
public:
    /// @param dpi  dots per inch of the monitor; 96 is unscaled
    explicit ScaledLook(UINT dpi);
    ScaledLook(const ScaledLook&) = delete;
    ScaledLook& operator=(const ScaledLook&) = delete;
    ~ScaledLook();

    UINT Dpi() const { return dpi_; }
    /// Pixels for a size given at 96 dots per inch.
    int Pixels(int size) const { return MulDiv(size, static_cast<int>(dpi_), 96); }
    /// Windows' font for texts in windows, owned by this object.
    HFONT Font() const { return font_; }
    /// Pixels of a text in that font.
    SIZE Measure(HWND window, const wchar_t* text) const;

private:
    UINT dpi_;
    HFONT font_;
};
