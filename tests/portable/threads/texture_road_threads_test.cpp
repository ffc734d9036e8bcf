// The road of the map picture walked by several threads at once, the way the window and its workers
// walk it: for the thread sanitizer, which sees what no order of events would show.
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include "support/memory_picture.h"
#include "window/load_tracker.h"
#include "window/texture_road.h"
#include "window/tuning.h"

namespace {

constexpr int kWidth = 128;
constexpr int kHeight = 64;
constexpr int kRounds = 400;

/// What the window and its workers share.
struct SharedRoad {
    TextureStore store;
    TextureLimits limits;
    std::mutex mutex;
    std::atomic<std::uint32_t> freed = 0;
    LoadTracker loads;
};

/// A worker that does `work` unless all was freed before its turn came, and then reports it.
template <class Work>
std::thread StartWorker(SharedRoad& road, LoadNumber load, LoadState done, Work work) {
    return std::thread([=, &road, generation = road.freed.load()] {
        const std::lock_guard hold(road.mutex);
        const bool isStale = road.freed != generation;
        road.loads.Report(load, isStale ? LoadState::Ended : work() ? done : LoadState::Failed);
    });
}

/// Sends a load on that has come so far. @return its number, kNoLoad when there is none
LoadNumber Advance(SharedRoad& road, LoadState reached, LoadState next) {
    const LoadNumber load = road.loads.Find(&road, reached);  // any address stands for a window
    road.loads.Report(load, next);
    return load;
}

/// What the window does when the tiles are reported: reads every byte, as an upload does.
/// @return their sum, 0 when they were not there
unsigned Attach(SharedRoad& road) {
    const std::lock_guard hold(road.mutex);
    unsigned sum = 0;
    for (int i = 0; road.store.HasAllTiles() && i < kTileCount; ++i) {
        const CGLTexture& tile = *road.store.Tiles()[i];
        const int size = tile.GetBufferWidth() * tile.GetBufferHeight() * tile.GetBytesPerPixel();
        for (int byte = 0; byte < size; ++byte) sum += tile.GetPixels()[byte];
    }
    return sum;
}

/// What the window does when a failure is reported.
void ClearAfter(SharedRoad& road, LoadNumber failed) {
    const std::lock_guard hold(road.mutex);
    if (road.loads.LeavesTextures(failed, road.store.Stage())) road.store.ClearTiles(false);
}

void Free(SharedRoad& road) {
    const std::lock_guard hold(road.mutex);
    ++road.freed;
    road.store.ClearMap();
    road.store.ClearTiles(false);
}

}  // namespace

TEST(TextureRoadThreads, LoadsSplitsDetailChangesAndFreesMeetWithoutARace) {
    PictureFiles()[L"data/map.jpg"] = NoiseImage(kWidth, kHeight);
    SharedRoad road;
    road.limits.maxTextureSize = kWidth;
    DetailState detail;
    std::vector<std::thread> workers;
    int attached = 0;
    int busy = 0;
    const auto load = [&road](const wchar_t* folder) {
        return LoadTexture(road.store, road.limits, folder) != kLoadFailed;
    };
    const auto split = [&road] { return SplitTextures(road.store, road.limits); };
    for (int round = 0; round < kRounds; ++round) {
        ApplyPerfFactor(detail, road.limits, round % 2 == 0 ? kFinestFactor : kCoarsestFactor);
        const wchar_t* folder = round % 8 == 3 ? L"missing/" : L"data/";
        workers.push_back(StartWorker(road, road.loads.Start(&road), LoadState::Loaded,
                                      [=] { return load(folder); }));
        for (int waited = 0; waited < 4; ++waited) {
            busy += road.store.IsBusy() ? 1 : 0;  // as each picture asks, without the lock
            const LoadNumber loaded = Advance(road, LoadState::Loaded, LoadState::Splitting);
            if (loaded != kNoLoad)
                workers.push_back(StartWorker(road, loaded, LoadState::Split, split));
            const LoadNumber ready = Advance(road, LoadState::Split, LoadState::Ended);
            if (ready != kNoLoad && Attach(road) != 0) ++attached;
            const LoadNumber failed = Advance(road, LoadState::Failed, LoadState::Ended);
            if (failed != kNoLoad) ClearAfter(road, failed);
            std::this_thread::yield();
        }
        if (round % 16 == 15) Free(road);
        if (workers.size() < 6) continue;
        for (std::thread& worker : workers) worker.join();
        workers.clear();
    }
    for (std::thread& worker : workers) worker.join();
    EXPECT_GT(attached, 0) << "no set of tiles ever came through";
    EXPECT_FALSE(road.store.IsBusy()) << "was busy " << busy << " times";
}
