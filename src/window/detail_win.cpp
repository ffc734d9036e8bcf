#include "window/detail_win.h"

#include "render/current_context_win.h"
#include "window/loader_win.h"
#include "window/scene_life_win.h"

void SetPerfFactor(HWND window, std::int32_t factor) {
    MapState& map = Map();
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    ApplyPerfFactor(map.detail, map.textures.limits, factor);
    {
        const ForeignContextGuard guard(map.drawing.context);
        if (map.drawing.context.MakeCurrent(entry->dc.Get())) CompileScene(map);
    }
    map.detail.tuneCounter = kTuneFrames;
    InvalidateRect(window, nullptr, FALSE);
    StartLoad(window);
}

void StepPerfFactor(HWND window, bool coarser) {
    const std::int32_t present = Map().detail.perfFactor;
    const std::int32_t candidate = StepFactor(present, coarser);
    if (candidate != present) SetPerfFactor(window, candidate);
}
