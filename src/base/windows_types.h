#pragma once
// The few Windows types that portable interfaces name: the real ones on Windows, records of the
// same layout elsewhere, so that the portable code reads the same everywhere.

#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef STRICT
#define STRICT
#endif
#include <windows.h>
// windows.h turns these words into macros; here they are names of operations.
#undef DrawText
#undef GetCharWidth

#else

#include <cstdint>

struct SYSTEMTIME {
    std::uint16_t wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};

struct POINTFLOAT {
    float x, y;
};

struct GLYPHMETRICSFLOAT {
    float gmfBlackBoxX, gmfBlackBoxY;
    POINTFLOAT gmfptGlyphOrigin;
    float gmfCellIncX, gmfCellIncY;
};

#endif
