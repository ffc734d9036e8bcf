#include "window/level_of_detail.h"

#include "math/angles.h"

namespace {

constexpr std::int32_t kFactorStep = 100;     // percent from one row of kMeshSizes to the next
constexpr std::int32_t kLayersFactor = 1000;  // atmosphere shells = this / factor
static_assert(kLayersFactor / kFinestFactor <= kMaxAtmosphereLayers);
// percent; with a larger detail factor the atmosphere has one shell only
constexpr std::int32_t kMaxLayersFactor = 200;
// Row of kMeshSizes from which on Apply would make textures smaller. The table is shorter; see
// Apply.
constexpr std::int32_t kMinScaledRow = 100;
constexpr std::int32_t kMinTextureLimit = 16;  // pixels per side; Apply sets no smaller limit
constexpr std::int32_t kMinFps = 10;  // frames per second; a lower rate makes the detail coarser
constexpr std::int32_t kWarmUp = -1;  // value of measured_ before the warm-up frame
constexpr std::uint32_t kMsPerSecond = 1000;
// frames per second; any number above 1000 means that the frame was too short to measure
constexpr float kTooFastToMeasure = 1001.0F;

struct MeshSize {
    std::int32_t slices;
    std::int32_t stacks;
};
// The index of the row is factor / 100.
constexpr MeshSize kMeshSizes[] = {{180, 120}, {180, 120}, {180, 90}, {120, 90}, {120, 60},
                                   {60, 60},   {60, 30},   {36, 30},  {36, 30}};

}  // namespace

void LevelOfDetail::Apply(std::int32_t factor, TextureLimits& limits) noexcept {
    factor_ = Clamp(factor, kFinestFactor, kCoarsestFactor);
    const std::int32_t row = factor_ / kFactorStep;
    mesh_.sphereSlices = kMeshSizes[row].slices;
    mesh_.sphereStacks = kMeshSizes[row].stacks;
    mesh_.atmosphereLayers = factor_ <= kMaxLayersFactor ? kLayersFactor / factor_ : 1;
    const std::int32_t whole = limits.maxTextureSize;
    std::int32_t limit = whole;
    // Deliberate: the factor is clamped above, so `row` never reaches kMinScaledRow, and textures
    // keep their full size at every level.
    if (row >= kMinScaledRow) limit = Clamp(whole * kFactorStep / factor_, kMinTextureLimit, whole);
    limits.textureLimit = limit;
}

void LevelOfDetail::StartMeasuring() noexcept {
    measured_ = kWarmUp;
    fpsSum_ = 0;
}

TuneOutcome LevelOfDetail::AddFrame(bool busy, std::uint32_t elapsedMs) noexcept {
    frameRate_ = elapsedMs != 0 ? static_cast<float>(static_cast<double>(kMsPerSecond) / elapsedMs)
                                : kTooFastToMeasure;
    return Measure(busy, elapsedMs);
}

TuneOutcome LevelOfDetail::Measure(bool busy, std::uint32_t elapsedMs) noexcept {
    if (busy) StopMeasuring();
    if (measured_ >= kMeasuredFrames) return TuneOutcome::Idle;
    if (measured_ < 0) {
        ++measured_;
    } else if (elapsedMs != 0) {
        fpsSum_ += static_cast<std::int32_t>(kMsPerSecond / elapsedMs);
        ++measured_;
    }
    if (measured_ < kMeasuredFrames) return TuneOutcome::AnotherFrame;
    if (fpsSum_ / kMeasuredFrames >= kMinFps || factor_ >= kCoarsestFactor)
        return TuneOutcome::Idle;
    factor_ *= 2;
    return TuneOutcome::Coarser;
}

std::int32_t StepFactor(std::int32_t factor, bool coarser) noexcept {
    return Clamp(coarser ? factor * 2 : factor / 2, kFinestFactor, kCoarsestFactor);
}
