#pragma once

#include "base/gl.h"

/// Clears the error flags of OpenGL, so that the next glGetError reports only errors of later
/// calls.
inline void DrainErrors() noexcept {
    // The loop needs a limit: without a current context glGetError returns an error every time. The
    // limit is larger than the number of error flags of a context.
    constexpr int kMaxPending = 32;
    for (int i = 0; i < kMaxPending; ++i) {
        if (glGetError() == GL_NO_ERROR) return;
    }
}
