#include "render/current_context_win.h"
#include "render/gl_context_win.h"
#include "render/scene.h"
#include "window/level_of_detail.h"
#include "window/map_window_win.h"

void SetPerfFactor(DetailState& detail, std::int32_t factor, TextureLimits& limits,
                   CGLContext& context, CScene& scene, const MapWindow& window) {
    ApplyPerfFactor(detail, limits, factor);
    {
        const ForeignContextGuard guard(context);
        if (context.MakeCurrent(window.dc.Get())) scene.Compile();
    }
    detail.tuneCounter = kTuneFrames;
    InvalidateRect(window.window, nullptr, FALSE);
}
