#pragma once

#include <vector>

#include "base/windows_types.h"

class GlRecording;

/// Adds every OpenGL command that `modules` call to a recording, as long as this object lives; the
/// commands are also executed. Only one object at a time.
class GlRecordingHooks {
public:
    GlRecordingHooks(GlRecording& recording, const std::vector<HMODULE>& modules);
    GlRecordingHooks(const GlRecordingHooks&) = delete;
    GlRecordingHooks& operator=(const GlRecordingHooks&) = delete;
    ~GlRecordingHooks();
};
