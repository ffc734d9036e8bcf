#include "window/ui_scale.h"

namespace {

HFONT MakeMessageFont(UINT dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi)) {
        return nullptr;
    }
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

}  // namespace

UiScale::UiScale(UINT dpi) : dpi_(dpi), font_(MakeMessageFont(dpi)) {}

UiScale::~UiScale() {
    if (font_ != nullptr) DeleteObject(font_);
}

SIZE UiScale::Measure(HWND window, const wchar_t* text) const {
    const HDC dc = GetDC(window);
    const HGDIOBJ before = SelectObject(dc, font_);
    SIZE size{};
    GetTextExtentPoint32W(dc, text, lstrlenW(text), &size);
    SelectObject(dc, before);
    ReleaseDC(window, dc);
    return size;
}
