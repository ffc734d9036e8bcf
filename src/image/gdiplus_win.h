#pragma once
// Includes GDI+ together with the declarations that its headers need.

#include <algorithm>

#include "base/windows_types.h"
// GDI+ uses types of these headers, which windows.h omits under WIN32_LEAN_AND_MEAN.
#include <objidl.h>
#include <propidl.h>

// The GDI+ headers call min and max without a namespace. The macros min and max of windows.h are
// disabled, because they would break std::min and std::max. So the namespace Gdiplus uses the
// standard functions.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus

#include <gdiplus.h>
