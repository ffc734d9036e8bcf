#pragma once
// windows.h and commctrl.h with the definitions that this program needs.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef STRICT
#define STRICT
#endif
#include <windows.h>
// Include commctrl.h after windows.h, because commctrl.h uses types of windows.h.
#include <commctrl.h>
