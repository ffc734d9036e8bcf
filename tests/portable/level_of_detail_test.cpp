#include "window/level_of_detail.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace {

TEST(LevelOfDetail, FactorDecidesMeshAndAtmosphere) {
    LevelOfDetail detail;
    TextureLimits limits;
    limits.maxTextureSize = 4096;
    for (const Row& row : Table("detail_factor")) {
        detail.Apply(row.Int(0), limits);
        EXPECT_EQ(detail.Factor(), row.Int(1)) << row.why;
        EXPECT_EQ(detail.Mesh().sphereSlices, row.Int(2)) << row.why;
        EXPECT_EQ(detail.Mesh().sphereStacks, row.Int(3)) << row.why;
        EXPECT_EQ(detail.Mesh().atmosphereLayers, row.Int(4)) << row.why;
        EXPECT_EQ(limits.textureLimit, 4096) << "textures keep their size at every detail";
    }
    const std::int32_t steps[][3] = {
        {50, 100, 50}, {100, 200, 50}, {300, 600, 150}, {800, 800, 400}};
    for (const auto& [factor, coarser, finer] : steps) {
        EXPECT_EQ(StepFactor(factor, true), coarser);
        EXPECT_EQ(StepFactor(factor, false), finer);
    }
}

TEST(LevelOfDetail, MeasuresThreeFramesAfterAWarmUp) {
    LevelOfDetail detail;
    const auto expect = [&detail](TuneOutcome outcome, std::uint32_t ms, const char* why,
                                  bool busy = false) {
        EXPECT_EQ(detail.AddFrame(busy, ms), outcome) << why;
    };
    expect(TuneOutcome::Idle, 500, "nothing is measured before it was asked for");
    detail.StartMeasuring();
    expect(TuneOutcome::AnotherFrame, 5000, "the warm-up frame does not count");
    expect(TuneOutcome::AnotherFrame, 50, "first");
    expect(TuneOutcome::AnotherFrame, 0, "too short to measure: not counted");
    expect(TuneOutcome::AnotherFrame, 50, "second");
    expect(TuneOutcome::Idle, 50, "third: 20 frames a second are enough");
    EXPECT_EQ(detail.Factor(), 100);
    expect(TuneOutcome::Idle, 5000, "finished");
    detail.StartMeasuring();
    for (int frame = 0; frame < 3; ++frame) expect(TuneOutcome::AnotherFrame, 101, "slow");
    expect(TuneOutcome::Coarser, 101, "9 frames a second are too few");
    EXPECT_EQ(detail.Factor(), 200);
    detail.StartMeasuring();
    expect(TuneOutcome::AnotherFrame, 50, "warm-up");
    expect(TuneOutcome::Idle, 50, "a load under way gives it up", true);
    expect(TuneOutcome::Idle, 50, "it must not go on after the load");
}

}  // namespace
