// Loads of several windows that overlap: whose failure clears the textures, and who goes on when a
// window dies.
#include "image/load_tracker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace {

const char kWindows[] = {'A', 'B'};  // their addresses stand for the handles

/// "A" starts a load for window A; "1+" load 1 has filled the picture, "1s" is being split, "1-"
/// has failed, "1." has ended.
void Play(LoadTracker& loads, const std::string& script) {
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        if (word == "A" || word == "B") {
            loads.Start(&kWindows[word[0] - 'A']);
            continue;
        }
        const char* const states = "+s-.";
        const LoadState reached[] = {LoadState::Loaded, LoadState::Splitting, LoadState::Failed,
                                     LoadState::Ended};
        loads.Report(static_cast<LoadNumber>(word[0] - '0'),
                     reached[std::string(states).find(word[1])]);
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
        {"an older one came meanwhile", "A B 1+ 2-", false},
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
}

TEST(LoadTracker, AWindowsEndConcernsTheOthersOnlyWhenNobodyElseGoesOn) {
    const struct {
        const char* why;
        const char* script;
        char dies;
        bool unfinished;
        bool otherGoesOn;
    } cases[] = {
        {"it was at rest", "A", 'B', false, true},
        {"it alone loaded", "A", 'A', true, false},
        {"it alone was about to split", "A 1+", 'A', true, false},
        {"it had not heard of its failure", "A 1-", 'A', true, false},
        {"it was through", "A 1+ 1s 1.", 'A', false, false},
        {"both load", "A B", 'A', true, true},
        {"the other splits", "B 1+ 1s A", 'A', true, true},
        {"the other gave up", "A B 2.", 'A', true, false},
        {"the other failed", "A B 2-", 'A', true, false},
        {"the other's second gave up", "A B B 3.", 'A', true, true},
    };
    for (const auto& c : cases) {
        LoadTracker loads;
        Play(loads, c.script);
        EXPECT_EQ(loads.Forget(&kWindows[c.dies - 'A']), c.unfinished) << c.why;
        EXPECT_EQ(loads.IsAnyUnderWay(), c.otherGoesOn) << c.why;
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
