#pragma once

#include <string>

#include "windows_api.h"

/// Puts a text on the clipboard. Does nothing when another program holds the clipboard.
void CopyText(HWND owner, const std::wstring& text);
