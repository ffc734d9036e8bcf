// Loads a picture of any sides under any limits, fits it and splits it as the loader does, reads
// every byte that is left and puts the tiles together again.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "fuzz/check.h"
#include "image/jpeg_texture.h"
#include "image/texture_limits.h"
#include "image/tile_grid.h"
#include "support/memory_picture.h"

namespace {

constexpr int kMaxPixels = 1 << 12;  // more only takes longer: narrow pictures reach 65535 a side
constexpr int kSettingBytes = 17;
constexpr int kRows = 2;

/// The bytes that choose sides, limits and formats, taken one after the other.
class Settings {
public:
    explicit Settings(const std::uint8_t* data) : next_(data) {}
    int Byte() { return *next_++; }
    int Word() {
        const int high = Byte();
        return high * 256 + Byte();
    }

private:
    const std::uint8_t* next_;
};

MemoryImage PictureOf(Settings& settings, const std::uint8_t* data, std::size_t size) {
    constexpr std::int32_t kFormats[] = {kPixelFormat24bppRgb, kPixelFormat8bppIndexed};
    MemoryImage image;
    // Shifted, because large sides are slow and small ones reach most code paths.
    const int shifts = settings.Byte();
    image.width = std::max(settings.Word() >> shifts % 16, 1);
    image.height = std::max(settings.Word() >> shifts / 16, 1);
    const int most = std::max(kMaxPixels / std::min(image.width, image.height), 4);
    (image.width > image.height ? image.width : image.height) =
        std::min(std::max(image.width, image.height), most);
    const int kind = settings.Byte();
    image.format = kFormats[kind % 2];
    image.bottomUp = kind / 2 % 2 != 0;
    image.lockable = kind / 4 != 0;
    image.convertible = kind / 4 != 1;
    image.bytes.resize(
        static_cast<std::size_t>(image.width * image.height * BytesPerPixel(image.format)));
    for (std::size_t i = 0, at = 0; i < image.bytes.size(); ++i, at = at + 1 < size ? at + 1 : 0) {
        image.bytes[i] = static_cast<std::uint8_t>((size > 0 ? data[at] : 0) + i / 16);
    }
    return image;
}

std::size_t BufferBytes(const CJpegTexture& texture) {
    return static_cast<std::size_t>(texture.GetBufferWidth()) *
           static_cast<std::size_t>(texture.GetBufferHeight()) *
           static_cast<std::size_t>(texture.GetBytesPerPixel());
}

/// A copy of the buffer, whose sides must hold the picture; empty without pixels.
std::vector<std::uint8_t> Bytes(const CJpegTexture& texture) {
    if (texture.GetPixels() == nullptr) return {};
    Check(texture.GetWidth() >= 0 && texture.GetWidth() <= texture.GetBufferWidth());
    Check(texture.GetHeight() >= 0 && texture.GetHeight() <= texture.GetBufferHeight());
    return {texture.GetPixels(), texture.GetPixels() + BufferBytes(texture)};
}

/// Cuts the texture in `tiles[0]` and holds every row of every tile against the whole.
void CheckSplit(CGLTexture (&tiles)[8], int columns) {
    CGLTexture* pointers[8];
    for (int i = 0; i < 8; ++i) pointers[i] = &tiles[i];
    const std::vector<std::uint8_t> whole = Bytes(tiles[0]);
    const auto wholeRow = static_cast<std::size_t>(tiles[0].GetBufferWidth()) * 3;
    // A side that cannot be halved evenly loses its last line: nothing to put together then.
    const bool even =
        tiles[0].GetBufferWidth() % columns == 0 && tiles[0].GetBufferHeight() % kRows == 0;
    if (!SplitIntoGrid(pointers, columns, kRows) || !even) return;
    std::size_t bytes = 0;
    for (int tile = 0; tile < columns * kRows; ++tile) {
        const std::vector<std::uint8_t> part = Bytes(tiles[tile]);
        bytes += part.size();
        const auto row = static_cast<std::size_t>(tiles[tile].GetBufferWidth()) * 3;
        const auto height = static_cast<std::size_t>(tiles[tile].GetBufferHeight());
        const std::size_t first = static_cast<std::size_t>(tile / columns) * height * wholeRow +
                                  static_cast<std::size_t>(tile % columns) * row;
        for (std::size_t y = 0; y < height; ++y) {
            Check(std::memcmp(&part[y * row], &whole[first + y * wholeRow], row) == 0);
        }
    }
    Check(bytes == whole.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < kSettingBytes || size > 1024) return 0;
    Settings settings(data);
    MemoryImage image = PictureOf(settings, data + kSettingBytes, size - kSettingBytes);
    CGLTexture tiles[8];
    CGLTexture& map = tiles[0];

    const int limits[] = {settings.Word() - 1, settings.Word() - 1};
    const int loaded = map.Load(std::make_unique<MemoryPicture>(image), limits[0], limits[1]);
    Check((loaded == kLoadFailed) == (map.GetPixels() == nullptr));
    const bool unloadable =
        !image.lockable || (!image.convertible && image.format != kPixelFormat24bppRgb);
    Check(!unloadable || loaded == kLoadFailed);
    Bytes(map);

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
    Check(MemoryPicture::LiveCount() == 0 && MemoryPicture::LockCount() == 0);
    return 0;
}
