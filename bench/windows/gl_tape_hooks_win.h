#pragma once

#include <vector>

#include "base/windows_types.h"

class GlTape;

/// Puts every OpenGL command that `modules` call onto a tape, as long as this lives; the commands
/// run all the same. One at a time.
class GlTapeHooks {
public:
    GlTapeHooks(GlTape& tape, const std::vector<HMODULE>& modules);
    GlTapeHooks(const GlTapeHooks&) = delete;
    GlTapeHooks& operator=(const GlTapeHooks&) = delete;
    ~GlTapeHooks();
};
