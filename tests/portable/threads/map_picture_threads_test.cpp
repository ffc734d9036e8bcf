// The map picture loaded, cut and freed by several threads at once, as the window and its workers
// do it: for the thread sanitizer, which sees what no order of events would show.
#include <gtest/gtest.h>

#include <mutex>
#include <thread>

#include "image/load_tracker.h"
#include "image/map_picture.h"
#include "support/memory_picture.h"
#include "window/level_of_detail.h"

namespace {

/// What the window and its workers share.
struct MapPictureThreads : testing::Test {
    /// A worker that does `work` unless all was freed before its turn came, and then reports it.
    template <class Work>
    void StartWorker(LoadNumber load, LoadState done, Work work) {
        workers.emplace_back([=, this, before = freed.load()] {
            const std::lock_guard hold(mutex);
            const bool isStale = freed != before;
            loads.Report(load, isStale ? LoadState::Ended : work() ? done : LoadState::Failed);
        });
    }
    /// Sends a load on that has come so far. @return its number, kNoLoad when there is none
    LoadNumber Advance(LoadState reached, LoadState next) {
        const LoadNumber load = loads.Find(this, reached);  // any address stands for a window
        loads.Report(load, next);
        return load;
    }
    /// Reads every byte, as an upload does. @return their sum, 0 when the tiles were not there
    unsigned Attach() {
        const std::lock_guard hold(mutex);
        unsigned sum = 0;
        for (int i = 0; picture.HasAllTiles() && i < kTileCount; ++i) {
            for (const int byte : Bytes(*picture.Tiles()[i])) sum += unsigned(byte);
        }
        return sum;
    }
    /// Clears the picture after a failure or, with all loads becoming stale, because it is freed.
    void Clear(LoadNumber failed = kNoLoad) {
        const std::lock_guard hold(mutex);
        if (failed == kNoLoad) ++freed;
        if (failed == kNoLoad || loads.LeavesTextures(failed, picture.Stage()))
            picture.ClearTiles(failed == kNoLoad);
    }

    MapPicture picture;
    TextureLimits limits;
    std::mutex mutex;
    std::atomic<std::uint32_t> freed = 0;
    LoadTracker loads;
    std::vector<std::thread> workers;
};

TEST_F(MapPictureThreads, LoadsSplitsDetailChangesAndFreesMeetWithoutARace) {
    PictureFiles()[L"data/map.jpg"] = NoiseImage(128, 64);
    limits.maxTextureSize = 128;
    LevelOfDetail detail;
    int attached = 0;
    for (int round = 0; round < 400; ++round) {
        detail.Apply(round % 2 == 0 ? kFinestFactor : kCoarsestFactor, limits);
        const auto* const folder = round % 8 == 3 ? L"missing/" : L"data/";
        StartWorker(loads.Start(this), LoadState::Loaded,
                    [=, this] { return picture.Load(limits, folder) != kLoadFailed; });
        for (int waited = 0; waited < 4; ++waited) {
            picture.IsBusy();  // as each frame asks, without the lock
            if (const auto it = Advance(LoadState::Loaded, LoadState::Splitting))
                StartWorker(it, LoadState::Split, [this] { return picture.Split(limits); });
            if (Advance(LoadState::Split, LoadState::Ended) != kNoLoad && Attach()) ++attached;
            if (const auto it = Advance(LoadState::Failed, LoadState::Ended)) Clear(it);
            std::this_thread::yield();
        }
        if (round % 16 == 15) Clear();
        if (workers.size() < 6 && round < 399) continue;
        for (std::thread& worker : workers) worker.join();
        workers.clear();
    }
    EXPECT_GT(attached, 0) << "no set of tiles ever came through";
    EXPECT_FALSE(picture.IsBusy());
}

}  // namespace
