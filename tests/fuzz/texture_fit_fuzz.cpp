// Loads a picture of arbitrary sides under arbitrary limits, fits and splits it, and reads every
// byte that is left.

#include <cstdlib>

#include "image/jpeg_texture.h"
#include "image/texture_limits.h"
#include "image/tile_grid.h"
#include "support/memory_picture.h"

namespace {

constexpr int kMaxSide = 96;  // pixels

unsigned Sum(const CJpegTexture& texture) {
    const std::uint8_t* const pixels = texture.GetPixels();
    if (pixels == nullptr) return 0;
    if (texture.GetWidth() > texture.GetBufferWidth()) std::abort();
    if (texture.GetHeight() > texture.GetBufferHeight()) std::abort();
    const int bytes =
        texture.GetBufferWidth() * texture.GetBufferHeight() * texture.GetBytesPerPixel();
    unsigned sum = 0;
    for (int i = 0; i < bytes; ++i) sum += pixels[i];
    return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 10) return 0;
    MemoryImage image = NoiseImage(data[0] % kMaxSide + 1, data[1] % kMaxSide + 1);
    image.bottomUp = data[2] % 2 != 0;
    for (std::size_t i = 10; i < size && i - 10 < image.bytes.size(); ++i) {
        image.bytes[i - 10] = data[i];
    }
    CGLTexture tiles[8];
    CGLTexture* pointers[8];
    for (int i = 0; i < 8; ++i) pointers[i] = &tiles[i];
    CGLTexture& map = tiles[0];

    map.Load(std::make_unique<MemoryPicture>(image), data[3] * 2 - 1, data[4] * 2 - 1);
    unsigned sum = Sum(map);
    FitToLimits(map, ScaledLimit(data[5], data[6] % 8 - 4), ScaledLimit(data[7], data[6] / 32 - 4));
    sum += Sum(map);
    map.SwapRedBlue();
    SplitIntoGrid(pointers, 1 << (data[8] % 3), 2);
    for (CGLTexture& tile : tiles) {
        tile.ConvertToRgba(static_cast<std::uint8_t>(sum));
        tile.ReplaceByBrightness(0, data[9], sum);
        sum += Sum(tile);
    }
    if (MemoryPicture::LiveCount() != 0 || MemoryPicture::LockCount() != 0) std::abort();
    volatile unsigned keep = sum;  // so that no byte goes unread
    static_cast<void>(keep);
    return 0;
}
