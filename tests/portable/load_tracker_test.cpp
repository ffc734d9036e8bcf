// Loads of several windows that overlap: whose failure clears the textures, and who goes on when a
// window dies.
#include "image/load_tracker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

const char kWindows[] = {'A', 'B'};  // their addresses stand for the handles

/// "A" starts a load for window A; "1+" load 1 has filled the picture, "1s" is being split, "1-"
/// has failed, "1." has ended.
void Play(LoadTracker& loads, const char* script) {
    const std::string_view states = "+s-.";
    const LoadState reached[] = {LoadState::Loaded, LoadState::Splitting, LoadState::Failed,
                                 LoadState::Ended};
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        if (word.size() == 1) {
            loads.Start(&kWindows[word[0] - 'A']);
        } else {
            loads.Report(static_cast<LoadNumber>(word[0] - '0'), reached[states.find(word[1])]);
        }
    }
}

TEST(LoadTracker, OnlyTheNewestFailureClearsAndNoOtherLoadsPicture) {
    const struct {
        const char* why;
        const char* script;
        bool clears;
        PictureStage stage = PictureStage::Loaded;
    } cases[] = {
        {"a stranger's message", "A 1+", false},
        {"the picture could not be read", "A 1-", true},
        {"it could not be cut", "A 1+ 1s 1-", true},
        {"the picture of the load before lies there", "A 1+ 1s 1. A 2-", true},
        {"a newer load was started", "A 1- B", false},
        {"an older one came later", "A B 2- 1+", false},
        {"an older one came between load and split", "A B 2+ 1+ 2s 2-", false},
        {"the older one is gone too", "A B 1+ 2-", true, PictureStage::Empty},
    };
    for (const auto& c : cases) {
        LoadTracker loads;
        Play(loads, c.script);
        const LoadNumber failed = std::max(loads.Find(&kWindows[0], LoadState::Failed),
                                           loads.Find(&kWindows[1], LoadState::Failed));
        EXPECT_EQ(loads.MustClearTextures(failed, c.stage), c.clears) << c.why;
    }
    LoadTracker loads;
    Play(loads, "A 1+ B");
    EXPECT_TRUE(loads.IsSuperseded(1, PictureStage::Empty)) << "load 2 cleared the picture";
    EXPECT_FALSE(loads.IsSuperseded(1, PictureStage::Loaded));
    EXPECT_FALSE(loads.IsSuperseded(2, PictureStage::Empty)) << "nothing newer comes";
}

TEST(LoadTracker, AWindowsEndConcernsTheOthersOnlyWhenNobodyElseGoesOn) {
    const struct {
        const char* why;
        const char* script;
        char dies;
        bool unfinished, otherGoesOn, newestForgotten;
    } cases[] = {
        {"it was at rest", "A", 'B', false, true, false},
        {"it alone loaded", "A", 'A', true, false, true},
        {"it alone was about to split", "A 1+", 'A', true, false, true},
        {"it had not heard of its failure", "A 1-", 'A', true, false, true},
        {"it was through", "A 1+ 1s 1.", 'A', false, false, false},
        {"both load", "A B", 'A', true, true, false},
        {"the other splits", "B 1+ 1s A", 'A', true, true, true},
        {"the other gave up", "A B 2.", 'A', true, false, false},
        {"the other failed", "A B 2-", 'A', true, false, false},
        {"the other's second gave up", "A B B 3.", 'A', true, true, false},
    };
    for (const auto& c : cases) {
        LoadTracker loads;
        Play(loads, c.script);
        EXPECT_EQ(loads.Forget(&kWindows[c.dies - 'A']), c.unfinished) << c.why;
        EXPECT_EQ(loads.IsAnyUnderWay(), c.otherGoesOn) << c.why;
        EXPECT_EQ(loads.IsNewestForgotten(), c.newestForgotten) << c.why;
    }
}

TEST(LoadTracker, AThousandLoadsAreTakenApart) {
    LoadTracker loads;
    for (int i = 0; i < 1000; ++i) loads.Start(&kWindows[0]);
    for (LoadNumber late = 0; late < 900; ++late) loads.Report(late, LoadState::Failed);
    EXPECT_EQ(loads.Find(&kWindows[0], LoadState::Failed), kNoLoad);
    EXPECT_TRUE(loads.IsAnyUnderWay()) << "a worker that came very late changed another load";
    for (const LoadNumber cut : {959U, 960U}) loads.Report(cut, LoadState::Split);
    EXPECT_EQ(loads.Find(&kWindows[0], LoadState::Split), 960U);
}

}  // namespace
