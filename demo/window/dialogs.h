#pragma once
// The program's dialogs.

#include "window/host_windows.h"

/// Each returns when the user has closed it. @param font  of all its texts
void ShowAbout(HWND owner, HFONT font);
void ShowKeys(HWND owner, HFONT font);
