#pragma once

#include "base/windows_types.h"

/// What the map window asks of OpenGL: true colour with depth, double-buffered, in a window; the
/// driver may answer with less.
PIXELFORMATDESCRIPTOR MapPixelFormat() noexcept;
