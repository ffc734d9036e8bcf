#include "window/tuning.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace {

class Tuning : public testing::Test {
protected:
    Tuning() { limits_.maxTextureSize = 4096; }
    TuneOutcome Step(std::uint32_t ms, bool busy = false) { return TuneStep(detail_, busy, ms); }

    DetailState detail_;
    TextureLimits limits_;
};

TEST_F(Tuning, FactorDecidesMeshAndAtmosphere) {
    for (const Row& row : Table("tuning_factor")) {
        ApplyPerfFactor(detail_, limits_, row.Int(0));
        EXPECT_EQ(detail_.perfFactor, row.Int(1)) << row.why;
        EXPECT_EQ(detail_.mesh.sphereSlices, row.Int(2)) << row.why;
        EXPECT_EQ(detail_.mesh.sphereStacks, row.Int(3)) << row.why;
        EXPECT_EQ(detail_.mesh.atmosphereLayers, row.Int(4)) << row.why;
        EXPECT_EQ(limits_.textureLimit, 4096) << "textures keep their size at every detail";
    }
    for (const Row& row : Table("tuning_step")) {
        EXPECT_EQ(StepFactor(row.Int(0), true), row.Int(1)) << row.why;
        EXPECT_EQ(StepFactor(row.Int(0), false), row.Int(2)) << row.why;
    }
}

TEST_F(Tuning, MeasuresThreeFramesAfterAWarmUp) {
    EXPECT_EQ(Step(500), TuneOutcome::Idle) << "nothing is measured before it was asked for";
    StartMeasuring(detail_);
    EXPECT_EQ(Step(5000), TuneOutcome::AnotherFrame) << "the warm-up frame does not count";
    EXPECT_EQ(Step(50), TuneOutcome::AnotherFrame);
    EXPECT_EQ(Step(0), TuneOutcome::AnotherFrame) << "too short to measure: not counted";
    EXPECT_EQ(Step(50), TuneOutcome::AnotherFrame);
    EXPECT_EQ(Step(50), TuneOutcome::Idle);
    EXPECT_EQ(detail_.perfFactor, 100);
    EXPECT_EQ(Step(5000), TuneOutcome::Idle) << "finished";
    StartMeasuring(detail_);
    Step(50);
    EXPECT_EQ(Step(50, true), TuneOutcome::Idle) << "a load under way gives it up";
    EXPECT_EQ(Step(50), TuneOutcome::Idle) << "it must not go on after the load";
}

}  // namespace
