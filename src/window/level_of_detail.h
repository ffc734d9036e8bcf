#pragma once
// Level of detail: the detail factor, the mesh and the texture limit that the factor sets, and the
// measurement of frames that makes the detail coarser on a slow machine.

#include <cstdint>

#include "image/texture_limits.h"
#include "render/mesh_detail.h"

inline constexpr std::int32_t kFinestFactor = 50;     // detail factor, percent
inline constexpr std::int32_t kCoarsestFactor = 800;  // detail factor, percent
// Frames of one measurement. The warm-up frame before these frames is not counted.
inline constexpr std::int32_t kMeasuredFrames = 3;

enum class TuneOutcome : std::uint8_t {
    Idle,          ///< nothing more to do
    AnotherFrame,  ///< the measurement needs another frame
    Coarser,       ///< frames were too slow: the factor was doubled, and the caller must apply it
};

/// The detail factor, its mesh, and the measurement. Window thread.
class LevelOfDetail {
public:
    /// The detail factor in percent, [50, 800]. A larger factor means less detail.
    std::int32_t Factor() const noexcept { return factor_; }
    const MeshDetail& Mesh() const noexcept { return mesh_; }

    /// Clamps `factor` to [50, 800] and stores it. Sets the mesh and the texture limit for this
    /// factor.
    void Apply(std::int32_t factor, TextureLimits& limits) noexcept;

    /// Begins a measurement with a warm-up frame.
    void StartMeasuring() noexcept;
    void StopMeasuring() noexcept { measured_ = kMeasuredFrames; }
    /// Whether the warm-up frame has ended and the measurement has not ended.
    bool IsMeasuring() const noexcept { return measured_ >= 0 && measured_ < kMeasuredFrames; }
    /// Frames measured so far. Meaningful only while IsMeasuring is true.
    std::int32_t FramesMeasured() const noexcept { return measured_; }

    /// Stores the duration of a painted frame, and adds it to the measurement under way, if any.
    /// @param busy       whether a picture is being loaded or split; this stops the measurement
    /// @param elapsedMs  0: the frame was too short to be measured and does not count
    TuneOutcome AddFrame(bool busy, std::uint32_t elapsedMs) noexcept;
    /// Frames per second, computed from the duration of the last frame; above 1000 when that frame
    /// was too short to measure.
    float FrameRate() const noexcept { return frameRate_; }

private:
    TuneOutcome Measure(bool busy, std::uint32_t elapsedMs) noexcept;

    std::int32_t factor_ = 100;
    MeshDetail mesh_;
    std::int32_t measured_ = kMeasuredFrames;  ///< frames so far; -1: the warm-up is next
    std::int32_t fpsSum_ = 0;  ///< sum of the rates of the measured frames, frames per second
    float frameRate_ = 0.0F;
};

/// The factor of the next coarser or finer level, clamped to [50, 800].
std::int32_t StepFactor(std::int32_t factor, bool coarser) noexcept;
