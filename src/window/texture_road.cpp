#include "window/texture_road.h"

#include <algorithm>

#include "image/texture_limits.h"
#include "image/tile_grid.h"

namespace {

constexpr wchar_t kMapPictureName[] = L"map.jpg";

/// Shows on screen that something is under way; lowered on every way out.
class CountScope {
public:
    explicit CountScope(std::atomic<std::int32_t>& count) noexcept : count_(count) { ++count_; }
    CountScope(const CountScope&) = delete;
    CountScope& operator=(const CountScope&) = delete;
    ~CountScope() { --count_; }

private:
    std::atomic<std::int32_t>& count_;
};

}  // namespace

TextureBounds ScaledBounds(std::int32_t limit, const TextureLimits& limits) noexcept {
    return {ScaledLimit(limit, limits.texScalerX), ScaledLimit(limit, limits.texScalerY)};
}

std::wstring MapPicturePath(const std::wstring& dataDirectory) {
    return dataDirectory.empty() ? std::wstring() : dataDirectory + kMapPictureName;
}

int LoadTexture(TextureStore& store, const TextureLimits& limits,
                const std::wstring& dataDirectory) {
    store.ClearMap();
    store.ClearTiles(false);
    const std::wstring path = MapPicturePath(dataDirectory);
    if (path.empty()) return kLoadFailed;
    const TextureBounds bounds = ScaledBounds(limits.maxTextureSize, limits);
    const CountScope loading(store.loadingCount);
    const int result = store.MapTexture().LoadFromFile(path, bounds.width, bounds.height);
    if (result != kLoadFailed) store.SetStage(TextureStage::Loaded);
    return result;
}

bool SplitTextures(TextureStore& store, const TextureLimits& limits) noexcept {
    if (store.Stage() == TextureStage::Split) return true;
    if (store.Stage() == TextureStage::Empty) return false;
    const CountScope splitting(store.splittingCount);
    const TextureBounds bounds = ScaledBounds(limits.textureLimit, limits);
    CGLTexture& map = store.MapTexture();
    if (map.GetWidth() > bounds.width || map.GetHeight() > bounds.height) {
        map.Rescale(std::min(map.GetWidth(), bounds.width),
                    std::min(map.GetHeight(), bounds.height));
    }
    const bool done = SplitIntoGrid(store.Tiles(), kTileColumns, kTileRows);
    store.SetStage(done ? TextureStage::Split : TextureStage::Empty);
    return done;
}

bool FitTexture(TextureStore& store, const TextureLimits& limits) noexcept {
    CGLTexture& map = store.MapTexture();
    if (store.Stage() != TextureStage::Loaded || map.GetPixels() == nullptr) return false;
    const TextureBounds bounds = ScaledBounds(limits.maxTextureSize, limits);
    return FitToLimits(map, bounds.width, bounds.height);
}
