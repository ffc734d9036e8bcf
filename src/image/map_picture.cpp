#include "image/map_picture.h"

#include <algorithm>

namespace {

constexpr wchar_t kFileName[] = L"map.jpg";

/// Makes a counter larger by 1 until the end of the scope. While the counter is above 0, a status
/// line on the screen shows that the map loads or splits its picture.
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

MapPicture::MapPicture() noexcept {
    std::transform(textures_.begin(), textures_.end(), tiles_.begin(),
                   [](CGLTexture& texture) { return &texture; });
}

std::wstring MapPicture::PathIn(const std::wstring& dataDirectory) {
    return dataDirectory.empty() ? std::wstring() : dataDirectory + kFileName;
}

int MapPicture::Load(const TextureLimits& limits, const std::wstring& dataDirectory) {
    ClearMap();
    ClearTiles(false);
    const std::wstring path = PathIn(dataDirectory);
    if (path.empty()) return kLoadFailed;
    const TextureBounds bounds = ScaledBounds(limits.maxTextureSize, limits);
    const CountScope loading(loadingCount_);
    const int result = MapTexture().LoadFromFile(path, bounds.width, bounds.height);
    if (result != kLoadFailed) stage_ = PictureStage::Loaded;
    return result;
}

bool MapPicture::Split(const TextureLimits& limits) noexcept {
    if (stage_ == PictureStage::Split) return true;
    if (stage_ == PictureStage::Empty) return false;
    const CountScope splitting(splittingCount_);
    const TextureBounds bounds = ScaledBounds(limits.textureLimit, limits);
    CGLTexture& map = MapTexture();
    if (map.GetWidth() > bounds.width || map.GetHeight() > bounds.height) {
        map.Rescale(std::min(map.GetWidth(), bounds.width),
                    std::min(map.GetHeight(), bounds.height));
    }
    const bool done = SplitIntoGrid(Tiles(), kTileColumns, kTileRows);
    stage_ = done ? PictureStage::Split : PictureStage::Empty;
    return done;
}

bool MapPicture::Fit(const TextureLimits& limits) noexcept {
    if (stage_ != PictureStage::Loaded || MapTexture().GetPixels() == nullptr) return false;
    const TextureBounds bounds = ScaledBounds(limits.maxTextureSize, limits);
    return FitToLimits(MapTexture(), bounds.width, bounds.height);
}

void MapPicture::ClearMap() noexcept {
    MapTexture().Clear(true);
    stage_ = PictureStage::Empty;
}

void MapPicture::ClearTiles(bool resetSize) noexcept {
    for (CGLTexture& texture : textures_) texture.Clear(resetSize);
    stage_ = PictureStage::Empty;
}

bool MapPicture::HasAllTiles() const noexcept {
    return stage_ == PictureStage::Split &&
           std::all_of(textures_.begin(), textures_.end(),
                       [](const CGLTexture& texture) { return texture.GetPixels() != nullptr; });
}

bool MapPicture::TilesFit(std::int32_t maxTextureSize) const noexcept {
    return std::all_of(textures_.begin(), textures_.end(), [=](const CGLTexture& texture) {
        return texture.GetBufferWidth() <= maxTextureSize &&
               texture.GetBufferHeight() <= maxTextureSize;
    });
}
