#include "gl_recording_win.h"

#include <cctype>
#include <utility>

#include "gl_recording_hooks_win.h"

namespace {

/// Replays vertices of any pattern, call by call; slow, but overlays have few vertices.
void PlayMixedRun(const VertexRun& run) {
    const float* f = run.floats.data();
    const double* d = run.doubles.data();
    for (std::size_t i = 0; i < run.count; ++i) {
        for (const char kind : run.pattern) {
            if (kind == 'n') glNormal3f(f[0], f[1], f[2]);
            if (kind == 't') glTexCoord2f(f[0], f[1]);
            if (kind == 'v') glVertex3f(f[0], f[1], f[2]);
            if (kind == 'N') glNormal3d(d[0], d[1], d[2]);
            if (kind == 'T') glTexCoord2d(d[0], d[1]);
            if (kind == 'V') glVertex3d(d[0], d[1], d[2]);
            f += kind == 't' ? 2 : std::islower(kind) != 0 ? 3 : 0;
            d += kind == 'T' ? 2 : std::isupper(kind) != 0 ? 3 : 0;
        }
    }
}

void PlayRun(const VertexRun& run) {
    const float* f = run.floats.data();
    const double* d = run.doubles.data();
    if (run.pattern == "ntv") {
        for (std::size_t i = 0; i < run.count; ++i, f += 8) {
            glNormal3f(f[0], f[1], f[2]);
            glTexCoord2f(f[3], f[4]);
            glVertex3f(f[5], f[6], f[7]);
        }
    } else if (run.pattern == "nv") {
        for (std::size_t i = 0; i < run.count; ++i, f += 6) {
            glNormal3f(f[0], f[1], f[2]);
            glVertex3f(f[3], f[4], f[5]);
        }
    } else if (run.pattern == "NV") {
        for (std::size_t i = 0; i < run.count; ++i, d += 6) {
            glNormal3d(d[0], d[1], d[2]);
            glVertex3d(d[3], d[4], d[5]);
        }
    } else {
        PlayMixedRun(run);
    }
}

}  // namespace

void GlRecording::Record(const std::vector<HMODULE>& modules,
                         const std::function<void()>& operation) {
    steps_.clear();
    size_ = 0;
    const GlRecordingHooks hooks(*this, modules);
    operation();
}

void GlRecording::Play(HDC dc) const {
    for (const Step& step : steps_) {
        if (step.command) {
            step.command(dc);
        } else {
            PlayRun(step.run);
        }
    }
}

void GlRecording::Add(std::function<void(HDC)> command) {
    ++size_;
    steps_.push_back({std::move(command), {}});
}

void GlRecording::AddPart(char kind, const float* values, std::size_t count) {
    vertex_.floats.insert(vertex_.floats.end(), values, values + count);
    EndVertexAt(kind);
}

void GlRecording::AddPart(char kind, const double* values, std::size_t count) {
    vertex_.doubles.insert(vertex_.doubles.end(), values, values + count);
    EndVertexAt(kind);
}

void GlRecording::EndVertexAt(char kind) {
    ++size_;
    vertex_.pattern += kind;
    if (kind != 'v' && kind != 'V') return;
    if (steps_.empty() || steps_.back().command || steps_.back().run.pattern != vertex_.pattern) {
        steps_.push_back({nullptr, {vertex_.pattern, {}, {}, 0}});
    }
    VertexRun& run = steps_.back().run;
    run.floats.insert(run.floats.end(), vertex_.floats.begin(), vertex_.floats.end());
    run.doubles.insert(run.doubles.end(), vertex_.doubles.begin(), vertex_.doubles.end());
    ++run.count;
    vertex_ = {};
}
