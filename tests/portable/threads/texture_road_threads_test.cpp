// The road of the map picture walked by several threads at once, the way the window and its workers
// walk it: for the thread sanitizer, which sees what no order of events would show.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

#include "support/gl_stand_in.h"
#include "support/memory_picture.h"
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
};

/// The lock, or nothing after a while. Not a timed mutex: the sanitizer does not know its waits.
std::unique_lock<std::mutex> LockForAWhile(std::mutex& mutex) {
    std::unique_lock<std::mutex> hold(mutex, std::defer_lock);
    for (int tries = 0; tries < 200 && !hold.try_lock(); ++tries) {
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    return hold;
}

/// What a worker posts; the window thread takes it.
struct Post {
    std::atomic<int> loaded = 0;
    std::atomic<int> split = 0;
};

template <class Work>
void RunWorker(SharedRoad& road, std::uint32_t generation, const Work& work) {
    const auto hold = LockForAWhile(road.mutex);
    if (hold.owns_lock() && road.freed == generation) work();
}

std::thread StartLoad(SharedRoad& road, Post& post) {
    return std::thread([&road, &post, generation = road.freed.load()] {
        RunWorker(road, generation, [&] {
            if (LoadTexture(road.store, road.limits, L"data/") != kLoadFailed) ++post.loaded;
        });
    });
}

std::thread StartSplit(SharedRoad& road, Post& post) {
    return std::thread([&road, &post, generation = road.freed.load()] {
        RunWorker(road, generation, [&] {
            if (SplitTextures(road.store, road.limits)) ++post.split;
        });
    });
}

/// What the window does when the tiles are reported: reads every byte, as an upload does.
/// @return whether they were there
bool Attach(SharedRoad& road, unsigned& sum) {
    const auto hold = LockForAWhile(road.mutex);
    if (!hold.owns_lock() || !road.store.HasAllTiles()) return false;
    for (int i = 0; i < kTileCount; ++i) {
        const CGLTexture& tile = *road.store.Tiles()[i];
        const std::uint8_t* pixels = tile.GetPixels();
        const int size = tile.GetBufferWidth() * tile.GetBufferHeight() * tile.GetBytesPerPixel();
        for (int byte = 0; byte < size; ++byte) sum += pixels[byte];
    }
    return true;
}

void Free(SharedRoad& road) {
    const std::lock_guard hold(road.mutex);
    ++road.freed;
    road.store.ClearMap();
    road.store.ClearTiles(false);
}

}  // namespace

TEST(TextureRoadThreads, LoadsSplitsDetailChangesAndFreesMeetWithoutARace) {
    Files() = {};
    Files().pictures[L"data/map.jpg"] = NoiseImage(kWidth, kHeight);
    SharedRoad road;
    road.limits.maxTextureSize = kWidth;
    DetailState detail;
    Post post;
    std::vector<std::thread> workers;
    unsigned sum = 0;
    int attached = 0;
    int busy = 0;
    for (int round = 0; round < kRounds; ++round) {
        ApplyPerfFactor(detail, road.limits, round % 2 == 0 ? kFinestFactor : kCoarsestFactor);
        workers.push_back(StartLoad(road, post));
        for (int waited = 0; waited < 4; ++waited) {
            busy += road.store.IsBusy() ? 1 : 0;  // as each picture asks, without the lock
            if (post.loaded.exchange(0) > 0) workers.push_back(StartSplit(road, post));
            if (post.split.exchange(0) > 0 && Attach(road, sum)) ++attached;
            std::this_thread::yield();
        }
        if (round % 16 == 15) Free(road);
        if (workers.size() < 6) continue;
        for (std::thread& worker : workers) worker.join();
        workers.clear();
        if (post.loaded.exchange(0) > 0) workers.push_back(StartSplit(road, post));
    }
    for (std::thread& worker : workers) worker.join();
    EXPECT_GT(attached, 0) << "no set of tiles ever came through";
    EXPECT_FALSE(road.store.IsBusy()) << "was busy " << busy << " times";
    EXPECT_NE(sum, 0U);
}
