#pragma once
// Level of detail: the detail factor, the mesh and the texture limit that it sets, and the
// measurement of frames that makes the detail coarser on a slow machine.

#include <cstdint>

#include "image/texture_limits.h"
#include "render/mesh_detail.h"

inline constexpr std::int32_t kFinestFactor = 50;     // percent
inline constexpr std::int32_t kCoarsestFactor = 800;  // percent
inline constexpr std::int32_t kMeasuredFrames = 3;    // in a measurement, after a warm-up frame

enum class TuneOutcome : std::uint8_t {
    Idle,          ///< nothing more to do
    AnotherFrame,  ///< the measurement needs another frame
    Coarser,       ///< too slow: the factor has been doubled, and the caller must apply it
};

/// The detail factor, its mesh, and the measurement. Window thread.
class LevelOfDetail {
public:
    /// Percent, [50, 800]; larger means less detail.
    std::int32_t Factor() const noexcept { return factor_; }
    const MeshDetail& Mesh() const noexcept { return mesh_; }

    /// Sets the factor, clamped to [50, 800], and with it the mesh and the texture limit.
    void Apply(std::int32_t factor, TextureLimits& limits) noexcept;

    /// Begins a measurement with a warm-up frame.
    void StartMeasuring() noexcept;
    void StopMeasuring() noexcept { measured_ = kMeasuredFrames; }
    /// Whether the warm-up frame is over and the measurement is not.
    bool IsMeasuring() const noexcept { return measured_ >= 0 && measured_ < kMeasuredFrames; }
    /// Frames measured so far. Meaningful only while IsMeasuring is true.
    std::int32_t FramesMeasured() const noexcept { return measured_; }

    /// Stores the duration of a painted frame, and adds it to the measurement under way, if any.
    /// @param busy       a picture is being loaded or split: stops the measurement
    /// @param elapsedMs  0: too short to be measured; the frame does not count
    TuneOutcome AddFrame(bool busy, std::uint32_t elapsedMs) noexcept;
    /// Frames a second at the speed of the last frame; above 1000 when it was too short to measure.
    float FrameRate() const noexcept { return frameRate_; }

private:
    TuneOutcome Measure(bool busy, std::uint32_t elapsedMs) noexcept;

    std::int32_t factor_ = 100;
    MeshDetail mesh_;
    std::int32_t measured_ = kMeasuredFrames;  ///< frames; -1: the warm-up frame comes next
    std::int32_t fpsSum_ = 0;                  ///< sum over the measured frames, frames a second
    float frameRate_ = 0.0F;
};

/// The factor of the next coarser or finer level, clamped.
std::int32_t StepFactor(std::int32_t factor, bool coarser) noexcept;
