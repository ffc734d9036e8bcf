#pragma once

#include <cstdint>

#include "base/gl.h"

/// Returns the first display-list name of an object: the low half of its address. Further display
/// lists of the object use the next names. An object uses at most as many names as the object has
/// bytes, so that two objects less than 4 GB apart have no name in common.
/// Deliberate: names are not reserved with glGenLists. The library never calls glGenLists, which
/// could return a name that an object is about to use.
inline GLuint ListName(const void* object) noexcept {
    return static_cast<GLuint>(reinterpret_cast<std::uintptr_t>(object));
}

/// Whether two ranges of list names have a name in common. Two objects have a name in common when
/// the distance between them is about a multiple of 4 GB, because names wrap around at 2^32.
/// @param a, b            first names
/// @param countA, countB  numbers of names
inline bool ListNamesOverlap(GLuint a, GLuint countA, GLuint b, GLuint countB) noexcept {
    return b - a < countA || a - b < countB;
}
