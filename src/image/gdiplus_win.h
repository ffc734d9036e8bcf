#pragma once
// GDI+ with what its headers expect to find around them.

#include <algorithm>

#include "base/windows_types.h"
// windows.h leaves these out in its lean form; GDI+ names their types.
#include <objidl.h>
#include <propidl.h>

// Windows: the GDI+ headers call min and max without saying whose. The macros of windows.h would
// break the standard library, so they get the standard's functions.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus

#include <gdiplus.h>
