#pragma once
// Level of detail: what a detail factor means, and how the window measures itself to find one.

#include <atomic>
#include <cstdint>

#include "render/mesh_detail.h"

inline constexpr std::int32_t kFinestFactor = 50;      // percent
inline constexpr std::int32_t kCoarsestFactor = 800;   // percent
inline constexpr std::int32_t kSmallestTexture = 128;  // pixels, before GL was asked
inline constexpr std::int32_t kTuneWarmUp = -1;
inline constexpr std::int32_t kTuneFrames = 3;  // frames measured; as a counter: idle

/// Size limits of the map texture. Written by the window thread, read by workers.
struct TextureLimits {
    std::atomic<std::int32_t> maxTextureSize{kSmallestTexture};  ///< pixels a side, GL's or the cap
    std::atomic<std::int32_t> textureLimit{kSmallestTexture};    ///< pixels a side, when splitting
    std::atomic<std::int32_t> texScalerX{0};   ///< base-2 exponent on the width limits
    std::atomic<std::int32_t> texScalerY{-1};  ///< base-2 exponent on the height limits
};

/// Detail factor and measurement. Window thread.
struct DetailState {
    std::int32_t perfFactor = 100;  ///< percent, [50, 800]; larger means less detail
    MeshDetail mesh;
    std::int32_t tuneCounter = kTuneFrames;  ///< -1 warm-up, 0 to 2 measuring, 3 idle
    std::int32_t tuneFpsSum = 0;             ///< sum, then average, of measured frame rates
    float fpsShown = 0.0F;
};

/// Sets the factor, clamped to [50, 800], and all that follows from it.
void ApplyPerfFactor(DetailState& detail, TextureLimits& limits, std::int32_t factor) noexcept;

/// The factor of the next coarser or finer level, clamped.
std::int32_t StepFactor(std::int32_t factor, bool coarser) noexcept;

/// Begins a measurement with a warm-up frame.
void StartMeasuring(DetailState& detail) noexcept;

enum class TuneOutcome : std::uint8_t {
    Idle,          ///< nothing more to do
    AnotherFrame,  ///< the measurement wants another frame
    Coarser,       ///< too slow: perfFactor has been doubled and is to be put in force
};

/// Takes one painted frame into the measurement.
/// @param busy       a texture is being loaded or split: the measurement is given up
/// @param elapsedMs  duration of the frame; 0 is not counted
TuneOutcome TuneStep(DetailState& detail, bool busy, std::uint32_t elapsedMs) noexcept;

/// Frames a second of a frame that took `elapsedMs`; above 1000 when it was too short to measure.
float FramesPerSecond(std::uint32_t elapsedMs) noexcept;
