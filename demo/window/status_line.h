#pragma once
// The line below list and map: the chosen city, how many cities are listed, universal time.

#include <string>

#include "window/dpi.h"
#include "window/host_windows.h"

class StatusLine {
public:
    bool Create(HWND parent);
    void SetLook(const ScaledLook& look);
    /// Takes its place at the lower edge. @return its height, pixels
    int Place(const ScaledLook& look);
    void SetTexts(const std::wstring& city, const std::wstring& count,
                  const std::wstring& universalTime, const ScaledLook& look);

private:
    /// Divides the line by the room that its texts need.
    void Divide(const ScaledLook& look);

    HWND bar_ = nullptr;
    std::wstring parts_[3];
};
