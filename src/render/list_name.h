#pragma once

#include <cstdint>

#include "base/gl.h"

/// Display-list names are not reserved through OpenGL: an object uses the low half of its own
/// address and the names behind it that lie inside its own memory.
inline GLuint ListName(const void* object) noexcept {
    return static_cast<GLuint>(reinterpret_cast<std::uintptr_t>(object));
}

/// Whether two runs of list names share one. Two objects more than 4 GB apart may have the same low
/// halves; names wrap at 2^32.
inline bool ListNamesOverlap(GLuint a, GLuint countA, GLuint b, GLuint countB) noexcept {
    return b - a < countA || a - b < countB;
}
