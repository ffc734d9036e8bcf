#pragma once
// windows.h and commctrl.h with the definitions that this program needs.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef STRICT
#define STRICT
#endif
#include <windows.h>
// After windows.h: commctrl.h uses its types.
#include <commctrl.h>
