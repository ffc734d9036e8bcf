#pragma once
// windows.h as this program wants it.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef STRICT
#define STRICT
#endif
#include <windows.h>
// The common controls do not stand without it.
#include <commctrl.h>
