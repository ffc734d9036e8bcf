#pragma once
// The status bar below list and map: the selected city, the number of cities listed, the time in
// UTC.

#include <string>

#include "window/ui_scale.h"
#include "windows_api.h"

class StatusBar {
public:
    bool Create(HWND parent);
    void SetScale(const UiScale& scale);
    /// Moves the bar to the lower edge of its parent. @return its height, pixels
    int Place(const UiScale& scale);
    void SetTexts(const std::wstring& city, const std::wstring& count,
                  const std::wstring& universalTime, const UiScale& scale);

private:
    /// Sets the widths of the parts: the two parts on the right are as wide as their texts, the
    /// first part gets the remaining width.
    void LayOutParts(const UiScale& scale);

    HWND bar_ = nullptr;
    std::wstring texts_[3];  ///< texts of the parts, from left to right
};
