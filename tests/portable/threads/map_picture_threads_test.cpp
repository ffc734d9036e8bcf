// The map picture loaded, cut and freed by several threads at once, as the window and its workers
// do it: for the thread sanitizer, which sees what no order of events would show.
#include <gtest/gtest.h>

#include <mutex>
#include <thread>

#include "image/load_tracker.h"
#include "image/map_picture.h"
#include "support/memory_picture.h"

TEST(MapPictureThreads, LoadsSplitsAndFreesMeetWithoutARace) {
    PictureFiles()[L"data/map.jpg"] = NoiseImage(128, 64);
    MapPicture picture;
    LoadTracker loads;
    std::mutex mutex;  // as workers and window hold it
    const TextureLimits limits;
    std::size_t attached = 0;
    for (int round = 0; round < 300; ++round) {
        const auto* const folder = round % 8 == 3 ? L"missing/" : L"data/";
        const LoadNumber load = loads.Start(&mutex);  // any address stands for a window
        std::thread loader([&] {
            const std::lock_guard hold(mutex);
            const bool isLoaded = picture.Load(limits, folder) != kLoadFailed;
            loads.Report(load, isLoaded ? LoadState::Loaded : LoadState::Failed);
        });
        std::thread splitter([&] {
            const std::lock_guard hold(mutex);
            loads.Report(load, picture.Split(limits) ? LoadState::Split : LoadState::Ended);
        });
        while (loads.Find(&mutex, LoadState::Loading) == load)
            picture.IsBusy();  // without the lock
        if (const std::lock_guard hold(mutex); picture.HasAllTiles()) {
            attached += Bytes(*picture.Tiles()[7]).size();
            picture.ClearTiles(true);
        }
        loads.MustClearTextures(load, PictureStage::Empty);
        loader.join();
        splitter.join();
    }
    EXPECT_GT(attached, 0U) << "no set of tiles ever came through";
    EXPECT_FALSE(picture.IsBusy());
}
