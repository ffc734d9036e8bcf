#include "window/level_of_detail.h"

#include "math/angles.h"

namespace {

constexpr std::int32_t kFactorStep = 100;     // percent a row of the table
constexpr std::int32_t kLayersFactor = 1000;  // layers = this / factor
static_assert(kLayersFactor / kFinestFactor <= kMaxAtmosphereLayers);
constexpr std::int32_t kLayersUpTo = 200;       // percent; above, one layer is left
constexpr std::int32_t kScaledLimitFrom = 100;  // table rows; see ApplyPerfFactor
constexpr std::int32_t kSmallestLimit = 16;     // pixels
constexpr std::int32_t kFastEnough = 10;        // frames a second
constexpr std::uint32_t kMsPerSecond = 1000;
constexpr float kTooFastToMeasure = 1001.0F;

struct MeshSize {
    std::int32_t slices;
    std::int32_t stacks;
};
// By factor / 100.
constexpr MeshSize kMeshSizes[] = {{180, 120}, {180, 120}, {180, 90}, {120, 90}, {120, 60},
                                   {60, 60},   {60, 30},   {36, 30},  {36, 30}};

}  // namespace

void ApplyPerfFactor(DetailState& detail, TextureLimits& limits, std::int32_t factor) noexcept {
    detail.perfFactor = Clamp(factor, kFinestFactor, kCoarsestFactor);
    const std::int32_t row = detail.perfFactor / kFactorStep;
    detail.mesh.sphereSlices = kMeshSizes[row].slices;
    detail.mesh.sphereStacks = kMeshSizes[row].stacks;
    detail.mesh.atmosphereLayers =
        detail.perfFactor <= kLayersUpTo ? kLayersFactor / detail.perfFactor : 1;
    const std::int32_t whole = limits.maxTextureSize;
    std::int32_t limit = whole;
    // Deliberate: the clamp above never lets the factor reach this row, so textures keep their full
    // size at every detail.
    if (row >= kScaledLimitFrom)
        limit = Clamp(whole * kFactorStep / detail.perfFactor, kSmallestLimit, whole);
    limits.textureLimit = limit;
}

std::int32_t StepFactor(std::int32_t factor, bool coarser) noexcept {
    return Clamp(coarser ? factor * 2 : factor / 2, kFinestFactor, kCoarsestFactor);
}

void StartMeasuring(DetailState& detail) noexcept {
    detail.tuneCounter = kTuneWarmUp;
    detail.tuneFpsSum = 0;
}

TuneOutcome TuneStep(DetailState& detail, bool busy, std::uint32_t elapsedMs) noexcept {
    if (busy) {
        detail.tuneCounter = kTuneFrames;
        return TuneOutcome::Idle;
    }
    if (detail.tuneCounter >= kTuneFrames) return TuneOutcome::Idle;
    if (detail.tuneCounter < 0) {
        ++detail.tuneCounter;
    } else if (elapsedMs != 0) {
        detail.tuneFpsSum += static_cast<std::int32_t>(kMsPerSecond / elapsedMs);
        ++detail.tuneCounter;
    }
    if (detail.tuneCounter < kTuneFrames) return TuneOutcome::AnotherFrame;
    detail.tuneFpsSum /= kTuneFrames;
    if (detail.tuneFpsSum >= kFastEnough || detail.perfFactor >= kCoarsestFactor)
        return TuneOutcome::Idle;
    detail.tuneFpsSum = kFastEnough;
    detail.perfFactor *= 2;
    return TuneOutcome::Coarser;
}

float FramesPerSecond(std::uint32_t elapsedMs) noexcept {
    if (elapsedMs == 0) return kTooFastToMeasure;
    return static_cast<float>(1000.0 / elapsedMs);
}
