#pragma once

#include "base/windows_types.h"

/// The class of the map windows.
inline constexpr wchar_t kMapWindowClass[] = L"Zelmo 3D map window - OpenGL version";
inline constexpr wchar_t kMapWindowTitle[] = L"GL Map";

LRESULT CALLBACK MapWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
