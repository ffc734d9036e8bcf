#pragma once
// Takes down the OpenGL commands of a road and gives them again with every value ready: the floor
// of that road. Vertices lie in plain arrays, so that giving them again costs their calls alone.

#include <functional>
#include <string>
#include <vector>

#include "base/gl.h"

/// A row of vertices that came by the same calls in the same order.
struct VertexRun {
    std::string pattern;  ///< a letter for each call of one vertex, see gl_tape_win.cpp
    std::vector<float> floats;
    std::vector<double> doubles;
    std::size_t count = 0;
};

class GlTape {
public:
    GlTape() = default;
    GlTape(const GlTape&) = delete;
    GlTape& operator=(const GlTape&) = delete;

    /// Runs `road` and takes down what `modules` call meanwhile. One tape at a time.
    void Record(const std::vector<HMODULE>& modules, const std::function<void()>& road);
    /// Gives the commands again, in order; `dc` is swapped where the road swapped its own.
    void Play(HDC dc = nullptr) const;
    /// Commands on the tape.
    std::size_t Size() const { return size_; }

    // For the hooks.
    void Add(std::function<void(HDC)> command);
    void AddPart(char kind, const float* values, std::size_t count);
    void AddPart(char kind, const double* values, std::size_t count);

private:
    /// A single command, or a run of vertices where it is empty.
    struct Step {
        std::function<void(HDC)> command;
        VertexRun run;
    };
    void EndVertexAt(char kind);

    std::vector<Step> steps_;
    VertexRun vertex_;  ///< the one under way
    std::size_t size_ = 0;
};
