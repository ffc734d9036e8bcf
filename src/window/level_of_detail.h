#pragma once
// Level of detail: what a detail factor means, and how the window measures itself to find one.

#include <cstdint>

#include "image/texture_limits.h"
#include "render/mesh_detail.h"

class CGLContext;
class CScene;
struct MapWindow;

inline constexpr std::int32_t kFinestFactor = 50;     // percent
inline constexpr std::int32_t kCoarsestFactor = 800;  // percent
inline constexpr std::int32_t kTuneWarmUp = -1;
inline constexpr std::int32_t kTuneFrames = 3;  // frames measured; as a counter: idle

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

/// Puts a factor in force on a live window: as ApplyPerfFactor, and the display lists are made
/// again and a measurement is given up. The picture has to be loaded anew for it.
void SetPerfFactor(DetailState& detail, std::int32_t factor, TextureLimits& limits,
                   CGLContext& context, CScene& scene, const MapWindow& window);

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
