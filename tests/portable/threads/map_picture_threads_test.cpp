// The map picture loaded, cut and freed by several threads at once, as the window and its workers
// do it: for the thread sanitizer, which sees what no order of events would show.
#include <gtest/gtest.h>

#include <mutex>
#include <thread>
#include <vector>

#include "image/load_tracker.h"
#include "image/map_picture.h"
#include "support/memory_picture.h"
#include "window/level_of_detail.h"

namespace {

/// What the window and its workers share.
struct Shared {
    MapPicture picture;
    TextureLimits limits;
    std::mutex mutex;
    std::atomic<std::uint32_t> generation = 0;
    LoadTracker loads;
};

/// A worker that does `work` unless all was freed before its turn came, and then reports it.
template <class Work>
std::thread StartWorker(Shared& shared, LoadNumber load, LoadState done, Work work) {
    return std::thread([=, &shared, generation = shared.generation.load()] {
        const std::lock_guard hold(shared.mutex);
        const bool isStale = shared.generation != generation;
        shared.loads.Report(load, isStale ? LoadState::Ended : work() ? done : LoadState::Failed);
    });
}

/// Sends a load on that has come so far. @return its number, kNoLoad when there is none
LoadNumber Advance(Shared& shared, LoadState reached, LoadState next) {
    const LoadNumber load = shared.loads.Find(&shared, reached);  // any address stands for a window
    shared.loads.Report(load, next);
    return load;
}

/// What the window does when the tiles are reported: reads every byte, as an upload does.
/// @return their sum, 0 when they were not there
unsigned Attach(Shared& shared) {
    const std::lock_guard hold(shared.mutex);
    unsigned sum = 0;
    for (int i = 0; shared.picture.HasAllTiles() && i < kTileCount; ++i) {
        const CGLTexture& tile = *shared.picture.Tiles()[i];
        const int size = tile.GetBufferWidth() * tile.GetBufferHeight() * tile.GetBytesPerPixel();
        for (int byte = 0; byte < size; ++byte) sum += tile.GetPixels()[byte];
    }
    return sum;
}

/// Clears the picture after a failure or, with all loads becoming stale, because it is freed.
void Clear(Shared& shared, LoadNumber failed = kNoLoad) {
    const std::lock_guard hold(shared.mutex);
    if (failed == kNoLoad) ++shared.generation;
    if (failed == kNoLoad || shared.loads.MustClearTextures(failed, shared.picture.Stage()))
        shared.picture.ClearTiles(failed == kNoLoad);
}

}  // namespace

TEST(MapPictureThreads, LoadsSplitsDetailChangesAndFreesMeetWithoutARace) {
    PictureFiles()[L"data/map.jpg"] = NoiseImage(128, 64);
    Shared shared;
    shared.limits.maxTextureSize = 128;
    LevelOfDetail detail;
    std::vector<std::thread> workers;
    int attached = 0;
    int busy = 0;
    const auto split = [&shared] { return shared.picture.Split(shared.limits); };
    for (int round = 0; round < 400; ++round) {
        detail.Apply(round % 2 == 0 ? kFinestFactor : kCoarsestFactor, shared.limits);
        const auto load = [&shared, folder = round % 8 == 3 ? L"missing/" : L"data/"] {
            return shared.picture.Load(shared.limits, folder) != kLoadFailed;
        };
        workers.push_back(
            StartWorker(shared, shared.loads.Start(&shared), LoadState::Loaded, load));
        for (int waited = 0; waited < 4; ++waited) {
            busy += shared.picture.IsBusy() ? 1 : 0;  // as each picture asks, without the lock
            if (const auto it = Advance(shared, LoadState::Loaded, LoadState::Splitting))
                workers.push_back(StartWorker(shared, it, LoadState::Split, split));
            if (Advance(shared, LoadState::Split, LoadState::Ended) != kNoLoad && Attach(shared))
                ++attached;
            if (const auto it = Advance(shared, LoadState::Failed, LoadState::Ended))
                Clear(shared, it);
            std::this_thread::yield();
        }
        if (round % 16 == 15) Clear(shared);
        if (workers.size() < 6 && round < 399) continue;
        for (std::thread& worker : workers) worker.join();
        workers.clear();
    }
    EXPECT_GT(attached, 0) << "no set of tiles ever came through";
    EXPECT_FALSE(shared.picture.IsBusy()) << "was busy " << busy << " times";
}
