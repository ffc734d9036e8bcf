// Loads a picture of any sides under any limits, fits it and splits it as the loader does, reads
// every byte that is left and puts the tiles together again.
#include <algorithm>

#include "fuzz/check.h"
#include "image/texture_limits.h"
#include "image/tile_grid.h"
#include "support/memory_picture.h"

namespace {

constexpr int kMaxPixels = 1 << 12;  // more only takes longer: narrow pictures reach 4096 a side
constexpr int kSettingBytes = 17;
constexpr int kRows = 2;

/// The bytes that choose sides, limits and formats, taken one after the other.
struct Settings {
    const std::uint8_t* next;
    int Byte() { return *next++; }
    int Word() {
        const int high = Byte();
        return high * 256 + Byte();
    }
};

MemoryImage PictureOf(Settings& settings) {
    // Shifted, because large sides are slow and small ones reach most code paths.
    const int shifts = settings.Byte();
    const int width = std::max(settings.Word() >> shifts % 16, 1);
    const int height = std::max(settings.Word() >> shifts / 16, 1);
    const int most = std::max(kMaxPixels / std::min(width, height), 4);
    const int kind = settings.Byte();
    MemoryImage image = NoiseImage(std::min(width, most), std::min(height, most),
                                   kind % 2 == 0 ? kPixelFormat24bppRgb : kPixelFormat8bppIndexed);
    image.lockable = kind / 4 != 0;
    image.convertible = kind / 4 != 1;
    return image;
}

/// Cuts the texture in `tiles[0]`: each byte must be in its tile.
void CheckSplit(CGLTexture (&tiles)[8], int columns) {
    CGLTexture* pointers[8];
    for (int i = 0; i < 8; ++i) pointers[i] = &tiles[i];
    const std::vector<int> whole = Bytes(tiles[0]);
    const int wholeRow = tiles[0].GetBufferWidth() * 3;
    // A side that cannot be halved evenly loses its last line: nothing to put together then.
    const bool even = wholeRow % columns == 0 && tiles[0].GetBufferHeight() % kRows == 0;
    if (!SplitIntoGrid(pointers, columns, kRows) || !even) return;
    const int tileRow = wholeRow / columns;
    const int height = tiles[0].GetBufferHeight();
    for (int i = 0; i < std::ssize(whole); ++i) {
        const int row = i / wholeRow;
        const CGLTexture& tile = tiles[row / height * columns + i % wholeRow / tileRow];
        Check(tile.GetPixels()[row % height * tileRow + i % tileRow] == whole[std::size_t(i)]);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < kSettingBytes) return 0;
    Settings settings{data};
    const MemoryImage image = PictureOf(settings);
    CGLTexture tiles[8];
    CGLTexture& map = tiles[0];
    const int limits[] = {settings.Word() - 1, settings.Word() - 1};
    const int loaded = LoadImage(map, image, limits[0], limits[1]);
    Check((loaded == kLoadFailed) == (map.GetPixels() == nullptr));
    Check(loaded == kLoadFailed || image.lockable);

    const int scalers = settings.Byte();
    const int widthLimit = ScaledLimit(settings.Word(), scalers % 8 - 4);
    const int heightLimit = ScaledLimit(settings.Word(), scalers / 32 - 4);
    if (FitToLimits(map, widthLimit, heightLimit)) {
        Check(map.GetBufferWidth() <= widthLimit && map.GetBufferHeight() <= heightLimit);
        map.SwapRedBlue();
        CheckSplit(tiles, 1 << settings.Byte() % 3);
    }
    for (CGLTexture& tile : tiles) {
        tile.ConvertToRgba(data[0]);
        tile.ReplaceByBrightness(data[1], data[2], data[3]);
        Bytes(tile);
    }
    Check(MemoryPicture::live == 0 && MemoryPicture::locks == 0);
    return 0;
}
