#pragma once

#include "base/gl.h"

/// Takes the GL errors that others left behind, so that they are not blamed on the next call.
inline void DrainErrors() noexcept {
    // More than a context can hold at once. Without a current context glGetError reports for ever,
    // and an unbounded wait for "no error" would hang the host.
    constexpr int kMostPending = 32;
    for (int round = 0; round < kMostPending; ++round) {
        if (glGetError() == GL_NO_ERROR) return;
    }
}
