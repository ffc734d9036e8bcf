// The map picture loaded, cut and freed by several threads at once, as the window and its workers
// do it: for the thread sanitizer, which sees what no order of events would show.
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include "image/load_tracker.h"
#include "image/map_picture.h"
#include "support/memory_picture.h"
#include "window/level_of_detail.h"

namespace {

constexpr int kWidth = 128;
constexpr int kHeight = 64;
constexpr int kRounds = 400;

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

/// What the window does when a failure is reported.
void ClearAfter(Shared& shared, LoadNumber failed) {
    const std::lock_guard hold(shared.mutex);
    if (shared.loads.MustClearTextures(failed, shared.picture.Stage()))
        shared.picture.ClearTiles(false);
}

void Free(Shared& shared) {
    const std::lock_guard hold(shared.mutex);
    ++shared.generation;
    shared.picture.ClearMap();
    shared.picture.ClearTiles(false);
}

}  // namespace

TEST(MapPictureThreads, LoadsSplitsDetailChangesAndFreesMeetWithoutARace) {
    PictureFiles()[L"data/map.jpg"] = NoiseImage(kWidth, kHeight);
    Shared shared;
    shared.limits.maxTextureSize = kWidth;
    LevelOfDetail detail;
    std::vector<std::thread> workers;
    int attached = 0;
    int busy = 0;
    const auto load = [&shared](const wchar_t* folder) {
        return shared.picture.Load(shared.limits, folder) != kLoadFailed;
    };
    const auto split = [&shared] { return shared.picture.Split(shared.limits); };
    for (int round = 0; round < kRounds; ++round) {
        detail.Apply(round % 2 == 0 ? kFinestFactor : kCoarsestFactor, shared.limits);
        const wchar_t* folder = round % 8 == 3 ? L"missing/" : L"data/";
        workers.push_back(StartWorker(shared, shared.loads.Start(&shared), LoadState::Loaded,
                                      [=] { return load(folder); }));
        for (int waited = 0; waited < 4; ++waited) {
            busy += shared.picture.IsBusy() ? 1 : 0;  // as each picture asks, without the lock
            const LoadNumber loaded = Advance(shared, LoadState::Loaded, LoadState::Splitting);
            if (loaded != kNoLoad)
                workers.push_back(StartWorker(shared, loaded, LoadState::Split, split));
            const LoadNumber ready = Advance(shared, LoadState::Split, LoadState::Ended);
            if (ready != kNoLoad && Attach(shared) != 0) ++attached;
            const LoadNumber failed = Advance(shared, LoadState::Failed, LoadState::Ended);
            if (failed != kNoLoad) ClearAfter(shared, failed);
            std::this_thread::yield();
        }
        if (round % 16 == 15) Free(shared);
        if (workers.size() < 6) continue;
        for (std::thread& worker : workers) worker.join();
        workers.clear();
    }
    for (std::thread& worker : workers) worker.join();
    EXPECT_GT(attached, 0) << "no set of tiles ever came through";
    EXPECT_FALSE(shared.picture.IsBusy()) << "was busy " << busy << " times";
}
