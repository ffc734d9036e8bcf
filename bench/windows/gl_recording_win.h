#pragma once
// Records the OpenGL commands of a function and replays them with all arguments precomputed: the
// baseline for that function. Vertices are kept in plain arrays, so that a replay costs only the
// calls.

#include <functional>
#include <string>
#include <vector>

#include "base/gl.h"

/// Consecutive vertices that were made by the same calls in the same order.
struct VertexRun {
    std::string pattern;  ///< a letter for each call of one vertex, see PlayMixedRun
    std::vector<float> floats;
    std::vector<double> doubles;
    std::size_t count = 0;
};

class GlRecording {
public:
    GlRecording() = default;
    GlRecording(const GlRecording&) = delete;
    GlRecording& operator=(const GlRecording&) = delete;

    /// Runs `operation` and records the OpenGL commands that `modules` call meanwhile. Only one
    /// recording at a time.
    void Record(const std::vector<HMODULE>& modules, const std::function<void()>& operation);
    /// Replays the commands in order. Where the operation swapped its buffers, those of `dc` are
    /// swapped.
    void Play(HDC dc = nullptr) const;
    /// Number of recorded commands.
    std::size_t Size() const { return size_; }

    // For the hooks.
    void Add(std::function<void(HDC)> command);
    void AddPart(char kind, const float* values, std::size_t count);
    void AddPart(char kind, const double* values, std::size_t count);

private:
    /// A single command, or a run of vertices where `command` is empty.
    struct Step {
        std::function<void(HDC)> command;
        VertexRun run;
    };
    void EndVertexAt(char kind);

    std::vector<Step> steps_;
    VertexRun vertex_;  ///< the vertex whose calls are being recorded
    std::size_t size_ = 0;
};
