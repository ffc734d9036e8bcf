#pragma once

#include <cstdlib>

/// What a fuzz target promises. Without a message: the stack that libFuzzer prints says which.
inline void Check(bool holds) {
    if (!holds) std::abort();
}
