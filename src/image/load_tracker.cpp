#include "image/load_tracker.h"

#include <algorithm>

LoadNumber LoadTracker::Start(const void* window) noexcept {
    ++newest_;
    Slot& slot = SlotOf(newest_);
    slot.window = window;
    slot.filledBefore = filledBy_;
    slot.progress.store({newest_, LoadState::Loading});
    return newest_;
}

void LoadTracker::Report(LoadNumber number, LoadState state) noexcept {
    if (number == kNoLoad) return;
    if (state == LoadState::Loaded) filledBy_ = number;
    std::atomic<Progress>& progress = SlotOf(number).progress;
    Progress before = progress;
    while (before.number == number && !progress.compare_exchange_weak(before, {number, state})) {
    }
}

LoadNumber LoadTracker::Find(const void* window, LoadState state) const noexcept {
    LoadNumber found = kNoLoad;
    for (const Slot& slot : slots_) {
        const Progress progress = slot.progress;
        if (slot.window == window && progress.state == state)
            found = std::max(found, progress.number);
    }
    return found;
}

bool LoadTracker::MustClearTextures(LoadNumber failed, PictureStage stage) const noexcept {
    if (failed == kNoLoad || failed != newest_) return false;
    // When an older load has filled the picture after the failed load started, the textures stay,
    // because the picture of the older load is good.
    const LoadNumber filledBy = filledBy_;
    return stage == PictureStage::Empty || filledBy == failed ||
           filledBy == SlotOf(failed).filledBefore;
}

bool LoadTracker::IsSuperseded(LoadNumber number, PictureStage stage) const noexcept {
    return number != kNoLoad && number != newest_ && stage == PictureStage::Empty;
}

bool LoadTracker::Forget(const void* window) noexcept {
    bool awaited = false;
    for (Slot& slot : slots_) {
        if (slot.window != window || slot.progress.load().state == LoadState::Ended) continue;
        slot.window = nullptr;
        awaited = true;
    }
    return awaited;
}

bool LoadTracker::IsAnyUnderWay() const noexcept {
    return std::any_of(slots_.begin(), slots_.end(), [](const Slot& slot) {
        const LoadState state = slot.progress.load().state;
        return slot.window != nullptr && state != LoadState::Ended && state != LoadState::Failed;
    });
}

bool LoadTracker::IsNewestForgotten() const noexcept {
    return newest_ != kNoLoad && SlotOf(newest_).window == nullptr;
}
