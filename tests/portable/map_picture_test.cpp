// The map picture: the header of its file, its stages, and loads of several windows that overlap.
#include <gmock/gmock.h>

#include <sstream>

#include "image/load_tracker.h"
#include "image/map_picture.h"
#include "support/memory_bytes.h"
#include "support/memory_picture.h"

namespace {

using std::string_literals::operator""s;
using Found = std::vector<int>;  // width, height, components

const Found kRefused = {-7, -8, -9};  // as it was before
const std::string kStart = "\xFF\xD8";
const std::string kGrey16x15 = "\xFF\xC0\0\x0B\x08\0\x0F\0\x10\1"s;

Found Read(const std::string& bytes) {
    const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
    MemoryBytes source(exact);
    JpegSize size{-7, -8, -9};
    const bool isJpeg = ReadJpegHeader(source, size);
    EXPECT_EQ(isJpeg, size.width != -7);
    return {size.width, size.height, size.components};
}

/// A segment whose length field counts itself and `payload` bytes; they look like a frame header.
std::string Segment(char marker, std::size_t payload) {
    std::string bytes = {'\xFF', marker, char((payload + 2) >> 8), char(payload + 2)};
    for (std::size_t i = 0; i < payload; ++i) bytes += i % 2 == 0 ? '\xFF' : '\xC0';
    return bytes;
}

TEST(JpegHeader, FindsTheFrameBehindTheSegmentsBeforeItAndRefusesWhatIsNoJpeg) {
    EXPECT_EQ(Read(kStart + Segment('\xFE', 65533) + kGrey16x15), (Found{16, 15, 1}));
    // An empty segment, another frame type.
    EXPECT_EQ(Read(kStart + Segment('\xFE', 0) + Segment('\xC1', 15) + kGrey16x15).at(0), 16);
    EXPECT_EQ(Read(kStart + "\xFF\xC0\0\x14\x08\xFF\xFF\xFF\xFF\4"s), (Found{65535, 65535, 4}));
    // An end in place of a start, no marker behind a segment, a length of 0 that leads back into
    // itself, a fill byte that is taken for a marker.
    for (const std::string& none :
         {"\xFF\xD9" + kGrey16x15, kStart + Segment('\xDA', 10) + "\x12" + kGrey16x15.substr(1),
          kStart + "\xFF\xE0\0\0"s + kGrey16x15, kStart + "\xFF" + kGrey16x15})
        EXPECT_EQ(Read(none), kRefused);
    // Progressive, behind two segments.
    const std::string whole =
        kStart + Segment('\xE0', 5) + Segment('\xDB', 6) + "\xFF\xC2\0\x11\x08\x0A\x8C\x15\x18\3"s;
    EXPECT_EQ(Read(whole), (Found{5400, 2700, 3}));
    for (std::size_t end = 0; end < whole.size(); ++end)
        EXPECT_EQ(Read(whole.substr(0, end)), kRefused) << "cut after " << end;
}

const char kWindows[] = {'A', 'B'};  // their addresses stand for the handles

/// "A" starts a load for window A; "1+" load 1 has filled the picture, "1s" is being split, "1-"
/// has failed, "1." has ended.
struct Played : LoadTracker {
    explicit Played(const char* script) {
        const std::string_view states = "+s-.";
        const LoadState reached[] = {LoadState::Loaded, LoadState::Splitting, LoadState::Failed,
                                     LoadState::Ended};
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            if (word.size() == 1) {
                Start(&kWindows[word[0] - 'A']);
            } else {
                Report(LoadNumber(word[0] - '0'), reached[states.find(word[1])]);
            }
        }
    }
};

TEST(LoadTracker, OnlyTheNewestFailureClearsAndNoOtherLoadsPicture) {
    const std::pair<const char*, bool> cases[] = {
        {"A 1+", false},              // a stranger's message
        {"A 1+ 1s 1-", true},         // it could not be cut
        {"A 1+ 1s 1. A 2-", true},    // the picture of the load before lies there
        {"A 1- B", false},            // a newer load was started
        {"A B 2- 1+", false},         // an older one came later
        {"A B 2+ 1+ 2s 2-", false}};  // or between load and split
    for (const auto& [script, clears] : cases) {
        const Played loads(script);
        const LoadNumber failed = std::max(loads.Find(&kWindows[0], LoadState::Failed),
                                           loads.Find(&kWindows[1], LoadState::Failed));
        EXPECT_EQ(loads.MustClearTextures(failed, PictureStage::Loaded), clears) << script;
    }
    EXPECT_TRUE(Played("A B 1+ 2-").MustClearTextures(2, PictureStage::Empty))
        << "that is gone too";
    const Played loads("A 1+ B");
    EXPECT_TRUE(loads.IsSuperseded(1, PictureStage::Empty)) << "load 2 cleared the picture";
    EXPECT_FALSE(loads.IsSuperseded(2, PictureStage::Empty)) << "nothing newer comes";
}

TEST(LoadTracker, AWindowsEndConcernsTheOthersOnlyWhenNobodyElseGoesOn) {
    // What was played when A dies; whether it was unfinished, B goes on, the newest is forgotten.
    const std::tuple<const char*, bool, bool, bool> cases[] = {
        {"B", false, true, false},      {"A 1+", true, false, true},
        {"A 1-", true, false, true},    {"A 1+ 1s 1.", false, false, false},
        {"A B", true, true, false},     {"B 1+ 1s A", true, true, true},
        {"A B 2.", true, false, false}, {"A B 2-", true, false, false},
        {"A B B 3.", true, true, false}};
    for (const auto& [script, unfinished, othersGoOn, newestForgotten] : cases) {
        Played loads(script);
        EXPECT_EQ(loads.Forget(&kWindows[0]), unfinished) << script;
        EXPECT_EQ(loads.IsAnyUnderWay(), othersGoOn) << script;
        EXPECT_EQ(loads.IsNewestForgotten(), newestForgotten) << script;
    }
    LoadTracker loads;
    for (int i = 0; i < 1000; ++i) loads.Start(&kWindows[0]);
    for (LoadNumber late = 0; late < 900; ++late) loads.Report(late, LoadState::Failed);
    EXPECT_EQ(loads.Find(&kWindows[0], LoadState::Failed), kNoLoad) << "they came too late";
    for (const LoadNumber cut : {959U, 960U}) loads.Report(cut, LoadState::Split);
    EXPECT_EQ(loads.Find(&kWindows[0], LoadState::Split), 960U);
}

TEST(MapPicture, SplitsOnceAndWithinItsLimits) {
    PictureFiles()[L"data/map.jpg"] = NoiseImage(256, 128);
    MapPicture picture;
    TextureLimits limits;
    limits.maxTextureSize = 256;
    EXPECT_EQ(picture.Load(limits, L""), kLoadFailed) << "not from the current folder";
    EXPECT_EQ(picture.Load(limits, L"data/"), kLoadedUnchanged);
    limits.texScalerX = -1;  // 128 x 128 with a limit of 256: only the width is above
    limits.texScalerY = -1;
    limits.textureLimit = 256;
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(picture.Split(limits) && picture.HasAllTiles());
        EXPECT_EQ(Bytes(picture.MapTexture()).size(), 32U * 64U * 3U) << round;
    }
    EXPECT_TRUE(picture.TilesFit(64) && !picture.TilesFit(63));
    EXPECT_EQ(picture.Load(limits, L"missing/"), kLoadFailed);
    EXPECT_EQ(picture.Stage(), PictureStage::Empty);
}

}  // namespace
