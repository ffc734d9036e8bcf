#pragma once
// Includes GDI+ together with the declarations that its headers need.

#include <algorithm>

#include "base/windows_types.h"
// GDI+ uses types of these headers, which windows.h omits under WIN32_LEAN_AND_MEAN.
#include <objidl.h>
#include <propidl.h>

// Windows: the GDI+ headers call min and max without a namespace. The macros of windows.h are off
// because they would break the standard library, so std::min and std::max are made visible here.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus

#include <gdiplus.h>
