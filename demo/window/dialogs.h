#pragma once
// The program's dialogs.

#include "windows_api.h"

/// Each function shows a modal dialog over `owner` with its texts in `font`, and returns when the
/// user has closed the dialog.
void ShowAbout(HWND owner, HFONT font);
void ShowKeys(HWND owner, HFONT font);
