#pragma once
// The few Windows types that portable headers use. On Windows they come from windows.h; elsewhere
// this header defines records of the same layout.

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
// windows.h defines macros with these names; this library has member functions with these names.
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
